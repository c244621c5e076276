#include "translate/trace_text.h"

#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;

TEST(TraceText, ValuesAreDecimalsWithOrWithoutExponent) {
  EXPECT_EQ(placesIn(".5 1.25,1e1 2.5E-1,-.5 3.,+2 1E+1"),
            (Places{{5, 13}, {100, 3}, {-5, 30}, {20, 100}}));
}

TEST(TraceText, WhiteSpaceAroundValuesAndCommasCountsForNothing) {
  EXPECT_EQ(placesIn("\n\t1 2,\n 3\n4\r\n, 5\t6\n"), (Places{{10, 20}, {30, 40}, {50, 60}}));
}

TEST(TraceText, SignAndPrefixEndTheValueBeforeThem) {
  EXPECT_EQ(placesIn("12-3'4,'5-6"), (Places{{120, -30}, {170, -60}}));
  EXPECT_EQ(placesIn("10-20,30 40,-5-6"), (Places{{100, -200}, {300, 400}, {-50, -60}}));
}

TEST(TraceText, BlanksMayStandBetweenPrefixSignAndNumber) {
  EXPECT_EQ(placesIn("10 20,' - 3 ' 4"), (Places{{100, 200}, {70, 240}}));
}

TEST(TraceText, DifferencesHoldUntilAnotherPrefix) {
  EXPECT_EQ(placesIn("10 20,'3'4,5-6,!1 1"),
            (Places{{100, 200}, {130, 240}, {180, 180}, {10, 190}}));
}

TEST(TraceText, ChannelsHaveModesOfTheirOwn) {
  EXPECT_EQ(placesIn("10 20,'1 30,1 31"), (Places{{100, 200}, {110, 300}, {120, 310}}));
}

// Differences 10, 15, 16 and 20, 15, 16.
TEST(TraceText, SecondDifferencesChangeTheDifference) {
  EXPECT_EQ(placesIn("100 200,'10'20,\"5\"-5,1 1"),
            (Places{{1000, 2000}, {1100, 2200}, {1250, 2350}, {1410, 2510}}));
}

// The last difference is 2 and 3.
TEST(TraceText, SecondDifferencesFollowExplicitValuesToo) {
  EXPECT_EQ(placesIn("1 1,3 4,\"1\"-1"), (Places{{10, 10}, {30, 40}, {60, 60}}));
}

TEST(TraceText, AStarKeepsAValueOrGoesOnWithTheDifference) {
  EXPECT_EQ(placesIn("10 20,* 21,'1'2,**,* 3"),
            (Places{{100, 200}, {100, 210}, {110, 230}, {120, 250}, {130, 280}}));
  EXPECT_EQ(placesIn("0 0,'1'1,\"1\"2,**"), (Places{{0, 0}, {10, 10}, {30, 40}, {60, 90}}));
}

TEST(TraceText, HexadecimalNumbersBeginWithAHash) {
  EXPECT_EQ(placesIn("#1F #0a,'#A'-#3,-#1#2"), (Places{{310, 100}, {410, 70}, {400, 90}}));
}

TEST(TraceText, ExponentsAndHexadecimalDigitsAreNotMistakenForEachOther) {
  EXPECT_EQ(placesIn("1e1#e1"), (Places{{100, 2250}}));
}

TEST(TraceText, AQuestionMarkIsNoValue) {
  const std::string text = inMillimetres("<trace>1 1,? 2,3 3,'1'1,??,1 1</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 10}, {30, 30}, {40, 40}, {50, 50}}));
  EXPECT_EQ(remarked(text, RemarkKind::pointsWithoutPlace), 2U);
}

TEST(TraceText, EachTraceBeginsWithExplicitValues) {
  EXPECT_EQ(placesOf(inMillimetres("<trace>10 20,'1'2</trace><trace>50 60,51 61</trace>")),
            (std::vector<Places>{{{100, 200}, {110, 220}}, {{500, 600}, {510, 610}}}));
}

TEST(TraceText, CommasInARowAndAtTheEndsPartNothing) {
  EXPECT_EQ(placesIn(",1 1,,2 2, ,3 3,"), (Places{{10, 10}, {20, 20}, {30, 30}}));
}

TEST(TraceText, ExchangedCommasAndBlanksAreUnderstood) {
  EXPECT_EQ(placesIn("1,119 2,119 5,120"), (Places{{10, 1190}, {20, 1190}, {50, 1200}}));
  EXPECT_EQ(placesIn("1,119"), (Places{{10, 1190}}));
  const std::string three =
      withChannels("<channel name='F' max='10'/>", "<trace>1,2,5 3,4,10 5,6,0</trace>");
  EXPECT_EQ(onlyPlaces(three), (Places{{10, 20}, {30, 40}, {50, 60}}));
  EXPECT_EQ(valuesOf(three, &Seven::pressure), (std::vector<std::uint32_t>{512, 1023, 0}));
}

TEST(TraceText, WithoutCommasAPointHasAsManyValuesAsChannels) {
  EXPECT_EQ(placesIn("1 2 3 4 5 6"), (Places{{10, 20}, {30, 40}, {50, 60}}));
  EXPECT_EQ(onlyPlaces(withChannels("<channel name='T'/>", "<trace>1 2 0 3 4 9</trace>")),
            (Places{{10, 20}, {30, 40}}));
}

TEST(TraceText, OnePointWithIntermittentValuesIsOnePoint) {
  const std::string text = withChannels(
      "<intermittentChannels><channel name='B1' type='boolean'/><channel name='B2' "
      "type='boolean'/></intermittentChannels>",
      "<trace>1 2 T F</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 20}}));
}

TEST(TraceText, WhatIsNoValueIsCounted) {
  const std::string text = inMillimetres("<trace>1 1,abc 2,3 3 nan,4 inf,1;2 5,6 6</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 10}, {30, 30}, {60, 60}}));
  const Translation found = translated(text);
  EXPECT_EQ(remarked(found, RemarkKind::pointsWithoutPlace), 3U);
  EXPECT_EQ(remarked(found, RemarkKind::valuesUnreadable), 3U);
  EXPECT_EQ(remarked(found, RemarkKind::valuesTooMany), 2U);
}

TEST(TraceText, NumbersBeyondAllMeasureAreNoValues) {
  const std::string text = inMillimetres("<trace>1 1,1e999 2,3 3</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 10}, {30, 30}}));
  EXPECT_EQ(remarked(text, RemarkKind::valuesUnreadable), 1U);
}

TEST(TraceText, EveryTextIsReadToItsEnd) {
  const std::string signs = "0 1.-+'\"!*?#TFe,;\xC3";
  translate::TraceText text;
  unsigned state = 1;
  for (int i = 0; i < 20'000; ++i) {
    std::string random;
    for (int length = i % 13; length > 0; --length) {
      state = state * 1664525 + 1013904223;
      random += signs[(state >> 16) % signs.size()];
    }
    text.scan(random, 2, 3);
    std::size_t values = 0;
    for (std::size_t point = 0; point < text.pointCount(); ++point)
      values += text.point(point).size();
    ASSERT_LE(values, random.size()) << random;
    const bool hasSigns = random.find_first_not_of(" ,") != std::string::npos;
    ASSERT_EQ(values > 0, hasSigns) << random;
  }
}

}  // namespace
