#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "model/document.h"
#include "tests/model/points.h"

namespace {

using modeltest::makePoint;
using modeltest::Values;
using modeltest::values;
using Orvo::Document;
using Orvo::Layer;
using Orvo::Point;
using Orvo::RegionVisitor;
using Orvo::rotatePoint;
using Orvo::Stroke;

constexpr float kQuarterTurn = 1.570795F;
constexpr double kFloatAccuracy = 1e-5;

class Recorder final : public RegionVisitor<Point> {
 public:
  explicit Recorder(std::size_t stopAfter) : stopAfter_(stopAfter) {}
  bool visit(Point& point) override {
    seen.push_back(point.x.value);
    point.pressure.value = 1;
    return seen.size() < stopAfter_;
  }
  std::vector<double> seen;

 private:
  std::size_t stopAfter_;
};

Stroke threePoints() {
  Stroke stroke;
  for (const double x : {1.0, 2.0, 3.0})
    stroke.append(Point(x, 0));
  return stroke;
}

Point rotated(double x, double y, float angle) {
  Point point(x, y);
  rotatePoint(point, angle);
  return point;
}

void expectNear(const Point& point, double x, double y) {
  EXPECT_NEAR(point.x.value, x, kFloatAccuracy);
  EXPECT_NEAR(point.y.value, y, kFloatAccuracy);
}

TEST(Accept, VisitsTheStoredElementsFrontToBack) {
  Stroke stroke = threePoints();
  Recorder recorder(100);
  EXPECT_TRUE(stroke.accept(recorder));
  EXPECT_EQ(recorder.seen, (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(stroke.back().pressure.value, 1U);
}

TEST(Accept, StopsAtTheFirstFalse) {
  Stroke stroke = threePoints();
  Recorder recorder(2);
  EXPECT_FALSE(stroke.accept(recorder));
  EXPECT_EQ(recorder.seen, (std::vector<double>{1, 2}));
}

TEST(Accept, ReturnsTrueForAnEmptyRegion) {
  Stroke stroke;
  Recorder recorder(1);
  EXPECT_TRUE(stroke.accept(recorder));
}

TEST(Rotation, AQuarterTurnTakesTheXAxisToTheYAxis) {
  expectNear(rotated(1, 0, kQuarterTurn), 0, 1);
}

TEST(Rotation, TheOriginStaysWhereItIs) {
  EXPECT_EQ(values(rotated(0, 0, 0.7F)), values(Point(0, 0)));
}

TEST(Rotation, APointWhoseDistanceVanishesInSinglePrecisionStays) {
  EXPECT_EQ(values(rotated(1e-60, 1e-60, 0.7F)), values(Point(1e-60, 1e-60)));
}

TEST(Rotation, TheNegativeXAxisLiesAtTheShortHalfTurn) {
  EXPECT_EQ(std::bit_cast<std::uint32_t>(Orvo::polarAngle(-1, 0)), 0x40490FD0U);
  const Point point = rotated(-1, 0, 0.5F);
  const float angle = 3.14159F + 0.5F;
  EXPECT_EQ(point.x.value, static_cast<double>(std::cos(angle)));
  EXPECT_EQ(point.y.value, static_cast<double>(std::sin(angle)));
}

TEST(Rotation, LeftOfTheOriginAHalfTurnIsSubtracted) {
  EXPECT_EQ(Orvo::polarAngle(-1, -1), std::atan(1.0F) - 3.14159F);
  EXPECT_EQ(Orvo::polarAngle(-1, 1), std::atan(-1.0F) - 3.14159F);
  const Point point = rotated(-1, -1, 0.25F);
  const float angle = (std::atan(1.0F) - 3.14159F) + 0.25F;
  const double distance = std::sqrt(2.0F);
  EXPECT_EQ(point.x.value, static_cast<double>(std::cos(angle)) * distance);
  EXPECT_EQ(point.y.value, static_cast<double>(std::sin(angle)) * distance);
}

TEST(Rotation, TheYAxisLiesAtAQuarterAndAtThreeQuartersOfATurn) {
  EXPECT_EQ(Orvo::polarAngle(0, 5), 1.570795F);
  EXPECT_EQ(Orvo::polarAngle(0, 0), 1.570795F);
  EXPECT_EQ(Orvo::polarAngle(0, -5), 4.712385F);
  EXPECT_EQ(Orvo::polarAngle(5, 0), 0.0F);
}

TEST(Rotation, ACoordinateThatVanishesInSinglePrecisionCountsAsZero) {
  EXPECT_EQ(Orvo::polarAngle(1e-60, 5), 1.570795F);
  EXPECT_EQ(Orvo::polarAngle(-1e-60, -5), 4.712385F);
  EXPECT_EQ(Orvo::polarAngle(1e-60, -1e-60), 1.570795F);
  EXPECT_EQ(Orvo::polarAngle(-5, 1e-60), 3.14159F);
  EXPECT_EQ(Orvo::polarAngle(-5, -1e-60), 3.14159F);
}

TEST(Rotation, TouchesOnlyXAndY) {
  Stroke stroke;
  stroke.append(makePoint({1, 0, 3, 4, 5, 6, 7}));
  stroke.rotate(kQuarterTurn);
  const Point& point = stroke.back();
  expectNear(point, 0, 1);
  const Values turned = values(point);
  EXPECT_EQ(turned, (Values{point.x.value, point.y.value, 3, 4, 5, 6, 7}));
}

TEST(Rotation, ByZeroChangesNoBit) {
  const double noFloat = 1.0 / 3.0;
  const Values seven{noFloat, 16777217.0, 3, 4, 5, 6, 7};
  Layer layer;
  Stroke stroke;
  stroke.append(makePoint(seven));
  layer.append(stroke);
  layer.rotate(0.0F);
  EXPECT_EQ(values(layer.back().back()), seven);
  EXPECT_EQ(values(layer.bounds().minCorner.value), seven);
  EXPECT_EQ(values(layer.back().bounds().maxCorner.value), seven);
}

TEST(Rotation, ByZeroChangesNoBitInAVisitorOrABoxAloneEither) {
  const Values noFloats{1.0 / 3.0, 16777217.0, 3, 4, 5, 6, 7};
  Stroke stroke;
  stroke.append(makePoint(noFloats));
  Orvo::Rotator<Point> rotator(0.0F);
  EXPECT_TRUE(stroke.accept(rotator));
  EXPECT_EQ(values(stroke.back()), noFloats);
  Orvo::BoundingBox box = stroke.bounds();
  rotateBox(box, 0.0F);
  EXPECT_EQ(values(box.minCorner.value), noFloats);
  EXPECT_EQ(values(box.maxCorner.value), noFloats);
}

TEST(Rotation, ThereAndBackIsExactToFloatAccuracy) {
  Stroke stroke;
  stroke.append(Point(123.4, 56.7));
  stroke.rotate(0.8F);
  stroke.rotate(-0.8F);
  EXPECT_NEAR(stroke.back().x.value, 123.4, 1e-3);
  EXPECT_NEAR(stroke.back().y.value, 56.7, 1e-3);
}

TEST(Rotation, TheBoxEnclosesTheRotatedOldBox) {
  Stroke stroke;
  stroke.append(makePoint({0, 0, 1, 2, 3, 4, 5}));
  stroke.append(Point(2, 1));
  stroke.rotate(kQuarterTurn);
  const auto& box = stroke.bounds();
  expectNear(box.minCorner.value, -1, 0);
  expectNear(box.maxCorner.value, 0, 2);
  const Point& min = box.minCorner.value;
  EXPECT_EQ(values(min), (Values{min.x.value, min.y.value, 0, 0, 0, 0, 0}));
}

TEST(Rotation, ACornerThatStaysInPlaceLosesItsOtherFieldsToo) {
  // The rotated point lies above and right of the origin, or below and left of it.
  const Point origin = makePoint({0, 0, 0, 100, 1, 2, 3});
  Stroke right;
  right.append(origin);
  right.append(Point(1, 0));
  right.rotate(0.5F);
  EXPECT_EQ(values(right.bounds().minCorner.value), (Values{0, 0, 0, 0, 0, 0, 0}));
  Stroke left;
  left.append(origin);
  left.append(Point(-1, 0));
  left.rotate(0.5F);
  EXPECT_EQ(values(left.bounds().maxCorner.value), (Values{0, 0, 0, 0, 0, 0, 0}));
}

TEST(Rotation, TheBoxIsNotComputedFromThePoints) {
  // The corners (1, 0) and (0, 1) of the box are not points of the stroke, yet they widen it.
  Stroke stroke;
  stroke.append(Point(0, 0));
  stroke.append(Point(1, 1));
  stroke.rotate(kQuarterTurn / 2);
  const double half = std::sqrt(0.5);
  expectNear(stroke.bounds().minCorner.value, -half, 0);
  expectNear(stroke.bounds().maxCorner.value, half, 2 * half);
}

TEST(Rotation, OfADocumentReachesEveryPointAndEveryBoxOnce) {
  Stroke stroke;
  stroke.append(Point(1, 0));
  stroke.append(Point(2, 0));
  Layer layer;
  layer.append(stroke);
  Document document;
  document.append(layer);
  document.rotate(kQuarterTurn);
  const Layer& rotatedLayer = document.back();
  const Stroke& rotatedStroke = rotatedLayer.back();
  expectNear(rotatedStroke.back(), 0, 2);
  expectNear(rotatedStroke.bounds().minCorner.value, 0, 1);
  expectNear(rotatedLayer.bounds().maxCorner.value, 0, 2);
  expectNear(document.bounds().maxCorner.value, 0, 2);
}

TEST(Rotation, OfADocumentRotatesEachOfItsLayersAndStrokes) {
  // Each stroke is a point on the x axis: 1 and 2 in the first layer, 3 and 4 in the second.
  Document document;
  for (const double first : {1.0, 3.0}) {
    Layer layer;
    for (const double x : {first, first + 1}) {
      Stroke stroke;
      stroke.append(Point(x, 0));
      layer.append(stroke);
    }
    document.append(layer);
  }
  document.rotate(kQuarterTurn);
  double distance = 1;
  for (const Layer& layer : document) {
    expectNear(layer.bounds().minCorner.value, 0, distance);
    expectNear(layer.bounds().maxCorner.value, 0, distance + 1);
    for (const Stroke& stroke : layer) {
      expectNear(stroke.back(), 0, distance);
      expectNear(stroke.bounds().minCorner.value, 0, distance);
      expectNear(stroke.bounds().maxCorner.value, 0, distance);
      ++distance;
    }
  }
  EXPECT_EQ(distance, 5);
  expectNear(document.bounds().minCorner.value, 0, 1);
  expectNear(document.bounds().maxCorner.value, 0, 4);
}

TEST(Shift, MovesInDoublePrecisionAndKeepsTheOtherFields) {
  Stroke stroke;
  stroke.append(makePoint({0.1, 0.2, 3, 4, 5, 6, 7}));
  stroke.shift(1e-9, -1e-9);
  const Values moved{0.1 + 1e-9, 0.2 - 1e-9, 3, 4, 5, 6, 7};
  EXPECT_EQ(values(stroke.back()), moved);
  EXPECT_EQ(values(stroke.bounds().minCorner.value), moved);
  EXPECT_EQ(values(stroke.bounds().maxCorner.value), moved);
}

TEST(Shift, ByZeroChangesNothing) {
  Stroke stroke;
  stroke.append(makePoint({0.1, 0.2, 3, 4, 5, 6, 7}));
  stroke.shift(0, 0);
  EXPECT_EQ(values(stroke.back()), (Values{0.1, 0.2, 3, 4, 5, 6, 7}));
  EXPECT_EQ(values(stroke.bounds().maxCorner.value), (Values{0.1, 0.2, 3, 4, 5, 6, 7}));
}

TEST(Shift, ByZeroKeepsTheSignOfEveryZero) {
  Stroke stroke;
  stroke.append(Point(-0.0, -0.0));
  stroke.shift(0.0, 0.0);
  EXPECT_TRUE(std::signbit(stroke.back().x.value));
  EXPECT_TRUE(std::signbit(stroke.back().y.value));
}

TEST(Shift, ByZeroStillVisitsEveryElement) {
  struct Counting : Orvo::Region<Point> {
    void prepend(const Point&) override {}
    void extendBounds(const Point&) override {}
    void shift(double, double) override { ++shifts; }
    int shifts = 0;
  };
  struct Sheet final : Orvo::Region<Counting> {
    void prepend(const Counting&) override {}
    void extendBounds(const Counting&) override {}
  };
  Sheet sheet;
  sheet.append(Counting());
  sheet.append(Counting());
  sheet.shift(0.0, 0.0);
  for (const Counting& element : sheet)
    EXPECT_EQ(element.shifts, 1);
}

TEST(Shift, OfADocumentReachesEveryPointAndEveryBoxOnce) {
  Stroke stroke;
  stroke.append(Point(1, 2));
  Layer layer;
  layer.append(stroke);
  layer.append(stroke);
  Document document;
  document.append(layer);
  document.shift(10, 20);
  for (const Stroke& moved : document.back()) {
    EXPECT_EQ(values(moved.back()), values(Point(11, 22)));
    EXPECT_EQ(values(moved.bounds().maxCorner.value), values(Point(11, 22)));
  }
  EXPECT_EQ(values(document.back().bounds().minCorner.value), values(Point(11, 22)));
  EXPECT_EQ(values(document.bounds().minCorner.value), values(Point(11, 22)));
}

}  // namespace
