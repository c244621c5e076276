#include "translate/units.h"

#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;

std::string inUnit(const std::string& unit, const std::string& trace) {
  return ink("<traceFormat><channel name='X' units='" + unit + "'/><channel name='Y' units='" +
             unit + "'/></traceFormat><trace>" + trace + "</trace>");
}

TEST(Units, OfTheRecommendationAreKnown) {
  EXPECT_EQ(onlyPlaces(inUnit("m", "1 2")), (Places{{10000, 20000}}));
  EXPECT_EQ(onlyPlaces(inUnit("cm", "1 2")), (Places{{100, 200}}));
  EXPECT_EQ(onlyPlaces(inUnit("mm", "1 2")), (Places{{10, 20}}));
  EXPECT_EQ(onlyPlaces(inUnit("in", "1 2")), (Places{{254, 508}}));
  EXPECT_EQ(onlyPlaces(inUnit("pt", "72 144")), (Places{{254, 508}}));
  EXPECT_EQ(onlyPlaces(inUnit("pc", "6 12")), (Places{{254, 508}}));
}

TEST(Units, OfProgramsAreKnown) {
  EXPECT_EQ(onlyPlaces(inUnit("himetric", "100 200")), (Places{{10, 20}}));
  EXPECT_EQ(onlyPlaces(inUnit("ink", "100 200")), (Places{{10, 20}}));
  EXPECT_EQ(onlyPlaces(inUnit("px", "96 192")), (Places{{254, 508}}));
  EXPECT_EQ(onlyPlaces(inUnit("0.01mm", "100 200")), (Places{{10, 20}}));
  EXPECT_EQ(onlyPlaces(inUnit(" MM ", "1 2")), (Places{{10, 20}}));
}

TEST(Units, HaveSizesOfTheirQuantity) {
  EXPECT_DOUBLE_EQ(translate::unitOf("rad")->size, 57.295779513082323);
  EXPECT_EQ(translate::unitOf("s")->quantity, translate::Quantity::time);
  EXPECT_DOUBLE_EQ(translate::unitOf("us")->size, 0.001);
  EXPECT_TRUE(translate::unitOf("1/cm")->isInverse);
  for (const char* name : {"", "dev", "kg", "furlong", "1/", "mm mm", "-1mm", "0mm"})
    EXPECT_FALSE(translate::unitOf(name)) << name;
}

TEST(Units, ThatAreNotKnownAreSaid) {
  EXPECT_EQ(remarked(inUnit("furlong", "1 2,3 4"), RemarkKind::unknownUnit, "furlong"), 2U);
  EXPECT_EQ(remarked(inUnit("dev", "1 2,3 4"), RemarkKind::unknownUnit), 0U);
}

TEST(Units, CoordinatesAreRoundedHalfAwayFromZero) {
  EXPECT_EQ(placesIn("0.05 -0.05,0.049 -0.049,1.25 -1.25"), (Places{{1, -1}, {0, 0}, {13, -13}}));
}

std::string device(const std::string& channels, const std::string& properties,
                   const std::string& trace) {
  return ink("<context><inkSource><traceFormat>" + channels + "</traceFormat><channelProperties>" +
             properties + "</channelProperties></inkSource></context><trace>" + trace + "</trace>");
}

std::string resolution(const std::string& channel, const std::string& value,
                       const std::string& units) {
  return "<channelProperty channel='" + channel + "' name='resolution' value='" + value +
         (units.empty() ? "'/>" : "' units='" + units + "'/>");
}

constexpr const char* kWhole =
    "<channel name='X' type='integer'/><channel name='Y' type='integer'/>";

TEST(Resolution, MakesStepsOfWholeNumbers) {
  EXPECT_EQ(
      onlyPlaces(device(kWhole, resolution("X", "1000", "1/cm") + resolution("Y", "1000", "1/cm"),
                        "1000 500,0 20")),
      (Places{{100, 50}, {0, 2}}));
}

TEST(Resolution, IsEachAxissOwn) {
  EXPECT_EQ(
      onlyPlaces(device(kWhole, resolution("X", "100", "1/in") + resolution("Y", "200", "1/in"),
                        "100 100,50 50")),
      (Places{{254, 127}, {127, 64}}));
}

