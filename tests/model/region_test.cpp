#include <cmath>
#include <gtest/gtest.h>
#include <limits>
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
using Orvo::Region;
using Orvo::Stroke;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Stroke strokeOf(std::initializer_list<Point> points) {
  Stroke stroke;
  for (const Point& point : points)
    stroke.append(point);
  return stroke;
}

Layer layerOf(std::initializer_list<Stroke> strokes) {
  Layer layer;
  for (const Stroke& stroke : strokes)
    layer.append(stroke);
  return layer;
}

template <typename T>
void expectCorners(const Region<T>& region, const Values& min, const Values& max) {
  EXPECT_EQ(values(region.bounds().minCorner.value), min);
  EXPECT_EQ(values(region.bounds().maxCorner.value), max);
}

template <typename T>
void expectBox(const Region<T>& region, double left, double bottom, double right, double top) {
  const Point& min = region.bounds().minCorner.value;
  const Point& max = region.bounds().maxCorner.value;
  EXPECT_EQ(min.x.value, left);
  EXPECT_EQ(min.y.value, bottom);
  EXPECT_EQ(max.x.value, right);
  EXPECT_EQ(max.y.value, top);
}

TEST(Stroke, StartsEmptyWithAZeroBox) {
  const Stroke stroke;
  EXPECT_EQ(stroke.size(), 0U);
  expectCorners(stroke, {0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0});
}

TEST(Stroke, TheFirstPointBecomesBothCornersWithAllItsFields) {
  const Values first{3, 4, 5, 100, -2, 2, 77};
  const Stroke stroke = strokeOf({makePoint(first)});
  expectCorners(stroke, first, first);
}

TEST(Stroke, TheFirstPointBecomesBothCornersAlsoAtTheOrigin) {
  const Values first{0, 0, 0, 100, -2, 2, 77};
  const Stroke stroke = strokeOf({makePoint(first)});
  expectCorners(stroke, first, first);
}

TEST(Stroke, ACornerThatMovesLosesItsOtherFields) {
  const Stroke stroke =
      strokeOf({makePoint({3, 4, 5, 100, -2, 2, 77}), makePoint({1, 9, 6, 50, 1, 1, 78})});
  expectCorners(stroke, {1, 4, 0, 0, 0, 0, 0}, {3, 9, 0, 0, 0, 0, 0});
}

TEST(Stroke, ACornerThatDoesNotMoveKeepsItsOtherFields) {
  const Stroke stroke = strokeOf({makePoint({3, 4, 5, 100, -2, 2, 77}), Point(5, 6)});
  expectCorners(stroke, {3, 4, 5, 100, -2, 2, 77}, {5, 6, 0, 0, 0, 0, 0});
}

TEST(Stroke, APointInsideTheBoxLeavesBothCornersUntouched) {
  const Values low{0, 0, 1, 2, 3, 4, 5};
  Stroke stroke = strokeOf({makePoint(low), Point(10, 10)});
  stroke.append(makePoint({5, 5, 9, 9, 9, 9, 9}));
  expectCorners(stroke, low, {10, 10, 0, 0, 0, 0, 0});
}

TEST(Stroke, ANotANumberMovesNoCorner) {
  Stroke stroke = strokeOf({Point(1, 2)});
  stroke.append(Point(nan, nan));
  expectBox(stroke, 1, 2, 1, 2);
  stroke.append(Point(nan, 0));
  expectBox(stroke, 1, 0, 1, 2);
  stroke.append(Point(9, nan));
  expectBox(stroke, 1, 0, 9, 2);
  EXPECT_EQ(stroke.size(), 4U);
}

TEST(Stroke, PrependingMakesAPointTheFirstAndWidensTheBox) {
  Stroke stroke = strokeOf({Point(3, 4), Point(5, 6)});
  stroke.prepend(Point(0, 0));
  Point first;
  ASSERT_TRUE(stroke.at(0, first));
  EXPECT_EQ(values(first), values(Point(0, 0)));
  EXPECT_EQ(stroke.back().x.value, 5);
  expectBox(stroke, 0, 0, 5, 6);
}

