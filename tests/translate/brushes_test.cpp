#include "translate/brushes.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include "inkml/document_serializer.h"
#include "inkml/ink_reading.h"
#include "tests/translate/translated.h"

namespace {

using namespace translatetest;

std::string brush(const std::string& id, const std::string& color) {
  return "<brush xml:id='" + id + "'><brushProperty name='color' value='" + color + "'/></brush>";
}

std::vector<std::string> colorsOf(const Translation& translation) {
  std::vector<std::string> colors;
  for (const Orvo::Brush* used : translation.brushes)
    colors.push_back(used == nullptr ? "" : used->color.value);
  return colors;
}

TEST(Brushes, AreTheNearestOnes) {
  const Translation result = translated(inMillimetres(
      "<definitions>" + brush("r", "red") + brush("g", "green") + brush("b", "blue") +
      "<context xml:id='c' brushRef='#b'/><context xml:id='n'/></definitions>"
      "<trace>0 0</trace><traceGroup contextRef='#c' brushRef='#g'><trace brushRef='#r'>0 0</trace>"
      "<trace contextRef='#c'>0 0</trace><trace>0 0</trace><trace contextRef='#n'>0 0</trace>"
      "</traceGroup><traceGroup contextRef='#c'><trace>0 0</trace></traceGroup>" +
      brush("y", "yellow") + "<trace>0 0</trace>"));
  EXPECT_EQ(colorsOf(result),
            (std::vector<std::string>{"", "yellow", "red", "blue", "green", "green", "blue"}));
  EXPECT_EQ(remarked(result, RemarkKind::brushesNotDrawn), 4U);
}

TEST(Brushes, KeepTheirProperties) {
  const Translation result = translated(inMillimetres(
      "<brush xml:id='b'><brushProperty name='width' value='0.06667' units='cm'/>"
      "<brushProperty name='height' value='3' units='mm'/><brushProperty name='color' "
      "value='#ED1C24'/><brushProperty name='transparency' value='128'/><brushProperty "
      "name='tip' value='ellipse'/><brushProperty name='fitToCurve' value='0'/><brushProperty "
      "name='ignorePressure' value='true'/><brushProperty name='rasterOp' value='copyPen'/>"
      "</brush><trace>0 0</trace>"));
  const Orvo::Brush& made = *result.brushes.at(0);
  EXPECT_EQ(made.id, "b");
  EXPECT_EQ(made.width.value, 7U);
  EXPECT_EQ(made.height.value, 30U);
  EXPECT_EQ(made.color.value, "#ED1C24");
  EXPECT_EQ(made.transparency.value, 128U);
  EXPECT_EQ(made.pentip.value, "ellipse");
  EXPECT_FALSE(made.fittocurve.value);
  EXPECT_TRUE(made.ignorePressure.value);
  EXPECT_EQ(remarked(result, RemarkKind::brushProperties, "rasterOp"), 1U);
}

TEST(Brushes, WithAWidthAloneAreRound) {
  const Translation result =
      translated(inMillimetres("<brush><brushProperty name='width' value='2' units='mm'/></brush>"
                               "<trace>0 0</trace>"));
  EXPECT_EQ(result.brushes.at(0)->width.value, 20U);
  EXPECT_EQ(result.brushes.at(0)->height.value, 20U);
}

TEST(Brushes, OverrideTheOneThatTheyReferTo) {
  const Translation result = translated(inMillimetres(
      "<definitions>" + brush("a", "red") +
      "<brush xml:id='b' brushRef='#a'><brushProperty name='tip' value='drop'/></brush>"
      "</definitions><trace brushRef='#b'>0 0</trace>"));
  EXPECT_EQ(result.brushes.at(0)->color.value, "red");
  EXPECT_EQ(result.brushes.at(0)->pentip.value, "drop");
}

TEST(Definitions, LeadWithTheDefaultContextAndKeepTheOthers) {
  const Translation result = translated(inMillimetres(
      "<definitions>" + brush("b", "red") + brush("default-brush", "blue") +
      "<context xml:id='c' brushRef='#b'/><context xml:id='d'/></definitions><trace>0 0</trace>"));
  std::vector<std::pair<std::string, std::string>> contexts;
  for (const Orvo::InkContext& context : result.definitions->contexts)
    contexts.emplace_back(context.id, context.brush.value->id);
  ASSERT_EQ(contexts.size(), 3U);
  EXPECT_EQ(contexts[0], std::pair(std::string("default-context"), std::string("default-brush")));
  EXPECT_EQ(contexts[1], std::pair(std::string("c"), std::string("b")));
  EXPECT_EQ(contexts[2], std::pair(std::string("d"), std::string("default-brush")));
  EXPECT_NE(result.definitions->brushes.back().id, "default-brush");
}

}  // namespace
