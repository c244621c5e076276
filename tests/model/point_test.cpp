#include "model/point.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

#include "tests/model/points.h"

namespace {

using modeltest::makePoint;
using modeltest::Values;
using modeltest::values;
using Orvo::Point;
using Orvo::Property;

static_assert(!std::is_polymorphic_v<Point>);
static_assert(std::is_same_v<decltype(Point::pressure.value), std::uint32_t>);
static_assert(std::is_same_v<decltype(Point::tiltX.value), std::int32_t>);
static_assert(std::is_same_v<decltype(Point::timestamp.value), std::uint32_t>);

TEST(Point, HasSevenZerosByDefault) {
  EXPECT_EQ(values(Point()), (Values{0, 0, 0, 0, 0, 0, 0}));
}

TEST(Point, CopyingCopiesAllSevenValues) {
  const Values seven{1.5, -2.5, 3.5, 4294967295U, -128, 127, 0xFF800000U};
  const Point original = makePoint(seven);
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested.
  const Point copy(original);
  EXPECT_EQ(values(copy), seven);
}

TEST(Point, AssigningWritesEachFieldThatDiffers) {
  Point target = makePoint({-0.0, 2, 3, 4, 5, 6, 7});
  target = makePoint({0.0, 2, 30, 4, 50, 6, 70});
  EXPECT_EQ(values(target), (Values{0, 2, 30, 4, 50, 6, 70}));
  EXPECT_TRUE(std::signbit(target.x.value));
}

TEST(Point, AssigningItToItselfChangesNothing) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  Point point = makePoint({nan, -0.0, 3, 4, 5, 6, 7});
  const Point& same = point;
  point = same;
  EXPECT_TRUE(std::isnan(point.x.value));
  EXPECT_TRUE(std::signbit(point.y.value));
  EXPECT_EQ(point.timestamp.value, 7U);
}

TEST(PointProperty, ComparesZOfTheLeftWithXOfTheRight) {
  const Property<Point> a(makePoint({0, 5, 0, 100, 0, 0, 0}));
  const Property<Point> b(makePoint({0, 5, 7, 9, 0, 0, 0}));
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(b == a);
}

TEST(PointProperty, DiffersInXOrYAlone) {
  const Property<Point> origin;
  EXPECT_FALSE(origin == Property<Point>(Point(0, 1)));
  EXPECT_FALSE(origin == Property<Point>(Point(1, 0)));
}

TEST(PointProperty, IsUnequalToItselfWhenXDiffersFromZ) {
  const Property<Point> point(Point(3, 4));
  EXPECT_FALSE(point == point);
}

TEST(PointProperty, NeverComparesPressureTiltAndTime) {
  EXPECT_TRUE(Property<Point>() == Property<Point>(makePoint({0, 0, 0, 1, 2, 3, 4})));
}

TEST(PointProperty, AssigningAnEqualPointLeavesTheOtherFieldsAsTheyWere) {
  Property<Point> target(makePoint({0, 5, 0, 100, 1, 2, 3}));
  target = Property<Point>(makePoint({0, 5, 7, 9, 4, 5, 6}));
  EXPECT_EQ(values(target.value), (Values{0, 5, 0, 100, 1, 2, 3}));
}

TEST(PointProperty, AssigningAnUnequalPointTakesAllFields) {
  Property<Point> target(makePoint({0, 5, 0, 100, 1, 2, 3}));
  target = Property<Point>(makePoint({1, 5, 7, 9, 4, 5, 6}));
  EXPECT_EQ(values(target.value), (Values{1, 5, 7, 9, 4, 5, 6}));
}

TEST(PointProperty, CopyingTakesAllFields) {
  const Values seven{1, 5, 7, 9, 4, 5, 6};
  const Property<Point> source(makePoint(seven));
  const Property<Point> copy(source);
  EXPECT_EQ(values(copy.value), seven);
}

}  // namespace
