// Style libraries in the host's native format.
#include "stylelib/native_library.h"

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <string>
#include <vector>

#include "tests/stylelib/library_builder.h"

namespace {

using libtest::deflated;
using libtest::LibraryText;
using libtest::PdfBuilder;
using libtest::pdfOfBlocks;
using libtest::read;
using stylelib::NativeLibrary;

const art::Style& styleNamed(const NativeLibrary& library, const std::string& name) {
  for (const art::Style& style : library.styles) {
    if (style.name == name) return style;
  }
  throw std::out_of_range(name);
}

void expectMyPen(const NativeLibrary& library) {
  EXPECT_EQ(library.problem, "");
  ASSERT_EQ(library.styles.size(), 2U);
  const art::Style& style = styleNamed(library, "My Style");
  ASSERT_TRUE(style.brush);
  EXPECT_EQ(style.brush->name, "My Pen");
  EXPECT_EQ(style.brush->size, (art::BrushValue{2.0, 1.5, art::BrushDriver::pressure}));
  EXPECT_EQ(style.brush->roundness, (art::BrushValue{100, 0, art::BrushDriver::fixed}));
}

TEST(NativeLibrary, IsReadFromBareText) {
  expectMyPen(read(LibraryText().text()));
}

TEST(NativeLibrary, IsReadWithSingleCharacterLineEnds) {
  std::string text = LibraryText().text();
  std::erase(text, '\n');
  expectMyPen(read(text));
}

TEST(NativeLibrary, IsReadFromBlocksThatAreEachDeflatedOnTheirOwn) {
  const std::string text = LibraryText().text();
  const std::size_t half = text.size() / 2;
  expectMyPen(read(pdfOfBlocks({deflated(text.substr(0, half)), deflated(text.substr(half))},
                               "/Filter[/FlateDecode]")));
}

TEST(NativeLibrary, IsReadFromOneDeflatedRunOverAllBlocks) {
  const std::string run = "%AI12_CompressedData" + deflated(LibraryText().text());
  expectMyPen(read(pdfOfBlocks({run.substr(0, 100), run.substr(100)}, "")));
}

TEST(NativeLibrary, IsFoundWhenItsDictionaryIsInAnObjectStream) {
  PdfBuilder pdf;
  pdf.stream("/Type/ObjStm/Filter/FlateDecode", deflated("9 0 <</AIPrivateData2 2 0 R>>"));
  pdf.stream("/Filter/FlateDecode", deflated(LibraryText().text()));
  expectMyPen(read(pdf.bytes()));
}

TEST(NativeLibrary, TakesALengthFromAnotherObject) {
  const std::string data = deflated(LibraryText().text());
  std::string bytes =
      "%PDF-1.4\r1 0 obj<</AIPrivateData2 2 0 R>>endobj\r"
      "2 0 obj<</Length 3 0 R/Filter/FlateDecode>>stream\n" +
      data + "\nendstream endobj\r3 0 obj " + std::to_string(data.size()) + " endobj\r";
  expectMyPen(read(bytes));
}

TEST(NativeLibrary, JoinsTheDefinitionOfABrushThatIsSplit) {
  LibraryText library;
  library.brush = "(My Pen)\r\n(1 0.5 3.) -\r\n(5 100 100 0 0 2 0 ) -\r\n(0 0) .";
  expectMyPen(read(library.text()));
}

TEST(NativeLibrary, ReadsABrushAtTheEndOfTheText) {
  LibraryText library;
  const std::string brush = library.brush;
  library.brush = "(Another Pen)\r\n(1 6 6 20 80 -30 90 0 2 1 0) .";
  expectMyPen(read(library.text() +
                   "%AI8_BeginPluginObject\r\n(Adobe Calligraphic Brush Tool)\r\n" + brush));
}

TEST(NativeLibrary, TakesBrushesFromObjectsOfTheCalligraphicToolOnly) {
  const std::string order =
      "%AI8_BeginPluginObject\r\n(Adobe Brush Manager Order)\r\n"
      "(Adobe Calligraphic Brush Tool)\r\n(My Pen)\r\n(1 6 6 20 80 -30 90 0 2 1 0) .\r\n"
      "%AI8_EndPluginObject\r\n";
  expectMyPen(read(LibraryText().text() + order));
}

TEST(NativeLibrary, GivesFixedAndDrivenRoundnessAndAngle) {
  LibraryText library;
  library.brush = "(My Pen)\r\n(1 6 6 20 80 -30 90 0 2 1 0) .";
  const art::Style style = styleNamed(read(library.text()), "My Style");
  ASSERT_TRUE(style.brush);
  EXPECT_EQ(style.brush->size, (art::BrushValue{6, 0, art::BrushDriver::fixed}));
  EXPECT_EQ(style.brush->roundness, (art::BrushValue{50, 30, art::BrushDriver::pressure}));
  EXPECT_EQ(style.brush->angle, (art::BrushValue{30, 60, art::BrushDriver::random}));
}

TEST(NativeLibrary, PrefersTheStylesOwnSizeToThatOfItsBrush) {
  LibraryText library;
  library.keys =
      "4 /Real (Diameter) ,\r\n1 /Real (DiameterVariation) ,\r\n"
      "0 /Int (DiameterDependsOn) ,\r\n25 /Real (Roundness) ,\r\n";
  const art::Style style = styleNamed(read(library.text()), "My Style");
  ASSERT_TRUE(style.brush);
  EXPECT_EQ(style.brush->size, (art::BrushValue{4, 1, art::BrushDriver::fixed}));
  EXPECT_EQ(style.brush->roundness.value, 25);
}

TEST(NativeLibrary, GivesWeightAndColourOfTheStroke) {
  LibraryText library;
  library.stroke = "0 R 0.5 0 0 0.5 K 0 J 0 j 2.5 w 4 M []0 d";
  const art::Style style = styleNamed(read(library.text()), "My Style");
  EXPECT_EQ(style.strokeWeight, 2.5);
  EXPECT_EQ(style.strokeColor, (art::Color{0.25, 0.5, 0.5}));
}

TEST(NativeLibrary, FindsOnlyStylesThatAreListed) {
  LibraryText library;
  library.list = "([Default])";
  const NativeLibrary found = read(library.text());
  ASSERT_EQ(found.styles.size(), 1U);
  EXPECT_EQ(found.styles[0].name, "[Default]");
  EXPECT_FALSE(found.styles[0].brush);
}

TEST(NativeLibrary, UnescapesNames) {
  LibraryText library;
  library.reference = "(My \\(best\\) Pen)";
  library.brush = "(My \\(best\\) Pen)\r\n(1 0.5 3.5 100 100 0 0 2 0 0 0) .";
  EXPECT_EQ(styleNamed(read(library.text()), "My Style").brush->name, "My (best) Pen");
}

TEST(NativeLibrary, LeavesOutABrushThatMakesNoSense) {
  for (const char* values :
       {"1 3 -5 100 100 0 0 2 0 0 0", "1 -9 -1 100 100 0 0 2 0 0 0",
        "1 1 99999 100 100 0 0 2 0 0 0", "1 nan 1 100 100 0 0 2 0 0 0", "1 2 3", ""}) {
    LibraryText library;
    library.brush = "(My Pen)\r\n(" + std::string(values) + ") .";
    EXPECT_FALSE(styleNamed(read(library.text()), "My Style").brush) << values;
  }
}

class ShippedLibrary : public testing::Test {
 protected:
  static std::string bytes() {
    std::ifstream file(PENWICK_LIBRARY, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

TEST_F(ShippedLibrary, HoldsTrillowStyleWithItsPressurePen) {
  const NativeLibrary library = read(bytes());
  EXPECT_EQ(library.problem, "");
  const art::Style style = styleNamed(library, "TrillowStyle");
  EXPECT_EQ(style.strokeWeight, 1);
  EXPECT_EQ(style.strokeColor, art::Color());
  ASSERT_TRUE(style.brush);
  EXPECT_EQ(style.brush->name, "Trillow Pressure Pen");
  EXPECT_EQ(style.brush->size, (art::BrushValue{1.5, 1.2, art::BrushDriver::pressure}));
}

TEST_F(ShippedLibrary, NeverCrashesTheReaderHoweverItIsDamaged) {
  const std::string whole = bytes();
  ASSERT_GT(whole.size(), 3000U);
  std::size_t readable = 0;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    readable += read(whole.substr(0, i)).problem.empty() ? 1U : 0U;
    std::string changed = whole;
    changed[i] = static_cast<char>(changed[i] ^ 0x55);
    readable += read(changed).problem.empty() ? 1U : 0U;
  }
  EXPECT_LT(readable, 2 * whole.size());
}

}  // namespace
