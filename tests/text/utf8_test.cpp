#include "text/utf8.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using text::firstCharacter;

void expectCharacter(std::string_view bytes, char32_t code, std::size_t length) {
  EXPECT_EQ(firstCharacter(bytes).code, code) << bytes;
  EXPECT_EQ(firstCharacter(bytes).length, length) << bytes;
}

TEST(FirstCharacter, HasOneToFourBytes) {
  expectCharacter("A", U'A', 1);
  expectCharacter("\xC3\xA9z", U'\u00E9', 2);
  expectCharacter("\xE2\x82\xAC", U'\u20AC', 3);
  expectCharacter("\xF0\x9F\x96\x8A...", U'\U0001F58A', 4);
}

TEST(FirstCharacter, ReachesTheEndsOfEachLength) {
  expectCharacter(std::string_view("\0", 1), 0, 1);
  expectCharacter("\x7F", 0x7F, 1);
  expectCharacter("\xC2\x80", 0x80, 2);
  expectCharacter("\xDF\xBF", 0x7FF, 2);
  expectCharacter("\xE0\xA0\x80", 0x800, 3);
  expectCharacter("\xED\x9F\xBF", 0xD7FF, 3);
  expectCharacter("\xEE\x80\x80", 0xE000, 3);
  expectCharacter("\xEF\xBF\xBF", 0xFFFF, 3);
  expectCharacter("\xF0\x90\x80\x80", 0x10000, 4);
  expectCharacter("\xF4\x8F\xBF\xBF", 0x10FFFF, 4);
}

TEST(FirstCharacter, IsNoneWhereTheBytesAreNotValid) {
  const std::string_view invalid[] = {
      "",  // nothing
      "\x80",
      "\xBF",  // a byte that only follows others
      "\xC0\x80",
      "\xC1\xBF",  // overlong: two bytes for one
      "\xE0\x9F\xBF",
      "\xF0\x8F\xBF\xBF",  // overlong: three for two, four for three
      "\xED\xA0\x80",
      "\xED\xBF\xBF",  // surrogates
      "\xF4\x90\x80\x80",
      "\xF5\x80\x80\x80",
      "\xFF",  // beyond the last character
      "\xC3",
      "\xE2\x82",
      "\xF0\x9F\x96",  // cut short
      "\xC3z",
      "\xE2\x82z",
      "\xF0\x9F\x96z",  // broken off by another character
  };
  for (const std::string_view bytes : invalid)
    EXPECT_FALSE(firstCharacter(bytes)) << bytes;
}

TEST(IsUtf8, IsTrueOnlyForTextThatIsValidToItsEnd) {
  EXPECT_TRUE(text::isUtf8(""));
  EXPECT_TRUE(text::isUtf8("line \xE2\x82\xAC 5"));
  EXPECT_FALSE(text::isUtf8("line \xE2\x82"));
  EXPECT_FALSE(text::isUtf8("caf\xE9!"));
}

TEST(AppendUtf8, WritesWhatFirstCharacterReads) {
  for (const unsigned code :
       {0x0U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
    std::string bytes;
    text::appendUtf8(bytes, code);
    expectCharacter(bytes, code, bytes.size());
  }
}

TEST(AppendUtf8, WritesTheReplacementForWhatIsNotACharacter) {
  for (const unsigned code : {0xD800U, 0xDFFFU, 0x110000U}) {
    std::string bytes = "<";
    text::appendUtf8(bytes, code);
    EXPECT_EQ(bytes, "<\xEF\xBF\xBD");
  }
}

TEST(IsControl, IsTrueOnlyForTheTwoControlBlocks) {
  for (const unsigned code : {0x00U, 0x1BU, 0x1FU, 0x7FU, 0x80U, 0x9BU, 0x9FU})
    EXPECT_TRUE(text::isControl(code)) << code;
  for (const unsigned code : {0x20U, 0x7EU, 0xA0U, 0x202EU})
    EXPECT_FALSE(text::isControl(code)) << code;
}

TEST(IsHarmful, IsTrueForControlsMarksOfDirectionAndSeparators) {
  for (const unsigned code : {0x00U, 0x1BU, 0x7FU, 0x9BU, 0x061CU, 0x200EU, 0x200FU, 0x2028U,
                              0x2029U, 0x202AU, 0x202EU, 0x2066U, 0x2069U, 0xFEFFU})
    EXPECT_TRUE(text::isHarmful(code)) << code;
  for (const unsigned code : {0x20U, 0xA0U, 0x061BU, 0x061DU, 0x200DU, 0x2010U, 0x2027U, 0x202FU,
                              0x2065U, 0x206AU, 0xFEFEU, 0x1F58AU})
    EXPECT_FALSE(text::isHarmful(code)) << code;
}

}  // namespace
