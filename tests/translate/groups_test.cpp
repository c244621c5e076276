#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;

std::vector<std::string> namesOf(const Translation& translation) {
  std::vector<std::string> names;
  for (const Orvo::Layer& layer : *translation.document) {
    const auto name = layer.annotations().find("name");
    names.push_back(name == layer.annotations().end() ? "" : name->second);
  }
  return names;
}

TEST(Groups, AtTheTopBecomeLayersAndLooseTracesOne) {
  const Translation result = translated(inMillimetres(
      "<traceGroup><trace>0 0</trace><traceGroup><traceGroup><trace>1 1</trace></traceGroup>"
      "</traceGroup></traceGroup><trace>2 2</trace><traceGroup><trace>3 3</trace></traceGroup>"
      "<trace>4 4</trace>"));
  const auto layers = layersOf(result);
  ASSERT_EQ(layers.size(), 3U);
  EXPECT_EQ(layers[0].size(), 2U);
  EXPECT_EQ(layers[1].size(), 2U);
  EXPECT_EQ(layers[1][1][0].x, 40);
  EXPECT_EQ(layers[2].size(), 1U);
  EXPECT_EQ(result.groups, 3U);
  EXPECT_EQ(result.traces, 5U);
  EXPECT_EQ(result.points, 5U);
}

TEST(Groups, WithoutInkMakeNoLayer) {
  const Translation result = translated(
      inMillimetres("<traceGroup/><traceGroup><trace/><trace type='penUp'>1 1</trace></traceGroup>"
                    "<trace>1 1</trace>"));
  EXPECT_EQ(result.groups, 1U);
  EXPECT_EQ(remarked(result, RemarkKind::emptyTraces), 1U);
  EXPECT_EQ(remarked(result, RemarkKind::penUpTraces), 1U);
}

TEST(Groups, GiveTheirNames) {
  const Translation result = translated(inMillimetres(
      "<traceGroup xml:id='g'><annotation type='label'>one</annotation><trace>0 0</trace>"
      "</traceGroup><traceGroup xml:id='h'><trace>0 0</trace></traceGroup>"
      "<traceGroup><annotation type='truth'>x</annotation><annotation type='name'>  y\n z "
      "</annotation><trace>0 0</trace></traceGroup><traceGroup><trace>0 0</trace></traceGroup>"));
  EXPECT_EQ(namesOf(result), (std::vector<std::string>{"one", "h", "y z", ""}));
  EXPECT_EQ((*result.document->begin()).annotations().at("label"), "one");
}

TEST(Annotations, OfTheDocumentStayAndOthersAreCounted) {
  const Translation result = translated(inMillimetres(
      "<annotation type='title'>A &amp; B</annotation><annotation>plain</annotation>"
      "<traceGroup><annotation type='a'>1</annotation><annotation type='a'>2</annotation>"
      "<traceGroup><annotation type='a'>3</annotation><trace>0 0</trace></traceGroup>"
      "<annotationXML><x/></annotationXML></traceGroup>"));
  EXPECT_EQ(result.document->annotations(),
            (std::map<std::string, std::string>{{"title", "A & B"}, {"annotation", "plain"}}));
  EXPECT_EQ((*result.document->begin()).annotations(),
            (std::map<std::string, std::string>{{"a", "1"}}));
  EXPECT_EQ(remarked(result, RemarkKind::annotationsLeftOut), 3U);
}

TEST(Traces, WithThePenUpAreNotDrawn) {
  const std::string text = inMillimetres(
      "<trace type='penDown'>0 0</trace><trace type='penUp'>1 1</trace>"
      "<trace type='indeterminate'>2 2</trace>");
  EXPECT_EQ(placesOf(text), (std::vector<Places>{{{0, 0}}, {{20, 20}}}));
  EXPECT_EQ(remarked(text, RemarkKind::penUpTraces), 1U);
  EXPECT_EQ(remarked(text, RemarkKind::indeterminateTraces), 1U);
}

TEST(Traces, EndWithTheirLastPointTwice) {
  const Translation result = translated(inMillimetres("<trace>1 2,3 4</trace><trace>5 6</trace>"));
  EXPECT_EQ(inktest::shapeOf(*result.document), (std::vector<std::vector<std::size_t>>{{3, 2}}));
  layersOf(result);  // Expects the doubled ends.
}

TEST(Continuations, AreOneStrokeWhereItBegins) {
  EXPECT_EQ(placesOf(inMillimetres(
                "<trace xml:id='a' continuation='begin'>0 0,1 1</trace><trace>9 9</trace>"
                "<trace xml:id='b' continuation='middle' priorRef='#a'>2 2,'1'1</trace>"
                "<trace continuation='end' priorRef='b'>4 4</trace>")),
            (std::vector<Places>{{{0, 0}, {10, 10}, {20, 20}, {30, 30}, {40, 40}}, {{90, 90}}}));
}

TEST(Continuations, MayStandBeforeWhatTheyContinue) {
  EXPECT_EQ(placesOf(inMillimetres("<trace continuation='end' priorRef='#a'>2 2</trace>"
                                   "<trace xml:id='a' continuation='begin'>1 1</trace>")),
            (std::vector<Places>{{{10, 10}, {20, 20}}}));
}

TEST(Continuations, WithoutReferenceFollowTheOpenStroke) {
  EXPECT_EQ(placesOf(inMillimetres("<trace continuation='begin'>1 1</trace>"
                                   "<trace continuation='end'>2 2</trace>"
                                   "<trace continuation='end'>3 3</trace>")),
            (std::vector<Places>{{{10, 10}, {20, 20}}, {{30, 30}}}));
}

TEST(Continuations, OfNothingAreStrokesOfTheirOwn) {
  const std::string text = inMillimetres(
      "<trace xml:id='a' continuation='middle' priorRef='#b'>1 1</trace>"
      "<trace xml:id='b' continuation='middle' priorRef='#a'>2 2</trace>"
      "<trace continuation='end' priorRef='#a'>3 3</trace>"
      "<trace continuation='end' priorRef='#gone'>4 4</trace>");
  EXPECT_EQ(placesOf(text), (std::vector<Places>{{{20, 20}, {10, 10}, {30, 30}}, {{40, 40}}}));
  EXPECT_EQ(remarked(text, RemarkKind::looseContinuations), 2U);
}

TEST(Documents, WithoutInkSaySo) {
  const Translation result = translated(ink(""));
  EXPECT_EQ(result.groups, 0U);
  EXPECT_EQ(remarked(result, RemarkKind::nothingToDraw), 1U);
}

}  // namespace
