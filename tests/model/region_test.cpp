#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <new>
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

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

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

template <class T>
void expectCorners(const Region<T>& region, const Values& min, const Values& max) {
  EXPECT_EQ(values(region.bounds().minCorner.value), min);
  EXPECT_EQ(values(region.bounds().maxCorner.value), max);
}

template <class T>
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

TEST(Stroke, ACornerThatAPointOnlyTouchesKeepsItsOtherFields) {
  const Values low{3, 4, 5, 6, 7, 8, 9};
  const Values high{13, 14, 5, 6, 7, 8, 9};
  for (const Point& touching : {Point(3, 5), Point(5, 4), Point(13, 5), Point(5, 14)}) {
    Stroke stroke = strokeOf({Point(3, 4)});
    stroke.bounds().minCorner.value = makePoint(low);
    stroke.bounds().maxCorner.value = makePoint(high);
    stroke.append(touching);
    expectCorners(stroke, low, high);
  }
}

TEST(Stroke, APointInsideTheBoxLeavesBothCornersUntouched) {
  const Values low{0, 0, 1, 2, 3, 4, 5};
  Stroke stroke = strokeOf({makePoint(low), Point(10, 10)});
  stroke.append(makePoint({5, 5, 9, 9, 9, 9, 9}));
  expectCorners(stroke, low, {10, 10, 0, 0, 0, 0, 0});
}

TEST(Stroke, NanMovesNoCorner) {
  Stroke stroke = strokeOf({Point(1, 2)});
  stroke.append(Point(kNan, kNan));
  expectBox(stroke, 1, 2, 1, 2);
  stroke.append(Point(kNan, 0));
  expectBox(stroke, 1, 0, 1, 2);
  stroke.append(Point(9, kNan));
  expectBox(stroke, 1, 0, 9, 2);
  EXPECT_EQ(stroke.size(), 4U);
}

// A box with these corners, (left, bottom) and (right, top).
struct Corners {
  double left;
  double bottom;
  double right;
  double top;
};

void setBox(Orvo::BoundingBox& box, const Corners& corners) {
  box.minCorner.value = Point(corners.left, corners.bottom);
  box.maxCorner.value = Point(corners.right, corners.top);
}

// Expects exactly these corners; all NaNs are alike.
template <class T>
void expectCorners(const Region<T>& region, const Corners& expected) {
  const Point& min = region.bounds().minCorner.value;
  const Point& max = region.bounds().maxCorner.value;
  EXPECT_THAT((std::vector<double>{min.x.value, min.y.value, max.x.value, max.y.value}),
              testing::Pointwise(testing::NanSensitiveDoubleEq(),
                                 {expected.left, expected.bottom, expected.right, expected.top}));
}

