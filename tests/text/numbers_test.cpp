#include "text/numbers.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

namespace {

template <class Number>
std::string written(Number number) {
  std::string out = "at ";
  text::appendNumber(out, number);
  return out;
}

TEST(Numbers, AreAppendedInTheirShortestForm) {
  EXPECT_EQ(written(0.1F), "at 0.1");
  EXPECT_EQ(written(0.1), "at 0.1");
  EXPECT_EQ(written(1e23), "at 1e+23");
  EXPECT_EQ(written(std::numeric_limits<double>::lowest()), "at -1.7976931348623157e+308");
  EXPECT_EQ(written(std::numeric_limits<std::int64_t>::min()), "at -9223372036854775808");
}

TEST(WholeNumber, IsReadInTheGivenBase) {
  EXPECT_EQ(text::wholeNumber<int>("-12"), -12);
  EXPECT_EQ(text::wholeNumber<std::uint32_t>("ff00", 16), 0xFF00U);
}

TEST(WholeNumber, IsNothingWhereThereAreOtherCharacters) {
  for (const char* digits : {"", " 1", "1 ", "1.0", "+1", "0x1", "one"}) {
    EXPECT_EQ(text::wholeNumber<int>(digits), std::nullopt) << digits;
  }
}

TEST(WholeNumber, IsNothingWhereItDoesNotFit) {
  EXPECT_EQ(text::wholeNumber<std::uint8_t>("255"), 255);
  EXPECT_EQ(text::wholeNumber<std::uint8_t>("256"), std::nullopt);
  EXPECT_EQ(text::wholeNumber<std::uint32_t>("-1"), std::nullopt);
}

}  // namespace
