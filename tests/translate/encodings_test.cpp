#include <gtest/gtest.h>
#include <zlib.h>

#include "tests/translate/translated.h"
#include "translate/packed.h"

namespace {

using namespace translatetest;

std::string titled(const std::string& declaration, const std::string& title) {
  return declaration + "<ink><annotation type='title'>" + title + "</annotation>" +
         std::string(kMillimetres) + "<trace>1 2</trace></ink>";
}

// Of ASCII text, with either byte first.
std::string asUtf16(const std::string& text, bool isLittle) {
  std::string bytes = isLittle ? "\xFF\xFE" : "\xFE\xFF";
  for (const char c : text)
    bytes += isLittle ? std::string{c, '\0'} : std::string{'\0', c};
  return bytes;
}

void expectTitle(const std::string& bytes, const std::string& title) {
  EXPECT_EQ(translated(bytes).document->annotations().at("title"), title);
  EXPECT_EQ(onlyPlaces(bytes), (Places{{10, 20}}));
}

std::string packed(const std::string& text) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 16 + MAX_WBITS, 9, Z_DEFAULT_STRATEGY), Z_OK);
  std::string copy = text;
  std::string out(deflateBound(&stream, static_cast<uLong>(text.size())) + 64, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(copy.data());
  stream.avail_in = static_cast<uInt>(copy.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

TEST(Encodings, Utf8WithOrWithoutMark) {
  expectTitle(titled("", "\xC3\xA9"), "\xC3\xA9");
  expectTitle("\xEF\xBB\xBF" + titled("<?xml version='1.0' encoding='UTF-8'?>", "\xC3\xA9"),
              "\xC3\xA9");
}

TEST(Encodings, Utf16InEitherOrder) {
  for (const bool isLittle : {true, false}) {
    expectTitle(asUtf16(titled("<?xml version='1.0' encoding='UTF-16'?>", "x"), isLittle), "x");
    expectTitle(asUtf16(titled("", "&#233;"), isLittle), "\xC3\xA9");
  }
}

TEST(Encodings, Utf8ThatIsDeclaredAsUtf16) {
  expectTitle(titled("<?xml version='1.0' encoding='utf-16'?>", "\xC3\xA9"), "\xC3\xA9");
}

TEST(Encodings, Latin1) {
  expectTitle(titled("<?xml version='1.0' encoding='ISO-8859-1'?>", "\xE9"), "\xC3\xA9");
}

// 0x80 is the euro sign and 0x9C a ligature.
TEST(Encodings, Windows1252) {
  expectTitle(titled("<?xml version='1.0' encoding='windows-1252'?>", "\x80\x9C\xE9"),
              "\xE2\x82\xAC\xC5\x93\xC3\xA9");
}

TEST(Encodings, ThatAreNotKnownAreRefused) {
  EXPECT_EQ(problemOf(titled("<?xml version='1.0' encoding='EBCDIC-9'?>", "x")),
            "it declares an encoding that is not known");
}

TEST(Encodings, OtherThanDeclaredAreRefused) {
  EXPECT_EQ(problemOf(titled("<?xml version='1.0' encoding='UTF-8'?>", "\xE9"))
                .rfind("it is not well-formed", 0),
            0U);
}

TEST(Packed, DocumentsAreUnpacked) {
  const std::string text = titled("", "x");
  expectTitle(packed(text), "x");
  expectTitle(packed(text.substr(0, 30)) + packed(text.substr(30)), "x");
  expectTitle(packed(text) + std::string(100, '\0'), "x");
}

TEST(Packed, DocumentsThatAreCutOrDamagedAreRefused) {
  const std::string whole = packed(titled("", "x"));
  for (std::size_t size = 2; size < whole.size(); ++size)
    EXPECT_EQ(problemOf(whole.substr(0, size)), "its gzip is damaged or breaks off") << size;
  std::string damaged = whole;
  damaged[damaged.size() - 5] ^= 1;
  EXPECT_EQ(problemOf(damaged), "its gzip is damaged or breaks off");
}

TEST(Packed, DocumentsMayNotGrowWithoutEnd) {
  std::string blanks;
  blanks.resize(8'000'000, ' ');
  EXPECT_EQ(translate::unpack(packed(blanks)).bytes.size(), 8'000'000U);
  blanks.resize(20'000'000, ' ');
  EXPECT_EQ(problemOf(packed(blanks)), "its gzip grows more than a hundredfold");
}

}  // namespace
