// Ink documents with every damage of one place: the readers hold what the fuzz targets check, and a
// cut document that opens at all is the whole one.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "inkml/ink_reading.h"
#include "tests/spaces/fuzz_checks.h"
#include "tests/spaces/small_files.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/share/share.h"

namespace {

using Orvo::InkReading;
using spaces::SmallFile;

constexpr const char* kDrawing =
    "<?xml version=\"1.0\" ?>\n<ink>\n  <definitions>\n    <traceFormat id=\"f\"/>\n    <brush "
    "id=\"b\">"
    "<annotationXML><color>R&amp;&#x41;\xC3\xA9</color></annotationXML></brush>\n"
    "    <context id=\"c\" brushRef=\"#b\" traceFormatRef=\"#f\"/>\n  </definitions>\n"
    "  <annotation type=\"t\">T</annotation>\n  <tracegroup id=\"layer0\">\n"
    "    <trace contextRef=\"#c\">10 20 0 512 -3 4 1,30 40 0 700 -3 4 9,50 60 0 1023 0 0 "
    "17</trace>\n"
    "    <trace contextRef=\"#c\">1 2,3 4</trace>\n  </tracegroup>\n"
    "  <tracegroup id=\"layer1\">\n    <trace contextRef=\"#c\">7 8,9 10,11 12</trace>\n"
    "  </tracegroup>\n</ink>\n<!-- end -->\n";

constexpr const char* kOtherProgram =
    "<ink xmlns=\"http://www.w3.org/2003/InkML\"><traceFormat><channel name=\"X\" type=\"decimal\" "
    "units=\"cm\"/><channel name=\"Y\" type=\"decimal\" units=\"cm\"/><channel name=\"F\" "
    "max=\"255\"/>"
    "</traceFormat><traceGroup><trace>1.5 2.25 9, '1 '2 9, \"1 \"0 8</trace>"
    "<trace type=\"penUp\">3 4 0,5 6 0</trace></traceGroup><trace>7 8 1,9 10 2,11 12 "
    "3</trace></ink>";

std::vector<SmallFile> documents() {
  std::vector<SmallFile> all = spaces::spreadOver(PENWICK_CORPUS "/inkml", 5);
  for (SmallFile& file : spaces::spreadOver(PENWICK_CORPUS "/translate", 3))
    all.push_back(std::move(file));
  all.push_back({"a drawing", kDrawing});
  all.push_back({"a drawing of another program", kOtherProgram});
  return all;
}

std::vector<std::vector<std::vector<inktest::Seven>>> pointsOf(const Orvo::Document& document) {
  std::vector<std::vector<std::vector<inktest::Seven>>> layers;
  for (const Orvo::Layer& layer : document) {
    layers.emplace_back();
    for (const Orvo::Stroke& stroke : layer)
      layers.back().push_back(inktest::pointsOf(stroke));
  }
  return layers;
}

class SmallDocument : public testing::Test {
 protected:
  void SetUp() override { spaces::nameCaseAtTheEnd(); }

  static void expectSound(const std::string& text) {
    for (const spaces::FuzzCheck check : {&checkInk, &checkInkRescue, &checkTranslation})
      spaces::run(check, text);
  }

  static std::size_t total(const std::vector<SmallFile>& files, std::size_t perByte) {
    std::size_t bytes = 0;
    for (const SmallFile& file : files)
      bytes += file.bytes.size();
    return bytes * perByte;
  }
};

TEST_F(SmallDocument, CutAnywhereIsTheWholeOneOrDoesNotOpen) {
  const std::vector<SmallFile> files = documents();
  ASSERT_EQ(files.size(), 10U);
  test::Share share("cut documents", total(files, 1), 1000);
  for (const SmallFile& file : files) {
    const InkReading whole = Orvo::readInk(file.bytes);
    spaces::eachCut(file.bytes, [&](const std::string& cut, const std::string& place) {
      if (HasFatalFailure() || !share.takesNext()) return;
      spaces::currentCase = file.name + ", " + place;
      expectSound(cut);
      const InkReading reading = Orvo::readInk(cut);
      if (!reading.document->complete.value || !whole.document->complete.value) return;
      ASSERT_EQ(pointsOf(*reading.document), pointsOf(*whole.document)) << spaces::currentCase;
    });
  }
}

TEST_F(SmallDocument, WithAnyByteChangedHoldsWhatTheFuzzTargetsCheck) {
  const std::vector<SmallFile> files = documents();
  test::Share share("changed documents", total(files, 12), 6000);
  for (const SmallFile& file : files) {
    spaces::eachChange(file.bytes, [&](const std::string& changed, const std::string& place) {
      if (!share.takesNext()) return;
      spaces::currentCase = file.name + ", " + place;
      expectSound(changed);
    });
  }
}

}  // namespace
