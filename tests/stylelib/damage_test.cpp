// Libraries that are each damaged in one way, and what is reported.
#include <algorithm>
#include <gmock/gmock.h>

#include "tests/stylelib/library_builder.h"

namespace {

using libtest::deflated;
using libtest::LibraryText;
using libtest::PdfBuilder;
using libtest::pdfOfBlocks;
using libtest::read;
using testing::ElementsAre;
using testing::Field;
using testing::SizeIs;

constexpr char kNoStyles[] = "it lists no graphic styles";
constexpr char kNoNativeData[] =
    "it is a PDF without native data; save it again with native data included";
constexpr char kMissingBlock[] = "a block of its native data is missing";
constexpr char kDamagedBlock[] = "a block of its native data is damaged";
constexpr char kDamagedRun[] = "its compressed native data is damaged";
constexpr char kOtherFilter[] = "a block of its native data is not compressed with FlateDecode";

std::string without(std::string text, const std::string& part) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return text.erase(at, part.size());
}

// A PDF whose private block is object 2.
PdfBuilder pdfWithBlock() {
  return PdfBuilder().object("<</AIPrivateData2 2 0 R>>");
}

std::string blockOfLength(const std::string& length) {
  return pdfWithBlock()
      .streamOfLength(length, "/Filter/FlateDecode", deflated(LibraryText().text()))
      .bytes();
}

TEST(WrongKind, OfFileIsReported) {
  EXPECT_EQ(read("").problem, "it is empty");
  EXPECT_EQ(read("GIF89a").problem,
            "it is not a native file: it begins with neither %PDF- nor %!PS-Adobe");
  EXPECT_EQ(read("%PDF-1.4\r1 0 obj<</Type/Catalog>>endobj").problem, kNoNativeData);
  EXPECT_EQ(read("%!PS-Adobe-3.0\r\n").problem, kNoStyles);
}

TEST(CutLibrary, AsBareTextHasNoStylesBeforeTheEndOfItsList) {
  const std::string text = LibraryText().text();
  const std::size_t end = text.find("%AI9_EndArtStyleList") + 20;
  for (std::size_t size = 11; size < end; ++size)
    ASSERT_EQ(read(text.substr(0, size)).problem, kNoStyles) << size;
  EXPECT_THAT(read(text.substr(0, end)).styles, SizeIs(2));
}

TEST(CutLibrary, AsDeflatedBlocksIsDamaged) {
  const std::string data = deflated(LibraryText().text());
  const std::string bytes = pdfWithBlock().stream("/Filter/FlateDecode", data).bytes();
  const std::size_t start = bytes.find(data);
  for (std::size_t size = start; size < start + data.size(); ++size)
    ASSERT_EQ(read(bytes.substr(0, size)).problem, kDamagedBlock) << size;
}

TEST(CutLibrary, AsOneDeflatedRunIsDamaged) {
  const std::string data = deflated(LibraryText().text());
  for (std::size_t size = 0; size < data.size(); ++size) {
    ASSERT_EQ(read(pdfOfBlocks({"%AI12_CompressedData" + data.substr(0, size)}, "")).problem,
              kDamagedRun)
        << size;
  }
}

TEST(WrongLength, ThatIsTooShortDamagesTheBlock) {
  EXPECT_EQ(read(blockOfLength("10")).problem, kDamagedBlock);
  EXPECT_EQ(read(blockOfLength("0")).problem, kDamagedBlock);
}

TEST(WrongLength, ThatReachesBeyondTheStreamDoesNoHarm) {
  const std::string bytes = blockOfLength("000");
  const std::size_t toEndOfFile = bytes.size() - bytes.find("stream\r\n") - 8;
  EXPECT_THAT(read(blockOfLength(std::to_string(toEndOfFile))).styles, SizeIs(2));
}

