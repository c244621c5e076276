// The limits of a library.
#include "stylelib/limits.h"

#include <gmock/gmock.h>

#include "tests/stylelib/hostile_libraries.h"

namespace {

using libtest::bareLibrary;
using libtest::deflated;
using libtest::knownStyle;
using libtest::LibraryText;
using libtest::PdfBuilder;
using libtest::pdfOfBlocks;
using libtest::read;
using libtest::repeated;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kTooMuchInflated[] = "it inflates to more than 16 MiB";
constexpr char kTooMuchText[] = "its graphic styles and brushes take more than 1 MiB of text";
constexpr char kTooDeep[] = "its graphic styles are nested more than 100 levels deep";

// A sound library that a comment at its end fills up to a size.
std::string libraryOfSize(std::size_t size) {
  const std::string text = LibraryText().text();
  return text + "%" + std::string(size - text.size() - 1, 'x');
}

// A library of one style, whose parts have as many bytes of text, marks not counted.
std::string libraryWithParts(std::size_t size) {
  const std::string list = "\n(s)\n";
  const std::string style = "\n" + knownStyle("s");
  return bareLibrary(knownStyle("s") + std::string(size - style.size() - list.size() - 1, ' '),
                     "(s)");
}

std::string nestedTo(int depth) {
  return bareLibrary("/KnownStyle : (s) /Name , " + repeated(depth - 1, "/Part : ") +
                         repeated(depth - 1, "; ") + ";",
                     "(s)");
}

TEST(LibraryLimits, AFileMayHave16MiB) {
  EXPECT_THAT(read(libraryOfSize(stylelib::kMostFileBytes)).styles, SizeIs(2));
  EXPECT_EQ(read(libraryOfSize(stylelib::kMostFileBytes + 1)).problem, "it is larger than 16 MiB");
}

TEST(LibraryLimits, BlocksMayInflateTo16MiB) {
  const std::string most = deflated(libraryOfSize(stylelib::kMostInflatedBytes));
  const std::string more = deflated(libraryOfSize(stylelib::kMostInflatedBytes + 1));
  EXPECT_THAT(read(pdfOfBlocks({most}, "/Filter/FlateDecode")).styles, SizeIs(2));
  EXPECT_EQ(read(pdfOfBlocks({more}, "/Filter/FlateDecode")).problem, kTooMuchInflated);
}

TEST(LibraryLimits, AllBlocksTogetherMayInflateTo16MiB) {
  const std::string half = deflated(libraryOfSize(stylelib::kMostInflatedBytes / 2));
  EXPECT_THAT(read(pdfOfBlocks({half, half}, "/Filter/FlateDecode")).styles, SizeIs(2));
  EXPECT_EQ(read(pdfOfBlocks({half, half, deflated("%")}, "/Filter/FlateDecode")).problem,
            kTooMuchInflated);
}

TEST(LibraryLimits, OneRunMayInflateTo16MiB) {
  const auto run = [](std::size_t size) {
    return pdfOfBlocks({"%AI12_CompressedData" + deflated(libraryOfSize(size))}, "");
  };
  EXPECT_THAT(read(run(stylelib::kMostInflatedBytes)).styles, SizeIs(2));
  EXPECT_EQ(read(run(stylelib::kMostInflatedBytes + 1)).problem, kTooMuchInflated);
}

TEST(LibraryLimits, ObjectStreamsCountAsInflatedBytesToo) {
  const std::string bomb = deflated(std::string(stylelib::kMostInflatedBytes, ' '));
  PdfBuilder pdf;
  pdf.object("<</AIPrivateData2 2 0 R>>");
  pdf.stream("/Filter/FlateDecode", deflated(LibraryText().text()));
  EXPECT_THAT(read(pdf.bytes()).styles, SizeIs(2));
  pdf.stream("/Type/ObjStm/Filter/FlateDecode", bomb);
  EXPECT_EQ(read(pdf.bytes()).problem, kTooMuchInflated);
}

TEST(LibraryLimits, APdfMayHave100000Objects) {
  const auto pdfOf = [](std::size_t count) {
    PdfBuilder pdf;
    pdf.object("<</AIPrivateData2 2 0 R>>");
    pdf.stream("", LibraryText().text());
    for (std::size_t i = 2; i < count; ++i)
      pdf.object("1");
    return pdf.bytes();
  };
  EXPECT_THAT(read(pdfOf(stylelib::kMostObjects)).styles, SizeIs(2));
  EXPECT_EQ(read(pdfOf(stylelib::kMostObjects + 1)).problem, "it has more than 100,000 objects");
}

TEST(LibraryLimits, StreamsMayNotOverlap) {
  EXPECT_EQ(read(libtest::objectStreamsWithoutEnd(20)).problem, "its streams overlap");
  EXPECT_EQ(read(libtest::blocksOfOneStream(200)).problem, "its streams overlap");
}

TEST(LibraryLimits, StylesAndTheirListMayHave1MiBOfText) {
  EXPECT_THAT(read(libraryWithParts(stylelib::kMostStyleText)).styles, SizeIs(1));
  EXPECT_EQ(read(libraryWithParts(stylelib::kMostStyleText + 1)).problem, kTooMuchText);
}

TEST(LibraryLimits, BrushesCountAsTextToo) {
  const auto libraryOfBrushes = [](std::size_t length) {
    LibraryText library;
    library.brush = "(" + std::string(length, 'b') + ")(1 2)";
    return library.text();
  };
  EXPECT_THAT(read(libraryOfBrushes(stylelib::kMostStyleText - 10'000)).styles, SizeIs(2));
  EXPECT_EQ(read(libraryOfBrushes(stylelib::kMostStyleText)).problem, kTooMuchText);
}

TEST(LibraryLimits, AnythingElseMayHaveMoreText) {
  const std::string swatches = repeated(200'000, "0 0 0 1 k (Black) Pc\n");
  const std::string tile = "%AI8_BeginPluginObject\n(Some Art Brush Tool)\n(x)\n(" +
                           std::string(2'000'000, '1') + ") .\n%AI8_EndPluginObject\n";
  EXPECT_THAT(read(LibraryText().text() + swatches + tile).styles, SizeIs(2));
}

TEST(LibraryLimits, StylesMayBeNested100LevelsDeep) {
  EXPECT_THAT(read(nestedTo(100)).styles, SizeIs(1));
  EXPECT_EQ(read(nestedTo(101)).problem, kTooDeep);
  EXPECT_EQ(read(libtest::nestedBrushFilters(100)).problem, kTooDeep);
}

TEST(LibraryLimits, AStyleIsGivenOnceHoweverOftenItIsListed) {
  const stylelib::NativeLibrary library = read(libtest::longBrushName(50'000));
  ASSERT_THAT(library.styles, SizeIs(1));
  ASSERT_TRUE(library.styles[0].brush);
  EXPECT_THAT(library.styles[0].brush->name, SizeIs(50'000));
}

TEST(LibraryLimits, BlocksThatAreNeverClosedAreRefused) {
  EXPECT_EQ(read(bareLibrary(repeated(20'000, "/KnownStyle : /BasicFilter : "), "(x)")).problem,
            kTooDeep);
  EXPECT_THAT(read("%PDF-1.4" + std::string(1'000'000, ' ') + repeated(100'000, "1 0 obj ")).styles,
              IsEmpty());
}

}  // namespace
