#include <gtest/gtest.h>

#include "tests/translate/translated.h"
#include "translate/clock.h"

namespace {

using namespace translatetest;
using Times = std::vector<std::uint32_t>;

Times timesOf(const std::string& bytes) {
  return valuesOf(bytes, &Seven::time);
}

TEST(Times, OfTCountFromTheStartOfTheTrace) {
  EXPECT_EQ(timesOf(withChannels("<channel name='T' type='integer' units='ms'/>",
                                 "<trace timeOffset='0'>0 0 0,1 1 10</trace>"
                                 "<trace timeOffset='100'>0 0 0,1 1 10</trace>")),
            (Times{0, 10, 100, 110}));
}

TEST(Times, OfTHaveUnitsAndDifferences) {
  EXPECT_EQ(timesOf(withChannels("<channel name='T' units='s'/>",
                                 "<trace>0 0 0,1 1'0.01,2 2 0.01</trace>")),
            (Times{0, 10, 20}));
  EXPECT_EQ(timesOf(withChannels("<channel name='T' units='dev'/>", "<trace>0 0 7,1 1 8</trace>")),
            (Times{7, 8}));
}

TEST(Times, OfTCountFromTheTimestampThatItNames) {
  EXPECT_EQ(timesOf(ink("<definitions><timestamp xml:id='t0' time='5000'/></definitions>"
                        "<traceFormat><channel name='X' units='mm'/><channel name='Y' "
                        "units='mm'/><channel name='T' respectTo='#t0'/></traceFormat>"
                        "<trace timeOffset='99'>0 0 1,1 1 2</trace>")),
            (Times{5001, 5002}));
}

TEST(Times, ThatOnePointLacksIsThatOfThePointBefore) {
  EXPECT_EQ(timesOf(withChannels("<channel name='T'/>", "<trace>0 0 5,1 1 ?,2 2 9</trace>")),
            (Times{5, 5, 9}));
}

constexpr const char* kRate =
    "<context><inkSource><traceFormat><channel name='X' units='mm'/><channel name='Y' "
    "units='mm'/></traceFormat><sampleRate value='100'/></inkSource></context>";

TEST(Times, WithoutTComeFromTheSampleRate) {
  EXPECT_EQ(timesOf(ink(std::string(kRate) + "<trace timeOffset='1000'>0 0,1 1,2 2</trace>")),
            (Times{1000, 1010, 1020}));
}

TEST(Times, OfAContinuationFollowTheStroke) {
  EXPECT_EQ(timesOf(ink(std::string(kRate) +
                        "<trace xml:id='a' continuation='begin' timeOffset='50'>0 0,1 1</trace>"
                        "<trace continuation='end' priorRef='#a'>2 2,3 3</trace>")),
            (Times{50, 60, 70, 80}));
}

TEST(Times, WithoutARateAreSpreadOverTheDuration) {
  EXPECT_EQ(timesOf(inMillimetres("<trace timeOffset='10' duration='90'>0 0,1 1,2 2,3 3</trace>")),
            (Times{10, 40, 70, 100}));
}

TEST(Times, WithoutAnythingElseAreTheStart) {
  EXPECT_EQ(timesOf(inMillimetres("<trace timeOffset='10'>0 0,1 1</trace><trace>0 0</trace>")),
            (Times{10, 10, 0}));
}

TEST(Times, OfDayCountFromTheEarliest) {
  EXPECT_EQ(timesOf(ink("<definitions><timestamp xml:id='a' timeString='2011-02-22T00:21:40.232'/>"
                        "<timestamp xml:id='b' timestampRef='#a' timeOffset='1500'/>"
                        "<context xml:id='ca' timestampRef='#a'/>"
                        "<context xml:id='cb' timestampRef='#b'/></definitions>" +
                        std::string(kMillimetres) +
                        "<trace contextRef='#cb'>0 0</trace>"
                        "<trace contextRef='#ca' timeOffset='20'>0 0</trace>")),
            (Times{1480, 0}));
}

TEST(Times, BelowZeroCountFromTheEarliest) {
  EXPECT_EQ(timesOf(inMillimetres("<trace timeOffset='-30'>0 0</trace><trace>1 1</trace>")),
            (Times{0, 30}));
}

TEST(Times, MoreThan24DaysLaterAreKeptAtTheLatest) {
  const std::string text =
      inMillimetres("<trace timeOffset='1'>0 0</trace><trace timeOffset='3e9'>1 1</trace>");
  EXPECT_EQ(timesOf(text), (Times{0, 2147483647}));
  EXPECT_EQ(remarked(text, RemarkKind::timesTooLate), 1U);
}

TEST(Times, OfTracesWithoutATimeOfDayStayAmongThemselves) {
  const std::string text =
      ink(std::string(kMillimetres) +
          "<trace timeOffset='7'>0 0</trace><timestamp time='1e12'/>"
          "<trace timeOffset='5'>0 0</trace><trace timeOffset='9'>0 0</trace>");
  EXPECT_EQ(timesOf(text), (Times{0, 0, 4}));
  EXPECT_EQ(remarked(text, RemarkKind::clocksUnlinked), 1U);
}

TEST(Times, ThatCannotBeReadAreSaid) {
  const std::string text = inMillimetres("<trace timeOffset='soon'>0 0</trace>");
  EXPECT_EQ(timesOf(text), (Times{0}));
  EXPECT_EQ(remarked(text, RemarkKind::attributesUnreadable, "timeoffset=\"soon\""), 1U);
}

// 1 January 2000 was 10,957 days after 1 January 1970.
TEST(TimeOfDay, IsReadInTheFormOfTheStandard) {
  constexpr double kDay = 86'400'000;
  EXPECT_EQ(translate::timeOfDay("2000-01-01"), 10957 * kDay);
  EXPECT_EQ(translate::timeOfDay("2000-01-01T00:00:01.5Z"), 10957 * kDay + 1500);
  EXPECT_EQ(translate::timeOfDay(" 2000-01-01T02:30:00+02:30 "), 10957 * kDay);
  EXPECT_EQ(translate::timeOfDay("1999-12-31T22:00-0200"), 10957 * kDay);
  EXPECT_EQ(translate::timeOfDay("2000-02-29T24:00:00"), (10957 + 60) * kDay);
  for (const char* text : {"", "2000", "2001-02-29", "2000-01-01T", "2000-01-01T25:00",
                           "2000-01-01X", "2000-01-01T00:00:00+", "-200-01-01"})
    EXPECT_FALSE(translate::timeOfDay(text)) << text;
}

}  // namespace