TEST(WrongLength, ThatCannotBeRightIsReplacedByTheDistanceToTheEndOfTheStream) {
  for (const char* length : {"99999999", "18446744073709551615", "99999999999999999999999", "-3",
                             "null", "(5)", "<</Length 3>>", ""}) {
    EXPECT_THAT(read(blockOfLength(length)).styles, SizeIs(2)) << length;
  }
}

TEST(LoopOfReferences, InLengthsIsNotFollowed) {
  EXPECT_THAT(read(blockOfLength("2 0 R")).styles, SizeIs(2));
  EXPECT_THAT(read(blockOfLength("1 0 R")).styles, SizeIs(2));
  EXPECT_THAT(read(blockOfLength("3 0 R")).styles, SizeIs(2)) << "there is no object 3";
}

TEST(LoopOfReferences, InAnObjectStreamThatNamesItselfAsABlockIsRead) {
  PdfBuilder pdf;
  pdf.stream("/Type/ObjStm", "9 0 <</AIPrivateData2 1 0 R>>");
  EXPECT_EQ(read(pdf.bytes()).problem, kNoStyles);
}

TEST(LoopOfReferences, InABrushThatNamesItsOwnStyleLeavesOutTheBrush) {
  LibraryText library;
  library.reference = "(My Style)";
  const auto styles = read(library.text()).styles;
  ASSERT_THAT(styles, SizeIs(2));
  EXPECT_FALSE(styles[1].brush);
}

TEST(WrongCompression, OfABlockIsReported) {
  const std::string text = LibraryText().text();
  EXPECT_EQ(read(pdfOfBlocks({text}, "/Filter/LZWDecode")).problem, kOtherFilter);
  EXPECT_EQ(read(pdfOfBlocks({text}, "/Filter[/ASCII85Decode]")).problem, kOtherFilter);
  EXPECT_EQ(read(pdfOfBlocks({text}, "/Filter/FlateDecode")).problem, kDamagedBlock);
  EXPECT_EQ(read(pdfOfBlocks({deflated(text)}, "")).problem, kNoStyles);
}

TEST(WrongCompression, OfTheRunIsReported) {
  EXPECT_EQ(read(pdfOfBlocks({"%AI12_CompressedData" + LibraryText().text()}, "")).problem,
            kDamagedRun);
}

TEST(WrongCompression, OfAnObjectStreamIsIgnored) {
  PdfBuilder pdf = pdfWithBlock();
  pdf.stream("", LibraryText().text());
  pdf.stream("/Type/ObjStm/Filter/FlateDecode", "9 0 <</AIPrivateData2 7 0 R>>");
  pdf.stream("/Type/ObjStm/Filter/LZWDecode", "9 0 <</AIPrivateData2 7 0 R>>");
  EXPECT_THAT(read(pdf.bytes()).styles, SizeIs(2));
}

TEST(WrongCompression, OfOneByteAnywhereInADeflatedBlockIsNoticed) {
  const std::string data = deflated(LibraryText().text());
  for (std::size_t i = 0; i < data.size(); ++i) {
    std::string changed = data;
    changed[i] = static_cast<char>(changed[i] ^ 0x55);
    ASSERT_EQ(read(pdfOfBlocks({changed}, "/Filter/FlateDecode")).problem, kDamagedBlock) << i;
  }
}

TEST(MissingBlock, IsReported) {
  EXPECT_EQ(read(pdfWithBlock().bytes()).problem, kMissingBlock);
  EXPECT_EQ(read(pdfWithBlock().object("<<>>").bytes()).problem, kMissingBlock)
      << "an object without a stream";
}

TEST(MissingBlock, AmongOthersIsReported) {
  const std::string text = LibraryText().text();
  std::string bytes = pdfOfBlocks({text.substr(0, 200), text.substr(200)}, "");
  bytes.replace(bytes.find("4 0 obj"), 7, "7 0 obj");
  EXPECT_EQ(read(bytes).problem, kMissingBlock);
}

