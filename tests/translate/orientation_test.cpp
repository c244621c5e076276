#include "translate/orientation.h"

#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;
using Tilts = std::vector<std::pair<int, int>>;

Tilts tiltsOf(const std::string& bytes) {
  Tilts tilts;
  for (const auto& stroke : strokesOf(bytes)) {
    for (const Seven& point : stroke)
      tilts.emplace_back(point.tiltX, point.tiltY);
  }
  return tilts;
}

TEST(Orientation, TiltsAreTakenInDegrees) {
  EXPECT_EQ(tiltsOf(withChannels("<channel name='OTx' units='deg'/><channel name='OTy' "
                                 "units='deg'/>",
                                 "<trace>0 0 30 -15,1 1 0 60.5,2 2 -12.5 12.4</trace>")),
            (Tilts{{30, -15}, {0, 61}, {-13, 12}}));
}

TEST(Orientation, TiltsMayBeInRadians) {
  EXPECT_EQ(tiltsOf(withChannels("<channel name='OTx' units='rad'/><channel name='OTy' "
                                 "units='rad'/>",
                                 "<trace>0 0 0.5235987756 -1.0471975512</trace>")),
            (Tilts{{30, -60}}));
}

TEST(Orientation, AnglesInStepsHaveAResolution) {
  EXPECT_EQ(tiltsOf(ink("<context><inkSource><traceFormat><channel name='X' units='mm'/><channel "
                        "name='Y' units='mm'/><channel name='OTx' type='integer'/><channel "
                        "name='OTy' type='integer'/></traceFormat><channelProperties>"
                        "<channelProperty channel='OTx' name='resolution' value='10' "
                        "units='1/deg'/><channelProperty channel='OTy' name='resolution' "
                        "value='10' units='1/deg'/></channelProperties></inkSource></context>"
                        "<trace>0 0 300 -450</trace>")),
            (Tilts{{30, -45}}));
}

constexpr const char* kPolar = "<channel name='OA' units='deg'/><channel name='OE' units='deg'/>";

// A pen that leans by 45 degrees towards +x, +y, -x and -y; then one between +x and +y, whose axis
// falls by 1 for sqrt(1/2) along either: atan(0.7071) = 35.26 degrees.
TEST(Orientation, AzimuthAndElevationBecomeTilts) {
  EXPECT_EQ(tiltsOf(withChannels(
                kPolar, "<trace>0 0 0 45,1 1 90 45,2 2 180 45,3 3 270 45,4 4 45 45</trace>")),
            (Tilts{{45, 0}, {0, 45}, {-45, 0}, {0, -45}, {35, 35}}));
}

TEST(Orientation, AnUprightPenHasNoTiltAndAFlatOneARightAngle) {
  EXPECT_EQ(tiltsOf(withChannels(kPolar, "<trace>0 0 77 90,1 1 90 0,2 2 180 0</trace>")),
            (Tilts{{0, 0}, {0, 90}, {-90, 0}}));
}

TEST(Orientation, ZerosThroughoutAreNoPenThatLiesFlat) {
  EXPECT_EQ(tiltsOf(withChannels(kPolar, "<trace>0 0 0 0,1 1 0 0</trace>")),
            (Tilts{{0, 0}, {0, 0}}));
}

TEST(Orientation, OneAngleAloneTellsNothing) {
  const std::string text =
      withChannels("<channel name='OE' units='deg'/>", "<trace>0 0 45</trace>");
  EXPECT_EQ(tiltsOf(text), (Tilts{{0, 0}}));
  EXPECT_EQ(remarked(text, RemarkKind::channelLeftOut, "OE"), 1U);
}

TEST(Orientation, IsMirroredWithItsAxis) {
  EXPECT_EQ(tiltsOf(ink("<traceFormat><channel name='X' units='mm'/><channel name='Y' units='mm' "
                        "orientation='-ve'/><channel name='OTx'/><channel name='OTy'/>"
                        "</traceFormat><trace>0 0 30 20</trace>")),
            (Tilts{{30, -20}}));
}

}  // namespace
