// Outlines against diameters worked out by hand: the brush is 2 points wide without pressure and 10
// at full pressure, so 2 + 8 p. And against the union of discs at places worked out by hand.

#include "render/outline.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>

#include "shapes.h"

namespace {

using namespace render_tests;

// Covers the rounding of outline and brush together.
constexpr double kNear = 0.03;

// The discs of a brush that goes straight from one disc to the next, a tenth of a point apart.
void addWay(std::vector<Disc>& discs, const Disc& from, const Disc& to) {
  const double change = std::abs(to.radius - from.radius);
  const double way = std::max(std::hypot(to.h - from.h, to.v - from.v), change);
  const int steps = static_cast<int>(std::ceil(way / 0.1));
  for (int i = 0; i <= steps; ++i) {
    const double share = static_cast<double>(i) / steps;
    discs.push_back({from.h + (to.h - from.h) * share, from.v + (to.v - from.v) * share,
                     from.radius + (to.radius - from.radius) * share});
  }
}

std::vector<Disc> ways(std::initializer_list<Disc> stops) {
  std::vector<Disc> discs;
  for (const Disc* stop = stops.begin() + 1; stop != stops.end(); ++stop)
    addWay(discs, stop[-1], *stop);
  return discs;
}

TEST(AnOutline, HasTheBrushsOwnWidthWithoutTabletData) {
  const auto outline = outlineOf(straightPath({{0, 0}, {50, 0}}));
  EXPECT_NEAR(widthAcross(outline, {25, 0}, 90), 6, kNear);
  EXPECT_NEAR(reach(outline, {25, 0}, 0), 25 + 3, kNear);
  EXPECT_NEAR(reach(outline, {25, 0}, 180), 25 + 3, kNear);
}

TEST(AnOutline, IsAsWideAsThePressureMakesTheBrush) {
  const auto outline =
      outlineOf(withPressure(straightPath({{0, 0}, {0, 60}}), {{0, 0.25F}, {1, 0.25F}}));
  for (const double v : {1.0, 30.0, 59.0})
    EXPECT_NEAR(widthAcross(outline, {0, v}, 0), 4, kNear);
}

// The edge of the growing brush leans outward: on a slope of 4/100 in the radius it is wider by
// 1 / sqrt(1 - 0.04²) = 1.0008, which is less than the rounding.
TEST(AnOutline, GrowsLinearlyBetweenTwoPressures) {
  const auto outline = outlineOf(withPressure(straightPath({{0, 0}, {100, 0}}), {{0, 0}, {1, 1}}));
  EXPECT_NEAR(widthAcross(outline, {25, 0}, 90), 2 + 8 * 0.25, kNear);
  EXPECT_NEAR(widthAcross(outline, {50, 0}, 90), 2 + 8 * 0.5, kNear);
  EXPECT_NEAR(widthAcross(outline, {75, 0}, 90), 2 + 8 * 0.75, kNear);
  EXPECT_NEAR(reach(outline, {1, 0}, 180), 1 + 1, kNear);
  EXPECT_NEAR(reach(outline, {99, 0}, 0), 1 + 5, kNear);
}

// 10 along and 30 up: halfway up is 5/8 of the way. The radius grows by 4 within 40, so the edges
// lean outward and across the way lie 1 / sqrt(1 - 0.1²) further apart.
TEST(AnOutline, TakesOffsetsAsSharesOfTheLengthNotOfThePoints) {
  const auto outline =
      outlineOf(withPressure(straightPath({{0, 0}, {10, 0}, {10, 30}}), {{0, 0}, {1, 1}}));
  EXPECT_NEAR(widthAcross(outline, {10, 15}, 0), (2 + 8 * 0.625) / std::sqrt(0.99), kNear);
}

TEST(AnOutline, HoldsTheFirstAndTheLastValueOutsideTheSamples) {
  const auto outline =
      outlineOf(withPressure(straightPath({{0, 0}, {100, 0}}), {{0.4F, 0.125F}, {0.6F, 0.75F}}));
  EXPECT_NEAR(widthAcross(outline, {10, 0}, 90), 3, kNear);
  EXPECT_NEAR(widthAcross(outline, {38, 0}, 90), 3, kNear);
  EXPECT_NEAR(widthAcross(outline, {50, 0}, 90), 2 + 8 * 0.4375, 0.06);
  EXPECT_NEAR(widthAcross(outline, {66, 0}, 90), 8, kNear);
  EXPECT_NEAR(widthAcross(outline, {99, 0}, 90), 8, kNear);
}

TEST(AnOutline, ClampsPressureBetweenZeroAndOne) {
  const auto outline =
      outlineOf(withPressure(straightPath({{0, 0}, {100, 0}}), {{0, 4}, {0.5F, 4}, {0.5F, -3}}));
  EXPECT_NEAR(widthAcross(outline, {20, 0}, 90), 10, kNear);
  EXPECT_NEAR(widthAcross(outline, {80, 0}, 90), 2, kNear);
}

// At 50 the wide disc ends and the narrow one goes on.
TEST(AnOutline, JumpsWhereAnOffsetIsRepeatedWithAnotherValue) {
  const auto outline = outlineOf(
      withPressure(straightPath({{0, 0}, {100, 0}}), {{0, 1}, {0.5F, 1}, {0.5F, 0}, {1, 0}}));
  EXPECT_NEAR(widthAcross(outline, {49, 0}, 90), 10, kNear);
  EXPECT_NEAR(widthAcross(outline, {53, 0}, 90), 2 * 4,
              0.06);  // sqrt(5² - 3²) of the last wide disc
  EXPECT_NEAR(widthAcross(outline, {56, 0}, 90), 2, kNear);
}

// The last piece goes 4/9 of the way to the last point, at (35.56, 0), and back to 20; its way
// there counts 8/9 of 35, so the whole is 20 + 31.11 long and the tip lies at 35.56 of it.
TEST(AnOutline, DrawsTheTurningLastPieceToFourNinthsOfItsWay) {
  art::Path path = straightPath({{0, 0}, {20, 0}, {20, 0}});
  path.segments[1].out = {55, 0};
  path.pressure = {{0, 1}, {1, 0}};
  const auto outline = outlineOf(path);
  const double tip = 20 + 35 * 4.0 / 9;
  const double length = 20 + 35 * 8.0 / 9;
  const double radiusAtTip = 1 + 4 * (1 - tip / length);
  EXPECT_NEAR(reach(outline, {10, 0}, 0), tip - 10 + radiusAtTip, kNear);
  // Where it passes twice the first way is the wider one.
  EXPECT_NEAR(widthAcross(outline, {30, 0}, 90), 2 + 8 * (1 - 30 / length), 0.06);
  EXPECT_NEAR(widthAcross(outline, {20, 0}, 90), 2 + 8 * (1 - 20 / length), 0.06);
}

TEST(AnOutline, FollowsACurve) {
  // A quarter of a circle of radius 100, to 0.03 of its radius in a thousand.
  art::Path path;
  const float k = 55.22847F;
  path.segments = {{{100, 0}, {100, 0}, {100, k}, false}, {{0, 100}, {k, 100}, {0, 100}, false}};
  const auto outline = outlineOf(path);
  for (const double degrees : {10.0, 45.0, 80.0}) {
    const double angle = degrees * std::numbers::pi / 180;
    const At place{100 * std::cos(angle), 100 * std::sin(angle)};
    EXPECT_NEAR(reach(outline, place, degrees), 3, 0.06);
    EXPECT_NEAR(reach(outline, place, degrees + 180), 3, 0.06);
  }
}

TEST(AnOutline, GoesAroundACuspWithTheWholeBrush) {
  const auto outline = outlineOf(straightPath({{0, 0}, {40, 0}, {0, 0.5}}));
  EXPECT_NEAR(reach(outline, {40, 0}, 0), 3, kNear);
  EXPECT_NEAR(reach(outline, {40, 0}, 60), 3, kNear);
  EXPECT_NEAR(reach(outline, {40, 0}, -60), 3, kNear);
  EXPECT_LT(differingShare(outline, ways({{0, 0, 3}, {40, 0, 3}, {0, 0.5, 3}}), 0.1), 0.005);
}

TEST(AnOutline, CoversALineThatGoesStraightBack) {
  const auto outline = outlineOf(straightPath({{0, 0}, {30, 0}, {10, 0}}));
  EXPECT_NEAR(reach(outline, {20, 0}, 0), 10 + 3, kNear);
  EXPECT_NEAR(reach(outline, {20, 0}, 180), 20 + 3, kNear);
  EXPECT_NEAR(widthAcross(outline, {20, 0}, 90), 6, kNear);
}

TEST(AnOutline, LeavesTheMiddleOfALoopOpen) {
  const auto outline = outlineOf(straightPath({{0, 0}, {40, 0}, {40, 30}, {10, 30}, {10, -20}}));
  EXPECT_FALSE(covers(outline, {25, 15}));
  EXPECT_TRUE(covers(outline, {25, 1}));
  EXPECT_LT(
      differingShare(outline, ways({{0, 0, 3}, {40, 0, 3}, {40, 30, 3}, {10, 30, 3}, {10, -20, 3}}),
                     0.2),
      0.005);
}

// A turn with a radius smaller than the brush's: its inner edge would turn over.
TEST(AnOutline, FillsATurnThatIsTighterThanTheBrush) {
  art::Path path;
  std::vector<Disc> discs;
  for (int i = 0; i <= 24; ++i) {
    const double angle = i * std::numbers::pi / 12;
    const art::Point point{static_cast<float>(1.5 * std::cos(angle)),
                           static_cast<float>(1.5 * std::sin(angle))};
    path.segments.push_back({point, point, point, true});
    discs.push_back({point.h, point.v, 3});
  }
  EXPECT_LT(differingShare(outlineOf(path), discs, 0.05), 0.005);
}

TEST(AnOutline, TreatsRepeatedPointsAsOne) {
  const auto once = outlineOf(straightPath({{0, 0}, {10, 5}, {20, 0}}));
  const auto often = outlineOf(straightPath({{0, 0}, {0, 0}, {10, 5}, {10, 5}, {10, 5}, {20, 0}}));
  EXPECT_EQ(often.contours, once.contours);
}

TEST(AnOutline, IsADiscForAPathWithoutLength) {
  for (const auto& path : {straightPath({{7, 8}}), straightPath({{7, 8}, {7, 8}, {7, 8}})}) {
    const auto outline = outlineOf(path);
    ASSERT_EQ(outline.contours.size(), 1U);
    for (const double degrees : {3.0, 95.0, 200.0, 311.0})
      EXPECT_NEAR(reach(outline, {7, 8}, degrees), 3, kNear);
  }
}

TEST(AnOutline, OfAPathWithoutLengthIsTheDiscOfItsHeaviestPressure) {
  const auto outline = outlineOf(
      withPressure(straightPath({{7, 8}, {7, 8}, {7, 8}}), {{0, 0.1F}, {0.5F, 0.75F}, {1, 0}}));
  EXPECT_NEAR(widthAcross(outline, {7, 8}, 20), 8, kNear);
  EXPECT_LT(differingShare(outline, {{7, 8, 4}}, 0.05), 0.005);
}

TEST(AnOutline, IsRightForAStrokeShorterThanItsWidth) {
  const auto outline = outlineOf(straightPath({{0, 0}, {1, 0}}));
  EXPECT_NEAR(widthAcross(outline, {0.5, 0}, 0), 7, kNear);
  EXPECT_NEAR(widthAcross(outline, {0.5, 0}, 90), 6, kNear);
}

// Radius 1, 5, 1 at 0, 2, 4: the two small discs lie inside the large one.
TEST(AnOutline, IsOneDiscWhereThatHoldsAllOthers) {
  const auto outline =
      outlineOf(withPressure(straightPath({{0, 0}, {4, 0}}), {{0, 0}, {0.5F, 1}, {1, 0}}));
  ASSERT_EQ(outline.contours.size(), 1U);
  EXPECT_LT(differingShare(outline, {{2, 0, 5}}, 0.05), 0.005);
}

// From 0 to 30 the radius is 1, then within 2 points it grows to 5, shrinks to 1 within 3 and goes
// on: a bead on a string.
TEST(AnOutline, SwallowsADiscInsideTheNextAndGoesOn) {
  const auto path = withPressure(straightPath({{0, 0}, {100, 0}}),
                                 {{0, 0}, {0.30F, 0}, {0.32F, 1}, {0.35F, 0}, {1, 0}});
  const auto outline = outlineOf(path);
  EXPECT_NEAR(widthAcross(outline, {20, 0}, 90), 2, kNear);
  EXPECT_NEAR(widthAcross(outline, {32, 0}, 90), 10, kNear);
  EXPECT_NEAR(widthAcross(outline, {60, 0}, 90), 2, kNear);
  EXPECT_LT(differingShare(outline,
                           ways({{0, 0, 1}, {30, 0, 1}, {32, 0, 5}, {35, 0, 1}, {100, 0, 1}}), 0.1),
            0.006);
}

// Every combination of some turns, pressures and step lengths, against discs.
TEST(AnOutline, AgreesWithDiscsWhereverThePathTurnsAndWhateverThePressure) {
  for (const double turn : {-179.0, -120.0, -60.0, 35.0, 90.0, 150.0, 180.0}) {
    for (const double step : {1.0, 4.0, 12.0}) {
      for (const float pressure : {0.0F, 0.3F, 1.0F}) {
        const double angle = turn * std::numbers::pi / 180;
        const At corner{10, 0};
        const At end{corner.h + step * std::cos(angle), step * std::sin(angle)};
        const auto middle = static_cast<float>(10 / (10 + step));
        const auto path = withPressure(straightPath({{0, 0}, corner, end}),
                                       {{0, 0.3F}, {middle, pressure}, {1, 0.1F}});
        const auto discs = ways({{0, 0, 1 + 4 * 0.3},
                                 {corner.h, corner.v, 1 + 4 * double{pressure}},
                                 {end.h, end.v, 1 + 4 * 0.1}});
        EXPECT_LT(differingShare(outlineOf(path), discs, 0.1), 0.012)
            << "turn " << turn << " step " << step << " pressure " << pressure;
      }
    }
  }
}

TEST(AnOutline, OfAClosedPathGoesBackToItsStart) {
  art::Path path = straightPath({{0, 0}, {30, 0}, {30, 30}});
  EXPECT_FALSE(covers(outlineOf(path), {15, 15}));
  path.closed = true;
  EXPECT_TRUE(covers(outlineOf(path), {15, 15}));
}

TEST(AnOutline, KeepsStraightRunsToTheirEnds) {
  art::Path path;
  for (int i = 0; i <= 100; ++i) {
    const art::Point point{static_cast<float>(i), static_cast<float>(i) * 0.5F};
    path.segments.push_back({point, point, point, true});
  }
  // Two straight sides and two half discs: no more points than a path of two points has.
  EXPECT_EQ(outlineOf(path).contours, outlineOf(straightPath({{0, 0}, {100, 50}})).contours);
}

TEST(AnOutline, IsEmptyForAPathWithoutPoints) {
  EXPECT_TRUE(outlineOf(art::Path{}).contours.empty());
}

TEST(AnOutline, LeavesOutPointsThatAreNotNumbers) {
  art::Path path = straightPath({{0, 0}, {10, 0}, {20, 0}});
  path.segments[1].p.v = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(outlineOf(path).contours, outlineOf(straightPath({{0, 0}, {20, 0}})).contours);
}

TEST(AnOutline, OfHugeCoordinatesIsClamped) {
  const auto outline = outlineOf(straightPath({{-3e38, 0}, {3e38, 1e30}}));
  for (const render::Contour& contour : outline.contours) {
    for (const render::Spot& spot : contour) {
      EXPECT_LE(std::abs(spot.h), 1'000'000'000);
      EXPECT_LE(std::abs(spot.v), 1'000'000'000);
    }
  }
}

TEST(DefaultPressure, ReplacesMissingPressure) {
  const auto none = withPressure(straightPath({{0, 0}, {50, 0}}), {{0, 0}, {1, 0}});
  EXPECT_NEAR(widthAcross(outlineOf(none), {25, 0}, 90), 2, kNear);
  EXPECT_NEAR(widthAcross(outlineOf(none, twoToTen(), 0.75), {25, 0}, 90), 8, kNear);
  const auto some = withPressure(straightPath({{0, 0}, {50, 0}}), {{0, 0.25F}, {1, 0.25F}});
  EXPECT_NEAR(widthAcross(outlineOf(some, twoToTen(), 0.75), {25, 0}, 90), 4, kNear);
}

art::Document documentOf(std::initializer_list<art::Path> paths) {
  art::Document document;
  document.layers.emplace_back();
  for (const art::Path& path : paths)
    document.layers.back().art.push_back({path});
  return document;
}

TEST(ADocument, LacksPressureWhenAllItsTabletDataIsZero) {
  const auto none = withPressure(straightPath({{0, 0}, {50, 0}}), {{0, 0}, {1, 0}});
  const auto some = withPressure(straightPath({{0, 0}, {50, 0}}), {{0, 0.25F}, {1, 0}});
  EXPECT_TRUE(render::lacksPressure(documentOf({none, none})));
  EXPECT_FALSE(render::lacksPressure(documentOf({none, some})));
  EXPECT_FALSE(render::lacksPressure(documentOf({straightPath({{0, 0}, {50, 0}})})));
  EXPECT_FALSE(render::lacksPressure(documentOf({})));
}

}  // namespace