TEST(Resolution, CountsMoreThanTheUnitOfWholeNumbers) {
  EXPECT_EQ(onlyPlaces(device("<channel name='X' type='integer' units='cm'/>"
                              "<channel name='Y' type='integer' units='cm'/>",
                              resolution("X", "1000", "1/cm") + resolution("Y", "1000", "1/cm"),
                              "7464 13670")),
            (Places{{746, 1367}}));
}

TEST(Resolution, CountsLessThanTheUnitOfDecimals) {
  EXPECT_EQ(onlyPlaces(device("<channel name='X' units='cm'/><channel name='Y' units='cm'/>",
                              resolution("X", "1000", "1/cm") + resolution("Y", "1000", "1/cm"),
                              "1.5 2")),
            (Places{{150, 200}}));
}

TEST(Resolution, WithoutUnitIsInTheUnitOfTheChannel) {
  EXPECT_EQ(onlyPlaces(device("<channel name='X' type='integer' units='in'/>"
                              "<channel name='Y' type='integer' units='in'/>",
                              resolution("X", "100", "") + resolution("Y", "50", ""), "100 100")),
            (Places{{254, 508}}));
}

TEST(Resolution, OfZeroSaysNothing) {
  EXPECT_EQ(onlyPlaces(device("<channel name='X' type='integer' units='mm'/>"
                              "<channel name='Y' type='integer' units='mm'/>",
                              resolution("X", "0", "1/mm") + resolution("Y", "0", "1/mm"), "3 4")),
            (Places{{30, 40}}));
}

TEST(Resolution, OfOneAxisServesBoth) {
  EXPECT_EQ(onlyPlaces(device(kWhole, resolution("X", "10", "1/mm"), "100 50")),
            (Places{{100, 50}}));
}

TEST(ActiveArea, GivesTheScaleWhereNothingElseDoes) {
  EXPECT_EQ(onlyPlaces(ink("<context><inkSource><traceFormat><channel name='X' type='integer' "
                           "min='0' max='1000'/><channel name='Y' type='integer' max='500' "
                           "min='0'/></traceFormat><activeArea width='20' height='10' units='cm'/>"
                           "</inkSource></context><trace>1000 250</trace>")),
            (Places{{2000, 500}}));
}

TEST(Scale, OfADrawingWithoutUnitMakesItsLongerSide150Millimetres) {
  const std::string text = ink("<trace>0 0,10 20</trace><trace>0 50</trace>");
  EXPECT_EQ(placesOf(text), (std::vector<Places>{{{0, 0}, {300, 600}}, {{0, 1500}}}));
  EXPECT_EQ(remarked(text, RemarkKind::sizeAssumed, "3"), 2U);
}

TEST(Scale, OfADotIsThatOfAPixel) {
  EXPECT_EQ(onlyPlaces(ink("<trace>96 192</trace>")), (Places{{254, 508}}));
}

TEST(Scale, CanBeGiven) {
  const std::string text = ink("<trace>1 2,3 4</trace>");
  Translation result = translate::translateInk(text, {.millimetresPerUnit = 0.5});
  EXPECT_EQ(layersOf(result)[0][0][1].x, 15);
  EXPECT_TRUE(result.remarks.empty());
}

TEST(Scale, OfSomeTracesWithoutUnitIsThatOfAPixel) {
  const std::string text =
      ink("<trace>96 192</trace>" + std::string(kMillimetres) + "<trace>1 2</trace>");
  EXPECT_EQ(placesOf(text), (std::vector<Places>{{{254, 508}}, {{10, 20}}}));
  EXPECT_EQ(remarked(text, RemarkKind::pixelsAssumed), 1U);
}

TEST(Scale, PointsAHundredMetresAwayAreLeftOut) {
  const std::string text = inMillimetres("<trace>99999.9 0,100000 0,0 -99999.9,0 -1e9</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{999999, 0}, {0, -999999}}));
  EXPECT_EQ(remarked(text, RemarkKind::pointsTooFar), 2U);
}

}  // namespace
