#include "penfile/document_loader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "penfile/pnx_document.h"
#include "tests/penfile/listing.h"
#include "tests/support/pen/log_capture.h"
#include "tests/support/pen/pen_file_builder.h"

namespace {

using Orvo::Document;
using Orvo::loadDocument;
using Orvo::PnxDocument;
using Orvo::SharedRef;
using pentest::PenFileBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

class DocumentLoader : public testing::Test {
 protected:
  void TearDown() override { Orvo::fileKind = 0; }

  SharedRef<Document> load(const PenFileBuilder& recording) const {
    const std::filesystem::path path = folder_ / "recording.pnx";
    recording.write(path);
    return loadDocument(path.wstring().c_str());
  }

  std::wstring pathOf(const std::string& name) const { return (folder_ / name).wstring(); }

  pentest::LogCapture log_;

 private:
  pentest::TemporaryFolder folder_;
};

TEST_F(DocumentLoader, TakesFilesForPenRecordingsByDefault) {
  EXPECT_EQ(Orvo::fileKind, 0U);
}

TEST_F(DocumentLoader, GivesACompleteRecordingWithItsHeader) {
  const SharedRef<Document> document = load(
      PenFileBuilder().descriptor(7, 2, 8, 9).dateTime({1, 2, 3, 4, 5, 6, 7}).coordinate(10, 10));
  ASSERT_TRUE(document);
  EXPECT_TRUE(document->complete.value);
  EXPECT_EQ(document->back().back().back().y.value, 2.5);
  const auto* recording = dynamic_cast<const PnxDocument*>(document.get());
  ASSERT_NE(recording, nullptr);
  EXPECT_THAT(pentest::headerOf(*recording),
              ElementsAre(7, 2, 8, 9, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7));
}

TEST_F(DocumentLoader, GivesACompleteDocumentWithoutLayersForADescriptorAlone) {
  const SharedRef<Document> document = load(PenFileBuilder().descriptor());
  ASSERT_TRUE(document);
  EXPECT_TRUE(document->complete.value);
  EXPECT_EQ(document->size(), 0U);
}

TEST_F(DocumentLoader, GivesNothingForWhatIsNotAPenRecordingAndLogsWhy) {
  const auto lines = log_.linesOfWork([&] {
    EXPECT_FALSE(load(PenFileBuilder().bytes({'%', 'P', 'D', 'F'})));
  });
  EXPECT_THAT(lines, ElementsAre("SEVERE bad packet tag: 1 expected for file descriptor\t"
                                 "FileDescriptor::readFromStream()",
                                 "SEVERE invalid file descriptor\tPnxParser::parse()"));
}

TEST_F(DocumentLoader, GivesNothingForARecordingThatFailsHalfway) {
  log_.linesOfWork(
      [&] { EXPECT_FALSE(load(PenFileBuilder().descriptor().coordinate(1, 1).descriptor())); });
}

TEST_F(DocumentLoader, GivesNothingAndLogsNothingForAMissingFile) {
  const auto lines =
      log_.linesOfWork([&] { EXPECT_FALSE(loadDocument(pathOf("missing.pnx").c_str())); });
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(DocumentLoader, GivesTheDrawingUpToAPacketOfLengthZero) {
  const SharedRef<Document> document =
      load(PenFileBuilder().descriptor().coordinate(1, 1).unknown(200, 0x40).coordinate(2, 2));
  ASSERT_TRUE(document);
  EXPECT_TRUE(document->complete.value);
  EXPECT_EQ(document->back().back().size(), 1U);
}

TEST_F(DocumentLoader, GivesNothingForAnUnknownKind) {
  for (const std::uint32_t kind : {2U, 3U, 0xFFFFFFFFU}) {
    Orvo::fileKind = kind;
    EXPECT_FALSE(load(PenFileBuilder().descriptor().coordinate(1, 1))) << kind;
  }
}

TEST_F(DocumentLoader, PrintsNothingForAPenRecording) {
  testing::internal::CaptureStdout();
  load(PenFileBuilder().descriptor().coordinate(1, 1));
  EXPECT_EQ(std::fflush(stdout), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(DocumentLoader, ReadsTheFileAgainEachTime) {
  EXPECT_EQ(load(PenFileBuilder().descriptor().coordinate(1, 1))->size(), 1U);
  EXPECT_EQ(load(PenFileBuilder().descriptor())->size(), 0U);
}

}  // namespace