TEST(MissingStyle, LeavesTheOthersOfTheList) {
  LibraryText library;
  library.list = "(Not defined)\r\n(My Style)\r\n()";
  EXPECT_THAT(read(library.text()).styles, ElementsAre(Field(&art::Style::name, "My Style")));
  library.list = "(Not defined)";
  EXPECT_EQ(read(library.text()).problem, kNoStyles);
}

TEST(MissingStyle, MarkLeavesNoStyles) {
  for (const char* mark : {"%AI9_BeginArtStyles", "%AI9_EndArtStyles", "%AI9_BeginArtStyleList",
                           "%AI9_EndArtStyleList"}) {
    EXPECT_EQ(read(without(LibraryText().text(), mark)).problem, kNoStyles) << mark;
  }
}

TEST(WrongType, OfANameLeavesOutTheStyle) {
  std::string text = LibraryText().text();
  text.replace(text.find("(My Style) /Name"), 10, "/My/Style ");
  EXPECT_THAT(read(text).styles, ElementsAre(Field(&art::Style::name, "[Default]")));
}

TEST(WrongType, OfAListedNameLeavesItOut) {
  LibraryText library;
  library.list = "[Default]\r\nMy Style\r\n(My Style)";
  EXPECT_THAT(read(library.text()).styles, ElementsAre(Field(&art::Style::name, "My Style")));
}

TEST(WrongType, OfValuesLeavesWhatTheBrushHas) {
  LibraryText library;
  library.keys =
      "(4) /Real (Diameter) ,\r\ninf /Real (DiameterVariation) ,\r\n"
      "nan /Int (DiameterDependsOn) ,\r\n/None /Real (Roundness) ,\r\n";
  const auto styles = read(library.text()).styles;
  ASSERT_THAT(styles, SizeIs(2));
  ASSERT_TRUE(styles[1].brush);
  EXPECT_EQ(styles[1].brush->size, (art::BrushValue{2.0, 1.5, art::BrushDriver::pressure}));
  EXPECT_EQ(styles[1].brush->roundness.value, 100);
}

TEST(WrongType, OfABrushNameLeavesOutTheBrush) {
  LibraryText library;
  library.brush = "/MyPen\r\n(1 0.5 3.5 100 100 0 0 2 0 0 0) .";
  EXPECT_FALSE(read(library.text()).styles.at(1).brush);
}

TEST(WrongValue, OfAnAngleThatOverflowsLeavesOutTheBrush) {
  for (const char* angle : {"1e308", "-1e308"}) {
    LibraryText library;
    library.keys = std::string(angle) + " /Real (Angle) ,\r\n1e308 /Real (AngleVariation) ,\r\n";
    EXPECT_FALSE(read(library.text()).styles.at(1).brush) << angle;
  }
}

TEST(WrongValue, OfAColourIsClampedToItsRange) {
  const std::pair<const char*, art::Color> strokes[] = {
      {"1e308 1e308 -1e308 -1e308 K", {0, 0, 1}},
      {"0 0 0 1 9 -9 0.5 XA", {1, 0, 0.5}},
      {"-4 G", {0, 0, 0}},
  };
  for (const auto& [stroke, color] : strokes) {
    LibraryText library;
    library.stroke = stroke;
    EXPECT_EQ(read(library.text()).styles.at(1).strokeColor, color) << stroke;
  }
}

TEST(UnclosedBlock, LosesItsStyleAndThoseAfterIt) {
  const std::string text = LibraryText().text();
  EXPECT_EQ(read(without(text, ";\r\n/Execution ;\r\n")).problem, kNoStyles);
}

TEST(UnclosedString, TakesTheRestOfTheText) {
  LibraryText library;
  library.brush = "(My (Pen)\r\n(1 0.5 3.5 100 100 0 0 2 0 0 0) .";
  EXPECT_EQ(read(library.text()).problem, kNoStyles);
}

}  // namespace
