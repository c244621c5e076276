#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;

TEST(Channels, WithoutAFormatAreXAndY) {
  // The longer side, 4 units, becomes 150 mm.
  const std::string text = ink("<trace>1 2, 3 4, 5 6</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{375, 750}, {1125, 1500}, {1875, 2250}}));
  EXPECT_EQ(remarked(text, RemarkKind::sizeAssumed, "37.5"), 1U);
}

TEST(Channels, StandInAnyOrder) {
  const std::string text =
      ink("<traceFormat><channel name='Y' units='mm'/><channel name='F' max='100'/>"
          "<channel name='X' units='mm'/></traceFormat><trace>2 50 1,4 100 3</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 20}, {30, 40}}));
  EXPECT_EQ(valuesOf(text, &Seven::pressure), (std::vector<std::uint32_t>{512, 1023}));
}

TEST(Channels, NamesMayBeInAnyCase) {
  EXPECT_EQ(onlyPlaces(ink("<TRACEFORMAT><Channel Name='y' Units='MM'/><CHANNEL NAME='x' "
                           "UNITS='mm'/></TRACEFORMAT><Trace>2 1</Trace>")),
            (Places{{10, 20}}));
}

TEST(Channels, MayBeWrappedAsOlderDraftsDo) {
  EXPECT_EQ(onlyPlaces(ink("<traceFormat><regularChannels><channel name='X' units='mm'/><channel "
                           "name='Y' units='mm'/></regularChannels></traceFormat>"
                           "<trace>1 2</trace>")),
            (Places{{10, 20}}));
}

TEST(Channels, ThatPointTheOtherWayAreMirrored) {
  EXPECT_EQ(onlyPlaces(ink("<traceFormat><channel name='X' units='mm' orientation='-ve'/>"
                           "<channel name='Y' units='mm' orientation='+ve'/></traceFormat>"
                           "<trace>1 2,3 4</trace>")),
            (Places{{-10, 20}, {-30, 40}}));
  EXPECT_EQ(onlyPlaces(ink("<traceFormat><channel name='X' units='mm'/>"
                           "<channel name='Y' units='mm' orientation='-ve'/></traceFormat>"
                           "<trace>1 2,3 4</trace>")),
            (Places{{10, -20}, {30, -40}}));
}

TEST(Channels, DeclaredButNotGivenAreMissing) {
  const std::string text = withChannels("<channel name='F' max='9'/>", "<trace>1 2,3 4</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 20}, {30, 40}}));
  EXPECT_EQ(valuesOf(text, &Seven::pressure), (std::vector<std::uint32_t>{1023, 1023}));
}

TEST(Channels, IntermittentOnesStayAsTheyWere) {
  // Pressure 0.5 from the default, then as given.
  const std::string text = withChannels(
      "<intermittentChannels><channel name='F' max='10' default='5'/></intermittentChannels>",
      "<trace>1 1,2 2 10,3 3,4 4 0,5 5</trace>");
  EXPECT_EQ(valuesOf(text, &Seven::pressure), (std::vector<std::uint32_t>{512, 1023, 1023, 0, 0}));
}

TEST(Channels, IntermittentOnesStandBehindTheRegularOnes) {
  const std::string text =
      ink("<traceFormat><intermittentChannels><channel name='F' max='10'/></intermittentChannels>"
          "<channel name='X' units='mm'/><channel name='Y' units='mm'/></traceFormat>"
          "<trace>1 2,3 4 10</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 20}, {30, 40}}));
  EXPECT_EQ(valuesOf(text, &Seven::pressure), (std::vector<std::uint32_t>{0, 1023}));
}

TEST(Channels, WithBooleansFollowDifferences) {
  const std::string text = withChannels(
      "<intermittentChannels><channel name='B1' type='boolean'/></intermittentChannels>",
      "<trace>100 200,'20'40 T,\"5\"-5,3 1*</trace>");
  // x: 100, +20, +25, +28; y: 200, +40, +35, +36.
  EXPECT_EQ(onlyPlaces(text), (Places{{1000, 2000}, {1200, 2400}, {1450, 2750}, {1730, 3110}}));
  EXPECT_EQ(remarked(text, RemarkKind::channelLeftOut, "B1"), 2U);
}

TEST(Channels, WithoutCounterpartAreCounted) {
  const std::string text =
      withChannels("<channel name='C'/><channel name='W'/>", "<trace>1 1 5 6,2 2 5,3 3</trace>");
  EXPECT_EQ(remarked(text, RemarkKind::channelLeftOut, "C"), 2U);
  EXPECT_EQ(remarked(text, RemarkKind::channelLeftOut, "W"), 1U);
}

TEST(Channels, PointsWithoutYAreLeftOutAndFurtherValuesSkipped) {
  const std::string text = inMillimetres("<trace>1 1,2,3 3 7 8,4 4</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 10}, {30, 30}, {40, 40}}));
  EXPECT_EQ(remarked(text, RemarkKind::pointsWithoutPlace), 1U);
  EXPECT_EQ(remarked(text, RemarkKind::valuesTooMany), 1U);
}

TEST(Channels, TakeWhatTheyDoNotSayFromTheSource) {
  const std::string text =
      ink("<context><inkSource><traceFormat><channel name='X' units='cm'/><channel name='Y' "
          "units='cm'/><channel name='F' max='4'/></traceFormat></inkSource>"
          "<traceFormat><channel name='F'/><channel name='X'/><channel name='Y'/></traceFormat>"
          "</context><trace>1 2 3</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{200, 300}}));
  EXPECT_EQ(valuesOf(text, &Seven::pressure), (std::vector<std::uint32_t>{256}));
}

TEST(Channels, OfTheOnlyFormatServeTracesThatFitNothingElse) {
  const std::string format =
      "<definitions><traceFormat><channel name='X' units='mm'/><channel name='Y' units='mm'/>"
      "<channel name='T'/></traceFormat></definitions>";
  EXPECT_EQ(onlyPlaces(ink(format + "<trace>1 2 0,3 4 9</trace>")), (Places{{10, 20}, {30, 40}}));
  // Two values fit X and Y: the definitions have no effect. The longer side, 2 units, becomes 150
  // mm.
  EXPECT_EQ(onlyPlaces(ink(format + "<trace>1 2,3 4</trace>")),
            (Places{{750, 1500}, {2250, 3000}}));
}

TEST(Channels, OfTheSwitchSplitTheStroke) {
  const std::string tip = "<channel name='S' type='boolean'/>";
  EXPECT_EQ(placesOf(withChannels(tip, "<trace>1 1 T,2 2 T,3 3 F,4 4 T</trace>")),
            (std::vector<Places>{{{10, 10}, {20, 20}}, {{40, 40}}}));
  EXPECT_EQ(placesOf(withChannels(tip, "<trace>1 1 F,2 2 F</trace>")),
            (std::vector<Places>{{{10, 10}, {20, 20}}}));
}

}  // namespace
