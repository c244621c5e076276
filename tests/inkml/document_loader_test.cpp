// The document loader on ink documents.

#include "penfile/document_loader.h"

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>

#include "tests/support/ink/ink_builder.h"
#include "tests/support/pen/log_capture.h"

namespace {

using Orvo::Document;
using Orvo::loadDocument;
using Orvo::SharedRef;

// Collects standard output in a string while it exists.
class Capture {
 public:
  explicit Capture(std::string& printed) : printed_(printed) { testing::internal::CaptureStdout(); }
  ~Capture() {
    EXPECT_EQ(std::fflush(stdout), 0);
    printed_ = testing::internal::GetCapturedStdout();
  }
  Capture(const Capture&) = delete;
  Capture& operator=(const Capture&) = delete;

 private:
  std::string& printed_;
};

class InkDocumentLoader : public testing::Test {
 protected:
  void SetUp() override { Orvo::fileKind = Orvo::kInkML; }
  void TearDown() override { Orvo::fileKind = Orvo::kPenFile; }

  // What is printed meanwhile is kept in `printed_`.
  SharedRef<Document> load(const std::string& text) {
    const std::filesystem::path path = folder_ / "a.kvo";
    std::ofstream(path, std::ios::binary) << text;
    const Capture capture(printed_);
    return loadDocument(path.wstring().c_str());
  }

  std::string printed_;

 private:
  pentest::TemporaryFolder folder_;
};

TEST_F(InkDocumentLoader, GivesACompleteDocumentAndPrintsItsPointCounts) {
  const SharedRef<Document> document = load(
      "<ink><tracegroup id='layer0'><trace contextRef='#c'>1 2,3 4,5 6</trace>"
      "<trace contextRef='#c'>,</trace></tracegroup>"
      "<tracegroup id='layer1'><trace contextRef='#c'>7 8</trace></tracegroup></ink>");
  ASSERT_TRUE(document);
  EXPECT_TRUE(document->complete.value);
  EXPECT_EQ(inktest::shapeOf(*document), (std::vector<std::vector<std::size_t>>{{3, 0}, {1}}));
  EXPECT_EQ(printed_,
            "there are 3 points in this stroke\n"
            "there are 0 points in this stroke\n"
            "there are 1 points in this stroke\n");
}

TEST_F(InkDocumentLoader, GivesACompleteDocumentWithoutLayersForAnEmptyRoot) {
  const SharedRef<Document> document = load("<ink/>");
  ASSERT_TRUE(document);
  EXPECT_TRUE(document->complete.value);
  EXPECT_EQ(document->size(), 0U);
  EXPECT_EQ(printed_, "");
}

TEST_F(InkDocumentLoader, GivesAndPrintsNothingForAnythingButAnInkDocument) {
  for (const char* text :
       {"", "junk", "<ink>", "<inkml/>", "<a:ink><tracegroup id='layer0'/></a:ink>",
        "<ink><tracegroup id='layer0'><trace contextRef='#c'>1 2</trace>"}) {
    EXPECT_FALSE(load(text)) << text;
    EXPECT_EQ(printed_, "");
  }
}

TEST_F(InkDocumentLoader, LogsNothing) {
  const pentest::LogCapture log;
  EXPECT_TRUE(log.linesOfWork([&] { EXPECT_FALSE(load("junk")); }).empty());
  EXPECT_TRUE(log.linesOfWork([&] { EXPECT_TRUE(load("<ink/>")); }).empty());
  EXPECT_TRUE(log.linesOfWork([] { EXPECT_FALSE(loadDocument(L"missing.kvo")); }).empty());
}

TEST_F(InkDocumentLoader, ReadsEachFileAnew) {
  const std::string text = "<ink><tracegroup id='layer0'/></ink>";
  for (int round = 0; round < 2; ++round) {
    const SharedRef<Document> document = load(text);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->size(), 1U);
  }
}

TEST_F(InkDocumentLoader, RefusesAPenRecording) {
  EXPECT_FALSE(load(std::string("\1\6\0\2\0\0", 6)));
}

}  // namespace
