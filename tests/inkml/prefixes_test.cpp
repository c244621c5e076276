// Two small documents, cut after each byte.

#include <fstream>
#include <functional>
#include <gtest/gtest.h>

#include "inkml/ink_reading.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

using Orvo::InkFailure;
using Orvo::InkReading;

constexpr const char* kSmall =
    "<?xml version=\"1.0\" ?>\n"
    "<ink>\n"
    "    <definitions>\n"
    "        <traceFormat id=\"f\" />\n"
    "        <brush "
    "id=\"b\"><annotationXML><color>R&amp;&#x41;\xC3\xA9</color></annotationXML></brush>\n"
    "        <context id=\"c\" brushRef=\"#b\" traceFormatRef=\"#f\" />\n"
    "    </definitions>\n"
    "    <annotation type=\"t\">T</annotation>\n"
    "    <tracegroup id=\"layer0\">\n"
    "        <trace contextRef=\"#c\">1 2,3 4</trace>\n"
    "    </tracegroup>\n"
    "</ink>\n"
    "<!-- end -->\n";

constexpr const char* kOdd =
    "\xEF\xBB\xBF<!--first--><!DOCTYPE ink>\r\n<?pi?><ink a=1 b='\xE2\x82\xAC' c = \"<\">"
    "text<![CDATA[ <x> ]]><!u><tracegroup id='layer'><trace contextRef=''><!--1 2--></trace>"
    "<trace contextRef=''>\xF0\x9F\x96\x8B</trace></tracegroup></ink  >\r\n<?pi?><ink/>";

class Prefixes : public testing::Test {
 protected:
  InkReading read(const std::string& text) const {
    // On some file systems it takes much longer to overwrite a file than to create one.
    std::filesystem::remove(path());
    std::ofstream(path(), std::ios::binary) << text;
    return Orvo::readInk(path().wstring().c_str());
  }
  std::filesystem::path path() const { return folder_ / "a.kvo"; }

 private:
  pentest::TemporaryFolder folder_;
};

// Cuts `text` after each byte: nothing shorter than `whole` may be complete.
void expectOnlyClosedRootsAreComplete(const std::string& text, std::size_t whole,
                                      const std::function<InkReading(const std::string&)>& read) {
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const InkReading reading = read(text.substr(0, length));
    ASSERT_EQ(reading.document->complete.value, reading.report.failure == InkFailure::none);
    if (length < whole) {
      ASSERT_FALSE(reading.document->complete.value) << text.substr(0, length);
    }
    if (reading.document->complete.value) {
      ASSERT_EQ(reading.document->size(), 1U);
    }
  }
}

TEST_F(Prefixes, OfASmallDocumentAreCompleteOnceTheRootIsClosed) {
  const std::string text = kSmall;
  const std::size_t whole = text.find("</ink>") + 6;
  expectOnlyClosedRootsAreComplete(text, whole, [this](const auto& cut) { return read(cut); });
  for (const std::size_t length : {whole, whole + 1, text.size()}) {
    EXPECT_EQ(read(text.substr(0, length)).report.failure, InkFailure::none);
  }
}

TEST_F(Prefixes, OfAnOddDocumentAreCompleteOnceTheRootIsClosed) {
  const std::string text = kOdd;
  const std::size_t whole = text.find("</ink  >") + 8;
  expectOnlyClosedRootsAreComplete(text, whole, [this](const auto& cut) { return read(cut); });
  EXPECT_EQ(read(text.substr(0, whole)).report.failure, InkFailure::none);
  EXPECT_EQ(read(text.substr(0, whole + 6)).report.failure, InkFailure::none);
  EXPECT_EQ(read(text).report.failure, InkFailure::none);
}

TEST_F(Prefixes, OfFullLengthHaveBothStrokesOfTheOddDocument) {
  const InkReading reading = read(kOdd);
  EXPECT_EQ(inktest::shapeOf(*reading.document), (std::vector<std::vector<std::size_t>>{{1, 1}}));
}

}  // namespace
