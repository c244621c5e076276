#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;

std::string withTransform(const std::string& mapping, const std::string& trace,
                          const std::string& canvas = {}) {
  return ink("<context>" + canvas + std::string(kMillimetres) + "<canvasTransform>" + mapping +
             "</canvasTransform></context><trace>" + trace + "</trace>");
}

TEST(CanvasTransform, OfTheIdentityChangesNothing) {
  EXPECT_EQ(onlyPlaces(withTransform("<mapping type='identity'/>", "1 2,3 4")),
            (Places{{10, 20}, {30, 40}}));
}

// x = 2X + 10, y = 3Y + 20
TEST(CanvasTransform, OfAnAffineMapIsApplied) {
  EXPECT_EQ(onlyPlaces(withTransform(
                "<mapping type='affine'><affine>2 0 10, 0 3 20</affine></mapping>", "1 1,2 -2")),
            (Places{{120, 230}, {140, 140}}));
}

TEST(CanvasTransform, MayHaveACommaBehindTheLastRow) {
  EXPECT_EQ(onlyPlaces(withTransform(
                "<mapping type='affine'><affine>\n0 1 0,\n1 0 5,\n</affine></mapping>", "1 2")),
            (Places{{20, 60}}));
}

TEST(CanvasTransform, IsInTheUnitOfTheCanvas) {
  EXPECT_EQ(onlyPlaces(withTransform(
                "<mapping type='affine'><affine>2 0 1, 0 2 1</affine></mapping>", "1 1",
                "<canvas><traceFormat><channel name='X' units='cm'/><channel name='Y' units='cm' "
                "orientation='-ve'/></traceFormat></canvas>")),
            (Places{{300, -300}}));
}

// Rows give y and x, columns take Y and X: y = 2Y, x = 3X + 1.
TEST(CanvasTransform, BindsRowsAndColumns) {
  EXPECT_EQ(onlyPlaces(withTransform(
                "<mapping type='affine'><bind source='Y' column='1'/><bind source='X' column='2'/>"
                "<bind target='Y' row='1'/><bind target='X' row='2'/>"
                "<affine>2 0 0, 0 3 1</affine></mapping>",
                "1 5")),
            (Places{{40, 100}}));
}

TEST(CanvasTransform, IsTheFirstMappingOnly) {
  EXPECT_EQ(
      onlyPlaces(withTransform("<mapping type='affine'><affine>2 0 0,0 2 0</affine></mapping>"
                               "<mapping type='affine'><affine>.5 0 0,0 .5 0</affine></mapping>",
                               "1 2")),
      (Places{{20, 40}}));
}

TEST(CanvasTransform, MayReferToAMapping) {
  EXPECT_EQ(onlyPlaces(ink("<definitions><mapping xml:id='m' type='affine'><affine>2 0 0,0 2 0"
                           "</affine></mapping><canvasTransform xml:id='t'><mapping "
                           "mappingRef='#m'/></canvasTransform><context xml:id='c' "
                           "canvasTransformRef='#t'/></definitions>" +
                           std::string(kMillimetres) + "<trace contextRef='#c'>1 2</trace>")),
            (Places{{20, 40}}));
}

TEST(CanvasTransform, OfAnotherTypeIsSaidAndNotApplied) {
  for (const char* type : {"lookup", "mathml", "product", "unknown"}) {
    const std::string text = withTransform(
        "<mapping type='" + std::string(type) + "'><table>1 2</table></mapping>", "1 2");
    EXPECT_EQ(onlyPlaces(text), (Places{{10, 20}})) << type;
    EXPECT_EQ(remarked(text, RemarkKind::transformNotApplied, type), 1U) << type;
  }
}

TEST(CanvasTransform, OfAMatrixThatIsNoneIsSaid) {
  for (const char* matrix : {"", "1 2 x,3 4 5", "1 2 3,4 5", "7"}) {
    const std::string text = withTransform(
        "<mapping type='affine'><affine>" + std::string(matrix) + "</affine></mapping>", "1 2");
    EXPECT_EQ(remarked(text, RemarkKind::transformNotApplied, "affine"), 1U) << matrix;
  }
}

TEST(Mapping, InAChannelIsNotAppliedAgain) {
  EXPECT_EQ(onlyPlaces(ink("<traceFormat><channel name='X' units='mm'><mapping type='affine'>"
                           "<affine>9 9</affine></mapping></channel><channel name='Y' units='mm'/>"
                           "</traceFormat><trace>1 2</trace>")),
            (Places{{10, 20}}));
}

}  // namespace
