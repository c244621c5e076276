// Style libraries in the host's native format.
#include "embedded/native_library.h"

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <string>
#include <vector>
#include <zlib.h>

namespace {

using embedded::NativeLibrary;
using embedded::readNativeLibrary;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

NativeLibrary read(const std::string& bytes) {
  return readNativeLibrary({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

std::string deflated(const std::string& text) {
  const auto length = static_cast<uLong>(text.size());
  uLongf size = compressBound(length);
  std::string out(size, '\0');
  compress(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(text.data()),
           length);
  out.resize(size);
  return out;
}

// The parts of a library's text, as the format has them.
struct LibraryText {
  std::string brush = "(My Pen)\r\n(1 0.5 3.5 100 100 0 0 2 0 0 0) .";
  std::string reference = "(My Pen)";
  std::string keys;
  std::string stroke = "0 R 0 0 0 1 K 0 J 0 j 1 w 4 M []0 d";
  std::string list = "([Default])\r\n(My Style)";

  std::string text() const {
    return "%!PS-Adobe-3.0 \r\n%%EndComments\r\n"
           "%AI8_BeginPluginObject\r\n(Adobe Calligraphic Brush Tool)\r\n" +
           brush +
           "\r\n%AI8_EndPluginObject\r\n"
           "%AI9_BeginArtStyles\r\n"
           "/KnownStyle :\r\n(My Style) /Name ,\r\n/ActiveStyle :\r\n/CompoundFilter :\r\n"
           "(Chain Style Filter) 0 0 /Filter ,\r\n"
           "/BasicFilter :\r\n(Adobe Calligraphic Brush Tool) 1 0 /Filter ,\r\n"
           "/Dictionary :\r\n/StrokeStyle : " +
           stroke + " /Def ; (StrokeStyle) ,\r\n/GObjRef : " + reference +
           " (Adobe Calligraphic Brush Tool) /PluginObject ; (Brush) ,\r\n" + keys +
           "; /Dict ;\r\n /Part ,\r\n;\r\n/Execution ;\r\n /Def ;\r\n"
           "/KnownStyle :\r\n([Default]) /Name ,\r\n/SimpleStyle :\r\n0 0 0 1 K 1 w /Paint ;\r\n"
           " /Def ;\r\n%AI9_EndArtStyles\r\n"
           "%AI9_BeginArtStyleList\r\n" +
           list + "\r\n%AI9_EndArtStyleList\r\n";
  }
};

// A PDF around private streams, without a cross-reference table.
class PdfBuilder {
 public:
  PdfBuilder& object(const std::string& dictionary) { return add(dictionary, ""); }
  PdfBuilder& stream(const std::string& keys, const std::string& data) {
    return add("<</Length " + std::to_string(data.size()) + keys + ">>",
               "stream\r\n" + data + "\r\nendstream");
  }
  const std::string& bytes() const { return bytes_; }

 private:
  PdfBuilder& add(const std::string& dictionary, const std::string& stream) {
    bytes_ += std::to_string(++count_) + " 0 obj\r" + dictionary + stream + "\rendobj\r";
    return *this;
  }

  std::string bytes_ = "%PDF-1.4\r";
  int count_ = 0;
};

std::string pdfOfBlocks(const std::vector<std::string>& blocks, const std::string& keys) {
  std::string references;
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    references += "/AIPrivateData" + std::to_string(i + 2) + " " + std::to_string(i + 3) + " 0 R";
  }
  PdfBuilder pdf;
  pdf.object("<</AIPrivateData1 2 0 R" + references + "/NumBlock 9>>");
  pdf.stream("", "%%BoundingBox: 0 0 1 1\r\n");
  for (const std::string& block : blocks)
    pdf.stream(keys, block);
  return pdf.bytes();
}

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

TEST(NativeLibrary, IsReadFromSingleLineEnds) {
  std::string text = LibraryText().text();
  std::erase(text, '\n');
  expectMyPen(read(text));
}

TEST(NativeLibrary, IsReadFromBlocksThatAreDeflatedEachForItself) {
  const std::string text = LibraryText().text();
  const std::size_t half = text.size() / 2;
  expectMyPen(read(pdfOfBlocks({deflated(text.substr(0, half)), deflated(text.substr(half))},
                               "/Filter[/FlateDecode]")));
}

TEST(NativeLibrary, IsReadFromOneDeflatedRunOverAllBlocks) {
  const std::string run = "%AI12_CompressedData" + deflated(LibraryText().text());
  expectMyPen(read(pdfOfBlocks({run.substr(0, 100), run.substr(100)}, "")));
}

TEST(NativeLibrary, IsFoundWhereItsDictionaryLiesInAnObjectStream) {
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

TEST(NativeLibrary, GivesFixedAndDrivenRoundnessAndAngle) {
  LibraryText library;
  library.brush = "(My Pen)\r\n(1 6 6 20 80 -30 90 0 2 1 0) .";
  const art::Style style = styleNamed(read(library.text()), "My Style");
  ASSERT_TRUE(style.brush);
  EXPECT_EQ(style.brush->size, (art::BrushValue{6, 0, art::BrushDriver::fixed}));
  EXPECT_EQ(style.brush->roundness, (art::BrushValue{50, 30, art::BrushDriver::pressure}));
  EXPECT_EQ(style.brush->angle, (art::BrushValue{30, 60, art::BrushDriver::random}));
}

TEST(NativeLibrary, TakesTheStylesOwnSizeBeforeThatOfItsBrush) {
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
  const NativeLibrary read_ = read(library.text());
  ASSERT_EQ(read_.styles.size(), 1U);
  EXPECT_EQ(read_.styles[0].name, "[Default]");
  EXPECT_FALSE(read_.styles[0].brush);
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

TEST(NativeLibrary, SaysWhatIsWrong) {
  EXPECT_EQ(read("").problem, "it is empty");
  EXPECT_THAT(read("GIF89a").problem, HasSubstr("is no native file"));
  EXPECT_THAT(read("%PDF-1.4\r1 0 obj<</Type/Catalog>>endobj").problem,
              HasSubstr("a PDF without native data"));
  EXPECT_THAT(read("%!PS-Adobe-3.0\r\n").problem, HasSubstr("lists no graphic styles"));
  EXPECT_THAT(read(pdfOfBlocks({"no deflate"}, "/Filter/FlateDecode")).problem,
              HasSubstr("damaged or missing"));
  EXPECT_THAT(read(pdfOfBlocks({"%AI12_CompressedDatano deflate"}, "")).problem,
              HasSubstr("compressed native data is damaged"));
}

TEST(NativeLibrary, BoundsWhatItInflates) {
  const std::string bomb = deflated(std::string(std::size_t{200} << 20, ' '));
  EXPECT_NE(read(pdfOfBlocks({bomb}, "/Filter/FlateDecode")).problem, "");
  EXPECT_NE(read(pdfOfBlocks({"%AI12_CompressedData" + bomb}, "")).problem, "");
  EXPECT_NE(read(pdfOfBlocks(std::vector(30, bomb), "/Filter/FlateDecode")).problem, "");
}

TEST(NativeLibrary, IsNotHeldUpByBracketsThatNeverClose) {
  std::string text = "%!PS-Adobe-3.0\r\n%AI9_BeginArtStyles\r\n";
  for (int i = 0; i < 200'000; ++i)
    text += "/KnownStyle : /BasicFilter : ";
  text += "\r\n%AI9_EndArtStyles\r\n%AI9_BeginArtStyleList\r\n(x)\r\n%AI9_EndArtStyleList\r\n";
  EXPECT_THAT(read(text).styles, IsEmpty());
  EXPECT_THAT(read("%PDF-1.4" + std::string(1'000'000, ' ') +
                   [] {
                     std::string objects;
                     for (int i = 0; i < 100'000; ++i)
                       objects += "1 0 obj ";
                     return objects;
                   }())
                  .styles,
              IsEmpty());
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
