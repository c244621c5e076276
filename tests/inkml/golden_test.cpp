// The bytes that are written, compared with whole files that were made by hand.

#include <gtest/gtest.h>

#include "inkml/definitions.h"
#include "inkml/document_serializer.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/support/pen/text_file.h"

namespace {

using inktest::makeLayer;
using inktest::makeStroke;
using Orvo::Document;
using Orvo::DocumentSerializer;
using Orvo::InkMLDefinitions;

std::string golden(const std::string& name) {
  return (std::filesystem::path(PENWICK_INK_GOLDENS) / name).string();
}

// As it is written on this system: the golden files have plain line ends.
std::string goldenText(const std::string& name) {
  return pentest::asInTextFile(pentest::readText(golden(name)));
}

class Golden : public testing::Test {
 protected:
  std::string written(Document& document, InkMLDefinitions& definitions) const {
    const std::filesystem::path path = folder_ / "a.kvo";
    EXPECT_TRUE(DocumentSerializer(&document).write(path.wstring().c_str(), definitions));
    return pentest::readText(path);
  }

 private:
  pentest::TemporaryFolder folder_;
};

void fill(InkMLDefinitions& definitions) {
  Orvo::TraceFormat& format = definitions.traceFormats.emplace_back();
  format.id = "pen";
  format.resize(2);
  format.front().name.value = "X";
  format.front().max.value = 21000;
  format.back().min.value = -128;
  format.back().max.value = 127;
  format.back().units.value = "deg";
  format.back().type.value = Orvo::Channel::DECIMAL;

  Orvo::Brush& plain = definitions.brushes.emplace_back();
  Orvo::Brush& blue = definitions.brushes.emplace_back();
  blue.id = "b\"2";
  blue.color.value = "Bl&ue";
  blue.width.value = 3;
  blue.height.value = 4294967295U;
  blue.transparency.value = 0;
  blue.antialiased.value = true;
  blue.fittocurve.value = false;
  blue.ignorePressure.value = false;
  blue.pentip.value = "";

  definitions.contexts.push_back({&format, &plain, "default-context"});
  definitions.contexts.push_back({&format, &blue, ""});
  definitions.contexts.push_back({nullptr, nullptr, "alone"});
}

void fill(Document& document) {
  document.annotations()["title"] = "Harbour <early>\n\xC3\xA9";
  document.annotations()["a"] = "";
  Orvo::Layer layer = makeLayer(
      {makeStroke({{1520, 3310, 0.5, 812, -20, 15, 40000}, {1524, 3318, 0.5, 830, -19, 15, 40008}}),
       makeStroke({}),
       makeStroke({{1000000, -0.125, 123456.7, 4294967295U, INT32_MIN, INT32_MAX, 4294967295U}})});
  layer.annotations()["name"] = "sky";
  document.append(layer);
  document.append(Orvo::Layer());
}

TEST_F(Golden, FullDocumentIsWrittenByteForByte) {
  Document document;
  InkMLDefinitions definitions;
  fill(document);
  fill(definitions);
  EXPECT_EQ(written(document, definitions), goldenText("full.kvo"));
}

TEST_F(Golden, EmptyDocumentIsWrittenByteForByte) {
  Document document;
  InkMLDefinitions definitions;
  EXPECT_EQ(written(document, definitions), goldenText("empty.kvo"));
}

TEST_F(Golden, FullDocumentIsReadAndWrittenWithItsKnownLosses) {
  Document document;
  InkMLDefinitions definitions;
  ASSERT_TRUE(DocumentSerializer(&document).read(golden("full.kvo").c_str(), definitions));
  EXPECT_EQ(written(document, definitions), goldenText("read.kvo"));
}

TEST_F(Golden, DocumentThatWasReadIsWrittenUnchanged) {
  Document document;
  InkMLDefinitions definitions;
  ASSERT_TRUE(DocumentSerializer(&document).read(golden("read.kvo").c_str(), definitions));
  EXPECT_EQ(written(document, definitions), goldenText("read.kvo"));
}

}  // namespace
