// Brushes that are not discs, and styles without brushes.

#include "render/nib.h"

#include <gtest/gtest.h>

#include "shapes.h"

namespace {

using namespace render_tests;

constexpr double kNear = 0.03;

art::Style ellipse(double diameter, double roundness, double angle) {
  art::Style style;
  style.brush = art::CalligraphicBrush{};
  style.brush->size.value = diameter;
  style.brush->roundness.value = roundness;
  style.brush->angle.value = angle;
  return style;
}

TEST(AnEllipse, IsWideAcrossItsLongAxisAndNarrowAcrossTheShortOne) {
  const art::Style style = ellipse(8, 25, 0);
  const auto along = outlineOf(straightPath({{0, 0}, {50, 0}}), style);
  EXPECT_NEAR(widthAcross(along, {25, 0}, 90), 2, kNear);
  EXPECT_NEAR(reach(along, {25, 0}, 0), 25 + 4, kNear);
  const auto across = outlineOf(straightPath({{0, 0}, {0, 50}}), style);
  EXPECT_NEAR(widthAcross(across, {0, 25}, 0), 8, kNear);
  EXPECT_NEAR(reach(across, {0, 25}, 90), 25 + 1, kNear);
}

TEST(AnEllipse, IsTurnedCounterClockwiseByItsAngle) {
  const auto dot = outlineOf(straightPath({{5, 5}}), ellipse(8, 25, 30));
  EXPECT_NEAR(reach(dot, {5, 5}, 30), 4, kNear);
  EXPECT_NEAR(reach(dot, {5, 5}, 120), 1, kNear);
  EXPECT_NEAR(reach(dot, {5, 5}, 210), 4, kNear);
}

// Half the width of an ellipse in a direction, for a line that goes straight across it:
// sqrt((a cos)² + (b sin)²), here sqrt((4 cos 45°)² + (1 sin 45°)²) = sqrt(8.5).
TEST(AnEllipse, DrawsALineAsWideAsItsExtentAcrossTheLine) {
  const auto outline = outlineOf(straightPath({{0, 0}, {50, 50}}), ellipse(8, 25, 0));
  EXPECT_NEAR(widthAcross(outline, {25, 25}, 135), 2 * std::sqrt(8.5), 0.05);
}

TEST(AnEllipse, GrowsWithPressure) {
  art::Style style = twoToTen();
  style.brush->roundness.value = 50;
  const auto outline =
      outlineOf(withPressure(straightPath({{0, 0}, {100, 0}}), {{0, 0}, {1, 1}}), style);
  EXPECT_NEAR(widthAcross(outline, {50, 0}, 90), 0.5 * (2 + 8 * 0.5), kNear);
  EXPECT_NEAR(reach(outline, {50, 0}, 0), 50 + 5, kNear);
}

// Roundness from 0.2 to 1: at a quarter of the way 0.4, at three quarters 0.8.
TEST(AnEllipse, GetsRounderWithPressure) {
  art::Style style = ellipse(10, 60, 0);
  style.brush->roundness = {.value = 60, .variation = 40, .driver = art::BrushDriver::pressure};
  const auto outline =
      outlineOf(withPressure(straightPath({{0, 0}, {100, 0}}), {{0, 0}, {1, 1}}), style);
  EXPECT_NEAR(widthAcross(outline, {25, 0}, 90), 10 * 0.4, 0.06);
  EXPECT_NEAR(widthAcross(outline, {75, 0}, 90), 10 * 0.8, 0.06);
  EXPECT_NEAR(reach(outline, {50, 0}, 180), 50 + 5, 0.06);
}

// From 0° to 90° while standing still: the long axis passes 45°, and the short one nothing.
TEST(AnEllipse, TurnsWithPressure) {
  art::Style style = ellipse(10, 20, 45);
  style.brush->angle = {.value = 45, .variation = 45, .driver = art::BrushDriver::pressure};
  const auto dot = outlineOf(withPressure(straightPath({{5, 5}, {5, 5}}), {{0, 0}, {1, 1}}), style);
  for (const double degrees : {0.0, 20.0, 45.0, 70.0, 90.0})
    EXPECT_NEAR(reach(dot, {5, 5}, degrees), 5, 0.06) << degrees;
  // At -45° the ellipses at both ends reach furthest: 1 / sqrt(0.5 / 25 + 0.5 / 1)
  EXPECT_NEAR(reach(dot, {5, 5}, -45), 1 / std::sqrt(0.5 / 25 + 0.5), 0.1);
}

TEST(ANib, TakesTheMiddleOfAValueThatPressureDoesNotDrive) {
  art::Style style = twoToTen();
  style.brush->size.driver = art::BrushDriver::tilt;
  EXPECT_DOUBLE_EQ(render::Nib(&style).at(0).radius, 3);
  EXPECT_DOUBLE_EQ(render::Nib(&style).at(1).radius, 3);
}

TEST(ANib, IsMultipliedByTheWeightOfTheStroke) {
  art::Style style = twoToTen();
  style.strokeWeight = 0.5;
  EXPECT_DOUBLE_EQ(render::Nib(&style).at(0).radius, 0.5);
  EXPECT_DOUBLE_EQ(render::Nib(&style).at(1).radius, 2.5);
}

TEST(ANib, IsADiscOfTheStrokesWeightWithoutABrush) {
  art::Style style;
  style.strokeWeight = 3;
  EXPECT_DOUBLE_EQ(render::Nib(&style).at(0.2).radius, 1.5);
  EXPECT_DOUBLE_EQ(render::Nib(nullptr).at(0.2).radius, 0.5);
}

TEST(ANib, NeverHasANegativeRadius) {
  art::Style style = twoToTen();
  style.brush->size.variation = 20;
  EXPECT_DOUBLE_EQ(render::Nib(&style).at(0).radius, 0);
}

}  // namespace