TEST(Stroke, NanInACornerStaysAndTheOtherCoordinateOfThatCornerStillMoves) {
  struct Case {
    Corners before;
    Point added;
    Corners after;
  };
  const Case cases[] = {
      // The minimum.
      {{kNan, 1, 5, 5}, Point(0, 2), {kNan, 1, 5, 5}},
      {{kNan, 1, 5, 5}, Point(2, 0), {kNan, 0, 5, 5}},
      {{1, kNan, 5, 5}, Point(2, 0), {1, kNan, 5, 5}},
      {{1, kNan, 5, 5}, Point(0, 2), {0, kNan, 5, 5}},
      // The maximum.
      {{1, 1, kNan, 5}, Point(9, 2), {1, 1, kNan, 5}},
      {{1, 1, kNan, 5}, Point(2, 9), {1, 1, kNan, 9}},
      {{1, 1, 5, kNan}, Point(2, 9), {1, 1, 5, kNan}},
      {{1, 1, 5, kNan}, Point(9, 2), {1, 1, 9, kNan}},
      // A point with a NaN moves only the other coordinate.
      {{1, 1, 5, 5}, Point(kNan, 0), {1, 0, 5, 5}},
      {{1, 1, 5, 5}, Point(kNan, 9), {1, 1, 5, 9}},
      {{1, 1, 5, 5}, Point(0, kNan), {0, 1, 5, 5}},
      {{1, 1, 5, 5}, Point(9, kNan), {1, 1, 9, 5}},
  };
  for (const Case& example : cases) {
    SCOPED_TRACE(&example - cases);
    Stroke stroke = strokeOf({Point(1, 1)});
    setBox(stroke.bounds(), example.before);
    stroke.extendBounds(example.added);
    expectCorners(stroke, example.after);
  }
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

TEST(Stroke, ChangingAPointInPlaceDoesNotChangeTheBox) {
  Stroke stroke = strokeOf({makePoint({3, 4, 0, 7, 0, 0, 0})});
  stroke.back().pressure.value = 99;
  stroke.back().x.value = 1000;
  EXPECT_EQ(values(stroke.bounds().maxCorner.value), (Values{3, 4, 0, 7, 0, 0, 0}));
}

TEST(Region, AddCallsTheOverriddenAppend) {
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

TEST(Region, AppendCallsTheOverriddenExtendBounds) {
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

// Cannot be copied, as if there were no memory for a copy.
struct Uncopyable final : Region<Point> {
  Uncopyable() = default;
  Uncopyable(const Uncopyable& other) : Region<Point>(other) { throw std::bad_alloc(); }
  void prepend(const Point&) override {}
  void extendBounds(const Point&) override {}
};

struct Sheet final : Region<Uncopyable> {
  void prepend(const Uncopyable& element) override { pushFront(element); }
  void extendBounds(const Uncopyable&) override {}
};

TEST(Region, WidensTheBoxBeforeItStoresAnElement) {
  Uncopyable element;
  element.append(Point(3, 4));
  Sheet appended;
  EXPECT_THROW(appended.append(element), std::bad_alloc);
  EXPECT_EQ(appended.size(), 0U);
  expectBox(appended, 3, 4, 3, 4);
  Sheet prepended;
  EXPECT_THROW(prepended.prepend(element), std::bad_alloc);
  EXPECT_EQ(prepended.size(), 0U);
  expectBox(prepended, 3, 4, 3, 4);
}

TEST(Region, ExtendsItsBoundsBeforeItStoresAnotherElement) {
  class Counting final : public Region<Point> {
   public:
    void prepend(const Point& point) override { pushFront(point); }
    void extendBounds(const Point&) override { sizes.push_back(size()); }
    std::vector<std::size_t> sizes;
  };
  Counting stroke;
  stroke.append(Point(1, 1));
  stroke.append(Point(2, 2));
  stroke.prepend(Point(3, 3));
  EXPECT_EQ(stroke.sizes, (std::vector<std::size_t>{1, 2}));
}

TEST(Region, LastIsTheLastElementIfThereIsOne) {
  Stroke stroke;
  EXPECT_EQ(stroke.last(), nullptr);
  stroke.prepend(Point(1, 1));
  ASSERT_NE(stroke.last(), nullptr);
  EXPECT_EQ(stroke.last()->x.value, 1);
  stroke.prepend(Point(2, 2));
  EXPECT_EQ(stroke.last()->x.value, 1);
  for (int x = 3; x < 20; ++x) {
    stroke.append(Point(x, x));
    EXPECT_EQ(stroke.last()->x.value, x);
    EXPECT_EQ(stroke.last(), &stroke.back());
  }
  const Stroke copy(stroke);
  EXPECT_EQ(copy.back().x.value, 19);
  EXPECT_NE(&copy.back(), &stroke.back());
}

TEST(Region, AtRefusesAnIndexBeyondTheLastElement) {
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

TEST(Region, AtAssignsAWholeStrokeOfALayer) {
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

TEST(Layer, TakesTheNanOfAStrokeWhoseOtherCoordinateMovesTheMinimum) {
  // The minimum is the child's where the child's is not greater, and a NaN is never greater.
  Layer inX = layerOf({strokeOf({Point(1, 5)}), strokeOf({Point(kNan, 2)})});
  EXPECT_TRUE(std::isnan(inX.bounds().minCorner.value.x.value));
  EXPECT_EQ(inX.bounds().minCorner.value.y.value, 2);
  EXPECT_EQ(values(inX.bounds().maxCorner.value), values(Point(1, 5)));
  Layer inY = layerOf({strokeOf({Point(1, 5)}), strokeOf({Point(0, kNan)})});
  EXPECT_EQ(inY.bounds().minCorner.value.x.value, 0);
  EXPECT_TRUE(std::isnan(inY.bounds().minCorner.value.y.value));
  EXPECT_EQ(values(inY.bounds().maxCorner.value), values(Point(1, 5)));
}

// Where neither value is greater and the other coordinate of the corner moves, a minimum is taken
// from the child and a maximum is kept.
template <class Container, class Child>
void expectNanToFollowTheRulesForBoxes() {
  struct Case {
    Corners before;
    Corners child;
    Corners after;
  };
  const Case cases[] = {
      // In the box: the minimum.
      {{kNan, 1, 5, 5}, {2, 2, 3, 3}, {kNan, 1, 5, 5}},
      {{kNan, 1, 5, 5}, {2, 0, 3, 3}, {2, 0, 5, 5}},
      {{1, kNan, 5, 5}, {2, 2, 3, 3}, {1, kNan, 5, 5}},
      {{1, kNan, 5, 5}, {0, 2, 3, 3}, {0, 2, 5, 5}},
      // In the box: the maximum.
      {{1, 1, kNan, 5}, {2, 2, 9, 3}, {1, 1, kNan, 5}},
      {{1, 1, kNan, 5}, {2, 2, 3, 9}, {1, 1, kNan, 9}},
      {{1, 1, 5, kNan}, {2, 2, 3, 9}, {1, 1, 5, kNan}},
      {{1, 1, 5, kNan}, {2, 2, 9, 3}, {1, 1, 9, kNan}},
      // In the child: the minimum.
      {{1, 1, 5, 5}, {kNan, 2, 3, 3}, {1, 1, 5, 5}},
      {{1, 1, 5, 5}, {kNan, 0, 3, 3}, {kNan, 0, 5, 5}},
      {{1, 1, 5, 5}, {2, kNan, 3, 3}, {1, 1, 5, 5}},
      {{1, 1, 5, 5}, {0, kNan, 3, 3}, {0, kNan, 5, 5}},
      // In the child: the maximum.
      {{1, 1, 5, 5}, {2, 2, kNan, 3}, {1, 1, 5, 5}},
      {{1, 1, 5, 5}, {2, 2, kNan, 9}, {1, 1, 5, 9}},
      {{1, 1, 5, 5}, {2, 2, 3, kNan}, {1, 1, 5, 5}},
      {{1, 1, 5, 5}, {2, 2, 9, kNan}, {1, 1, 9, 5}},
  };
  for (const Case& example : cases) {
    SCOPED_TRACE(&example - cases);
    Container container;
    setBox(container.bounds(), example.before);
    Child child;
    setBox(child.bounds(), example.child);
    container.extendBounds(child);
    expectCorners(container, example.after);
  }
}

TEST(Layer, TakesNanFromAMinimumAndNeverFromAMaximum) {
  expectNanToFollowTheRulesForBoxes<Layer, Stroke>();
}

TEST(Document, TakesNanFromAMinimumAndNeverFromAMaximum) {
  expectNanToFollowTheRulesForBoxes<Document, Layer>();
}

TEST(Layer, WidensToHoldTheBoxOfEachFurtherStroke) {
  Layer layer = layerOf({strokeOf({makePoint({3, 4, 0, 6, 7, 8, 9}), Point(5, 6)}),
                         strokeOf({Point(1, 5), Point(4, 9)})});
  expectCorners(layer, {1, 4, 0, 0, 0, 0, 0}, {5, 9, 0, 0, 0, 0, 0});
}

TEST(Layer, KeepsTheFieldsOfACornerThatDoesNotMove) {
  Layer layer = layerOf({strokeOf({makePoint({3, 4, 5, 6, 7, 8, 9})}), strokeOf({Point(4, 5)})});
  EXPECT_EQ(values(layer.bounds().minCorner.value), (Values{3, 4, 5, 6, 7, 8, 9}));
  expectBox(layer, 3, 4, 4, 5);
}

TEST(Layer, KeepsTheFieldsOfACornerThatAFurtherStrokeOnlyTouches) {
  const Values low{3, 4, 5, 6, 7, 8, 9};
  const Values high{13, 14, 5, 6, 7, 8, 9};
  const auto boxWith = [&](const Point& one, const Point& other) {
    Layer layer = layerOf({strokeOf({Point(3, 4)})});
    layer.bounds().minCorner.value = makePoint(low);
    layer.bounds().maxCorner.value = makePoint(high);
    layer.append(strokeOf({one, other}));
    return layer.bounds();
  };
  for (const Point& touching : {Point(3, 5), Point(5, 4), Point(13, 5), Point(5, 14)}) {
    const auto box = boxWith(touching, Point(6, 6));
    EXPECT_EQ(values(box.minCorner.value), low);
    EXPECT_EQ(values(box.maxCorner.value), high);
  }
}

TEST(Layer, PrependsAStroke) {
  Layer layer = layerOf({strokeOf({Point(3, 4)})});
  layer.prepend(strokeOf({Point(1, 2)}));
  EXPECT_EQ(layer.begin()->back().x.value, 1);
  EXPECT_EQ(layer.back().back().x.value, 3);
  expectBox(layer, 1, 2, 3, 4);
}

TEST(Document, WidensToHoldTheBoxOfEachLayer) {
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
