#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;

TEST(Views, OfInkThatIsDrawnAnywayDrawNothing) {
  const Translation result = translated(inMillimetres(
      "<trace id='0'>1 1</trace><traceGroup><annotation type='truth'>x</annotation><traceGroup>"
      "<traceView traceDataRef='0'/></traceGroup></traceGroup><traceView traceDataRef='#0'/>"));
  EXPECT_EQ(inktest::shapeOf(*result.document), (std::vector<std::vector<std::size_t>>{{2}}));
}

TEST(Views, ShowDefinitionsOnce) {
  EXPECT_EQ(placesOf(inMillimetres("<definitions><trace xml:id='t'>1 2</trace></definitions>"
                                   "<traceView traceDataRef='#t'/><traceView traceDataRef='#t'/>")),
            (std::vector<Places>{{{10, 20}}}));
}

TEST(Views, ShowPartsOfTraces) {
  EXPECT_EQ(placesOf(inMillimetres(
                "<definitions><trace xml:id='t'>1 1,2 2,'1'1,1 1,5 5</trace></definitions>"
                "<traceView traceDataRef='#t' from='2' to='3'/><traceView traceDataRef='#t' "
                "from='4'/>")),
            (std::vector<Places>{{{20, 20}, {30, 30}}, {{40, 40}, {90, 90}}}));
}

// From the second point of the second trace to the first of the third.
TEST(Views, ShowPartsOfGroups) {
  const std::string text = inMillimetres(
      "<definitions><traceGroup xml:id='g'><trace>1 1,2 2</trace><trace>3 3,4 4</trace>"
      "<traceGroup><trace>5 5,6 6</trace><trace>7 7</trace></traceGroup><trace>8 8</trace>"
      "</traceGroup></definitions><traceView traceDataRef='#g' from='2:2' to='3:1:1'/>");
  EXPECT_EQ(placesOf(text), (std::vector<Places>{{{40, 40}}, {{50, 50}}}));
  EXPECT_EQ(remarked(text, RemarkKind::hiddenTraces), 3U);
}

TEST(Views, OfGroupsAreLayersWithTheirNames) {
  const Translation result = translated(inMillimetres(
      "<definitions><traceGroup xml:id='g'><annotation type='name'>first</annotation>"
      "<trace>1 1</trace></traceGroup><trace xml:id='t'>2 2</trace></definitions>"
      "<traceView traceDataRef='#g'/><traceView><annotation type='name'>second</annotation>"
      "<traceView traceDataRef='#t'/></traceView>"));
  ASSERT_EQ(result.groups, 2U);
  EXPECT_EQ((*result.document->begin()).annotations().at("name"), "first");
  EXPECT_EQ(result.document->back().annotations().at("name"), "second");
}

TEST(Views, HandDownContextsToDefinitions) {
  EXPECT_EQ(onlyPlaces(ink("<definitions><context xml:id='c'><traceFormat><channel name='X' "
                           "units='cm'/><channel name='Y' units='cm'/></traceFormat></context>"
                           "<traceGroup contextRef='#c'><trace xml:id='t'>1 1</trace></traceGroup>"
                           "</definitions>" +
                           std::string(kMillimetres) + "<traceView traceDataRef='#t'/>")),
            (Places{{100, 100}}));
}

TEST(Views, OfNothingAndUnreadablePartsAreSaid) {
  const Translation result = translated(inMillimetres(
      "<definitions><trace xml:id='t'>1 1</trace></definitions><traceView traceDataRef='#gone'/>"
      "<traceView traceDataRef='#t' from='one'/>"));
  EXPECT_EQ(remarked(result, RemarkKind::missingReference, "#gone"), 1U);
  EXPECT_EQ(remarked(result, RemarkKind::attributesUnreadable), 1U);
  EXPECT_EQ(result.traces, 1U);
}

TEST(Views, ThatNothingShowsHideTraces) {
  EXPECT_EQ(remarked(inMillimetres("<definitions><trace>1 1</trace></definitions>"),
                     RemarkKind::hiddenTraces),
            1U);
}

TEST(Views, OfThemselvesEnd) {
  EXPECT_EQ(placesOf(inMillimetres(
                "<definitions><trace xml:id='t'>1 1</trace><traceView xml:id='v'>"
                "<traceView traceDataRef='#t'/><traceView traceDataRef='#v'/><traceView "
                "traceDataRef='#v'/></traceView></definitions><traceView traceDataRef='#v'/>")),
            (std::vector<Places>{{{10, 10}}}));
}

}  // namespace