TEST(Stroke, PrependingToAnEmptyOneStartsTheBox) {
  Stroke stroke;
  stroke.prepend(makePoint({3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(values(stroke.bounds().maxCorner.value), (Values{3, 4, 5, 6, 7, 8, 9}));
}

TEST(Stroke, PrependingKeepsTheSignOfEveryZero) {
  Stroke stroke = strokeOf({Point(0.0, 1), Point(-0.0, 2), Point(0.0, 3)});
  stroke.prepend(Point(-0.0, 0));
  std::vector<bool> signs;
  for (const Point& point : stroke)
    signs.push_back(std::signbit(point.x.value));
  EXPECT_EQ(signs, (std::vector<bool>{true, false, true, false}));
}

TEST(Stroke, WhatIsWrittenInPlaceLeavesTheBoxAsItWas) {
  Stroke stroke = strokeOf({makePoint({3, 4, 0, 7, 0, 0, 0})});
  stroke.back().pressure.value = 99;
  stroke.back().x.value = 1000;
  EXPECT_EQ(values(stroke.bounds().maxCorner.value), (Values{3, 4, 0, 7, 0, 0, 0}));
}

TEST(Region, AddCallsTheAppendOfTheObject) {
  class Counting final : public Region<Point> {
   public:
    void append(const Point& point) override {
      ++appended;
      Region<Point>::append(point);
    }
    void prepend(const Point&) override {}
    void extendBounds(const Point&) override {}
    int appended = 0;
  };
  Counting stroke;
  Region<Point>& region = stroke;
  region.add(Point(1, 2));
  EXPECT_EQ(stroke.appended, 1);
  EXPECT_EQ(stroke.size(), 1U);
}

TEST(Region, AppendWidensTheBoxThroughTheObject) {
  class Frozen final : public Region<Point> {
   public:
    void prepend(const Point&) override {}
    void extendBounds(const Point&) override {}
  };
  Frozen stroke;
  stroke.append(Point(1, 2));
  stroke.append(Point(5, 6));
  expectBox(stroke, 1, 2, 1, 2);
}

TEST(Region, AtRefusesAnIndexBehindTheLastElement) {
  const Stroke stroke = strokeOf({Point(1, 2), Point(3, 4)});
  Point out(7, 8);
  EXPECT_FALSE(stroke.at(2, out));
  EXPECT_FALSE(stroke.at(3, out));
  EXPECT_EQ(values(out), values(Point(7, 8)));
  EXPECT_TRUE(stroke.at(1, out));
  EXPECT_EQ(values(out), values(Point(3, 4)));
}

TEST(Region, AtAssignsFieldByField) {
  const Stroke stroke = strokeOf({makePoint({0.0, 2, 3, 4, 5, 6, 7})});
  Point out = makePoint({-0.0, 9, 9, 9, 9, 9, 9});
  ASSERT_TRUE(stroke.at(0, out));
  EXPECT_TRUE(std::signbit(out.x.value));
  EXPECT_EQ(values(out), (Values{0, 2, 3, 4, 5, 6, 7}));
}

TEST(Region, AtHandsOutAWholeStrokeOfALayer) {
  Layer layer = layerOf({strokeOf({Point(1, 2), Point(3, 4)})});
  Stroke out = strokeOf({Point(8, 8)});
  ASSERT_TRUE(layer.at(0, out));
  EXPECT_EQ(out.size(), 2U);
  EXPECT_EQ(out.back().y.value, 4);
  expectBox(out, 1, 2, 3, 4);
}

TEST(Region, StoresCopies) {
  Stroke stroke = strokeOf({Point(1, 2)});
  Layer layer;
  layer.append(stroke);
  stroke.append(Point(3, 4));
  EXPECT_EQ(layer.back().size(), 1U);
}

TEST(Layer, TakesTheBoxOfItsFirstStroke) {
  Layer layer = layerOf({strokeOf({makePoint({3, 4, 5, 6, 7, 8, 9})})});
  expectCorners(layer, {3, 4, 5, 6, 7, 8, 9}, {3, 4, 5, 6, 7, 8, 9});
}

TEST(Layer, SkipsACornerOfItsFirstStrokeThatComparesEqual) {
  Layer layer = layerOf({strokeOf({makePoint({0, 0, 0, 6, 7, 8, 9}), Point(2, 2)})});
  EXPECT_EQ(values(layer.bounds().minCorner.value), (Values{0, 0, 0, 0, 0, 0, 0}));
  expectBox(layer, 0, 0, 2, 2);
}

TEST(Layer, SkipsBothCornersOfAFirstStrokeOfOnePointThatCompareEqual) {
  Layer layer = layerOf({strokeOf({makePoint({0, 0, 0, 6, 7, 8, 9})})});
  expectCorners(layer, {0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0});
}

TEST(Layer, TakesANotANumberOfAStrokeWithAMinimumThatMovesInTheOtherDirection) {
  // The minimum is the child's where the child's is not greater, and a NaN is never greater.
  Layer inX = layerOf({strokeOf({Point(1, 5)}), strokeOf({Point(nan, 2)})});
  EXPECT_TRUE(std::isnan(inX.bounds().minCorner.value.x.value));
  EXPECT_EQ(inX.bounds().minCorner.value.y.value, 2);
  EXPECT_EQ(values(inX.bounds().maxCorner.value), values(Point(1, 5)));
  Layer inY = layerOf({strokeOf({Point(1, 5)}), strokeOf({Point(0, nan)})});
  EXPECT_EQ(inY.bounds().minCorner.value.x.value, 0);
  EXPECT_TRUE(std::isnan(inY.bounds().minCorner.value.y.value));
  EXPECT_EQ(values(inY.bounds().maxCorner.value), values(Point(1, 5)));
}

TEST(Layer, WidensByTheBoxOfEachFurtherStroke) {
  Layer layer = layerOf({strokeOf({makePoint({3, 4, 0, 6, 7, 8, 9}), Point(5, 6)}),
                         strokeOf({Point(1, 5), Point(4, 9)})});
  expectCorners(layer, {1, 4, 0, 0, 0, 0, 0}, {5, 9, 0, 0, 0, 0, 0});
}

TEST(Layer, KeepsTheFieldsOfACornerThatDoesNotMove) {
  Layer layer = layerOf({strokeOf({makePoint({3, 4, 5, 6, 7, 8, 9})}), strokeOf({Point(4, 5)})});
  EXPECT_EQ(values(layer.bounds().minCorner.value), (Values{3, 4, 5, 6, 7, 8, 9}));
  expectBox(layer, 3, 4, 4, 5);
}

TEST(Layer, PrependsAStroke) {
  Layer layer = layerOf({strokeOf({Point(3, 4)})});
  layer.prepend(strokeOf({Point(1, 2)}));
  EXPECT_EQ(layer.begin()->back().x.value, 1);
  EXPECT_EQ(layer.back().back().x.value, 3);
  expectBox(layer, 1, 2, 3, 4);
}

TEST(Document, WidensByTheBoxOfEachLayer) {
  Layer low = layerOf({strokeOf({Point(1, 1), Point(2, 2)})});
  Layer high = layerOf({strokeOf({Point(5, -3)})});
  Document document;
  document.append(low);
  expectBox(document, 1, 1, 2, 2);
  document.prepend(high);
  expectBox(document, 1, -3, 5, 2);
  EXPECT_EQ(document.begin()->bounds().minCorner.value.x.value, 5);
}

}  // namespace
