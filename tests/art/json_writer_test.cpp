#include "art/json_writer.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using art::jsonText;
using art::JsonWriter;

template <class Value>
std::string written(const Value& value) {
  std::string out;
  JsonWriter(out).value(value);
  return out;
}

TEST(JsonWriter, PutsCommasBetweenValuesAndNowhereElse) {
  std::string out;
  JsonWriter json(out);
  json.beginObject().member("a", 1).key("b").beginArray().value(2).value(3).endArray();
  json.key("c").beginObject().endObject().key("d").beginArray().endArray().endObject();
  EXPECT_EQ(out, R"({"a":1,"b":[2,3],"c":{},"d":[]})");
}

TEST(JsonWriter, AppendsToExistingText) {
  std::string out = "before ";
  JsonWriter(out).beginArray().value(true).null().value(false).endArray();
  EXPECT_EQ(out, "before [true,null,false]");
}

TEST(JsonWriter, WritesSinglesAsTheShortestDecimalThatReadsBackAsTheSameSingle) {
  EXPECT_EQ(written(0.1F), "0.1");
  EXPECT_EQ(written(841.89F), "841.89");
  EXPECT_EQ(written(16777216.0F), "16777216");
  EXPECT_EQ(written(0.0F), "0");
  EXPECT_EQ(written(-0.0F), "-0");
}

TEST(JsonWriter, WritesDoublesAsTheShortestDecimalThatReadsBackAsTheSameDouble) {
  EXPECT_EQ(written(0.1), "0.1");
  EXPECT_EQ(written(static_cast<double>(0.1F)), "0.10000000149011612");
  EXPECT_EQ(written(1e300), "1e+300");
}

TEST(JsonWriter, EverySingleReadsBackAsItself) {
  for (std::uint32_t bits = 1; bits < 0x7F800000; bits += 0x000FFFFB) {
    float number = 0;
    static_assert(sizeof number == sizeof bits);
    std::memcpy(&number, &bits, sizeof bits);
    EXPECT_EQ(std::strtof(written(number).c_str(), nullptr), number) << bits;
  }
}

TEST(JsonWriter, WritesNullForWhatIsNotFinite) {
  EXPECT_EQ(written(std::numeric_limits<float>::infinity()), "null");
  EXPECT_EQ(written(-std::numeric_limits<double>::infinity()), "null");
  EXPECT_EQ(written(std::nanf("")), "null");
  EXPECT_EQ(written(std::nan("")), "null");
}

TEST(JsonWriter, WritesIntegersOfEveryWidth) {
  EXPECT_EQ(written(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(written(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
  EXPECT_EQ(written(std::int16_t{-32768}), "-32768");
  EXPECT_EQ(written(std::uint8_t{200}), "200");
}

TEST(JsonText, EscapesQuotationMarksBackslashesAndControlCharacters) {
  EXPECT_EQ(jsonText("a\"b\\c"), R"("a\"b\\c")");
  EXPECT_EQ(jsonText("\n\r\t"), R"("\n\r\t")");
  EXPECT_EQ(jsonText(std::string("\0\x1f\x7f", 3)), R"("\u0000\u001f\u007f")");
  EXPECT_EQ(jsonText("/"), R"("/")");
}

TEST(JsonText, EscapesWhatWouldChangeHowTheRestIsShown) {
  EXPECT_EQ(jsonText("\xC2\x9B"), R"("\u009b")");
  EXPECT_EQ(jsonText("a\xE2\x80\xAE"
                     "b"),
            R"("a\u202eb")");
  EXPECT_EQ(jsonText("\xEF\xBB\xBF"), R"("\ufeff")");
}

TEST(JsonText, LeavesUtf8AsItIs) {
  EXPECT_EQ(jsonText("\xC3\xA9"), "\"\xC3\xA9\"");                  // U+00E9
  EXPECT_EQ(jsonText("\xE2\x82\xAC"), "\"\xE2\x82\xAC\"");          // U+20AC
  EXPECT_EQ(jsonText("\xF0\x9F\x96\x8A"), "\"\xF0\x9F\x96\x8A\"");  // U+1F58A
  EXPECT_EQ(jsonText("\xF4\x8F\xBF\xBF"), "\"\xF4\x8F\xBF\xBF\"");  // U+10FFFF
}

TEST(JsonText, PutsOneReplacementCharacterForEachByteThatIsNotUtf8) {
  const std::string r = "\xEF\xBF\xBD";
  EXPECT_EQ(jsonText("a\x80z"), "\"a" + r + "z\"");            // continuation without a lead
  EXPECT_EQ(jsonText("\xFF\xFE"), '"' + r + r + '"');          // never in UTF-8
  EXPECT_EQ(jsonText("\xC0\xAF"), '"' + r + r + '"');          // overlong '/'
  EXPECT_EQ(jsonText("\xE0\x80\xAF"), '"' + r + r + r + '"');  // overlong in three
  EXPECT_EQ(jsonText("\xF0\x80\x80\xAF"), '"' + r + r + r + r + '"');
  EXPECT_EQ(jsonText("\xED\xA0\x80"), '"' + r + r + r + '"');          // a surrogate
  EXPECT_EQ(jsonText("\xF4\x90\x80\x80"), '"' + r + r + r + r + '"');  // beyond U+10FFFF
  EXPECT_EQ(jsonText("\xE2\x82"), '"' + r + r + '"');                  // cut short
  EXPECT_EQ(jsonText("\xC3("), '"' + r + "(\"");                       // no continuation
}

TEST(JsonWriter, EscapesKeysLikeText) {
  std::string out;
  JsonWriter(out).beginObject().member("a\"b", "c\n").endObject();
  EXPECT_EQ(out, R"({"a\"b":"c\n"})");
}

TEST(JsonWriter, BreaksTheLineAfterACommaOrBeforeAnEnd) {
  std::string out;
  JsonWriter json(out);
  json.beginArray().newline().value(1).newline().value(2).newline().endArray();
  EXPECT_EQ(out, "[\n1,\n2\n]");
}

}  // namespace
