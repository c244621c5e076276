#include "facts/drawing_facts.h"

#include <gtest/gtest.h>

#include "tests/support/ink/ink_builder.h"

namespace {

using facts::ClockFacts;
using facts::DrawingFacts;
using facts::drawingFactsOf;
using facts::Extent;
using facts::LayerFacts;
using facts::Range;
using inktest::makeLayer;
using inktest::makeStroke;
using IntRange = Range<std::int32_t>;

TEST(DrawingFacts, CountLayersStrokesAndPoints) {
  Orvo::Document document;
  document.append(makeLayer({makeStroke({{1, 1}, {2, 2}, {3, 3}}), makeStroke({{5, 5}})}));
  Orvo::Layer named = makeLayer({makeStroke({{1, 1}, {2, 2}})});
  named.annotations()["name"] = "sky";
  document.append(named);
  document.append(Orvo::Layer());

  const DrawingFacts facts = drawingFactsOf(document);
  EXPECT_EQ(facts.layers, (std::vector<LayerFacts>{{"", 2, 4}, {"sky", 1, 2}, {"", 0, 0}}));
  EXPECT_EQ(facts.strokes, 3U);
  EXPECT_EQ(facts.points, 6U);
  EXPECT_EQ(facts.singlePoints, 1U);
  EXPECT_EQ(facts.longestStroke, 3U);
}

TEST(DrawingFacts, MeasureEachStrokeFromPointToPoint) {
  Orvo::Document document;
  // 5 and 12 in the first stroke, 10 in the second; nothing from stroke to stroke.
  document.append(makeLayer({makeStroke({{0, 0}, {3, 4}, {3, 16}})}));
  document.append(makeLayer({makeStroke({{-6, 30}, {0, 22}}), makeStroke({{100, 100}})}));
  const DrawingFacts facts = drawingFactsOf(document);
  EXPECT_DOUBLE_EQ(facts.length, 27.0);
  EXPECT_EQ(facts.extent, (Extent{-6, 0, 100, 100}));
}

// A layer without points extends the page of the plug-in to the origin, but not the drawing.
TEST(DrawingFacts, TakeTheExtentFromPointsAlone) {
  Orvo::Document document;
  document.append(Orvo::Layer());
  EXPECT_FALSE(drawingFactsOf(document).extent);
  document.append(makeLayer({makeStroke({{10, 20}, {30, 50}})}));
  EXPECT_EQ(drawingFactsOf(document).extent, (Extent{10, 20, 30, 50}));
}

TEST(DrawingFacts, HaveRangesOfPressureAndTilt) {
  Orvo::Document document;
  document.append(makeLayer({makeStroke({{0, 0, 0, 512, 3, -20}, {1, 1, 0, 0, -4, -30}})}));
  document.append(makeLayer({makeStroke({{0, 0, 0, 0xFFFFFFFF, 0, -25}})}));
  const DrawingFacts facts = drawingFactsOf(document);
  EXPECT_EQ(facts.pressure, (IntRange{-1, 512}));
  EXPECT_EQ(facts.tiltX, (IntRange{-4, 3}));
  EXPECT_EQ(facts.tiltY, (IntRange{-30, -20}));
}

TEST(DrawingFacts, HaveNoPressureAndNoTiltWhereAllIsZero) {
  Orvo::Document document;
  document.append(makeLayer({makeStroke({{1, 1}, {2, 2}})}));
  EXPECT_FALSE(drawingFactsOf(document).pressure);
  EXPECT_FALSE(drawingFactsOf(document).tiltX);
  EXPECT_FALSE(drawingFactsOf(document).tiltY);
  // With tilt along one axis the other's is a fact, too.
  document.append(makeLayer({makeStroke({{1, 1, 0, 0, 0, 7}})}));
  EXPECT_EQ(drawingFactsOf(document).tiltX, (IntRange{0, 0}));
  EXPECT_EQ(drawingFactsOf(document).tiltY, (IntRange{0, 7}));
}

TEST(ClockFacts, TellThePenDownFromTheWhole) {
  Orvo::Document document;
  const auto at = [](std::uint32_t time) { return inktest::Seven{0, 0, 0, 0, 0, 0, time}; };
  document.append(makeLayer({makeStroke({at(100), at(108), at(130)}), makeStroke({at(200)})}));
  document.append(makeLayer({makeStroke({at(310), at(300)})}));
  EXPECT_EQ(facts::clockFactsOf(document), (ClockFacts{40, 210}));
  // Without the first two points: 0 and 0 and 10, from 130 to 310.
  EXPECT_EQ(facts::clockFactsOf(document, 2), (ClockFacts{10, 180}));
}

TEST(ClockFacts, AreMissingWhereNoPointHasATime) {
  Orvo::Document document;
  EXPECT_FALSE(facts::clockFactsOf(document));
  document.append(makeLayer({makeStroke({{1, 1}, {2, 2}})}));
  EXPECT_FALSE(facts::clockFactsOf(document));
}

}  // namespace
