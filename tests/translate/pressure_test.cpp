#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;
using Pressures = std::vector<std::uint32_t>;

Pressures pressures(const std::string& channel, const std::string& traces) {
  return valuesOf(withChannels(channel, traces), &Seven::pressure);
}

TEST(Pressure, IsThePlaceInTheDeclaredRange) {
  EXPECT_EQ(pressures("<channel name='F' min='100' max='1100'/>",
                      "<trace>0 0 100,1 1 600,2 2 1100</trace>"),
            (Pressures{0, 512, 1023}));
}

TEST(Pressure, BeyondTheRangeIsClipped) {
  EXPECT_EQ(pressures("<channel name='F' min='0' max='10'/>", "<trace>0 0 -5,1 1 20</trace>"),
            (Pressures{0, 1023}));
}

// 51 / 255 and 204 / 255.
TEST(Pressure, WithoutAMaximumHasTheNextUsualOne) {
  EXPECT_EQ(pressures("<channel name='F' type='integer'/>", "<trace>0 0 51,1 1 204</trace>"),
            (Pressures{205, 818}));
  EXPECT_EQ(pressures("<channel name='F'/>", "<trace>0 0 0.25</trace><trace>1 1 1</trace>"),
            (Pressures{256, 1023}));
  EXPECT_EQ(pressures("<channel name='F'/>", "<trace>0 0 100000,1 1 50000</trace>"),
            (Pressures{1023, 512}));
}

TEST(Pressure, InPercentIsAShareOfAHundred) {
  EXPECT_EQ(pressures("<channel name='F' units='%'/>", "<trace>0 0 50,1 1 100</trace>"),
            (Pressures{512, 1023}));
}

TEST(Pressure, IsFullWhereNothingMeasuresIt) {
  EXPECT_EQ(valuesOf(inMillimetres("<trace>0 0,1 1</trace>"), &Seven::pressure),
            (Pressures{1023, 1023}));
}

TEST(Pressure, ThatOnePointLacksIsThatOfThePointBefore) {
  EXPECT_EQ(pressures("<channel name='F' max='2'/>", "<trace>0 0 ?,1 1 1,2 2,3 3 2</trace>"),
            (Pressures{512, 512, 512, 1023}));
}

TEST(Pressure, OfARangeWithoutLengthIsReadWithoutIt) {
  EXPECT_EQ(pressures("<channel name='F' min='5' max='5'/>", "<trace>0 0 130,1 1 255</trace>"),
            (Pressures{512, 1023}));
}

}  // namespace
