#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using namespace translatetest;

std::string formatIn(const std::string& unit) {
  return "<traceFormat><channel name='X' units='" + unit + "'/><channel name='Y' units='" + unit +
         "'/></traceFormat>";
}

TEST(Contexts, InTheStreamHoldForWhatFollows) {
  EXPECT_EQ(placesOf(ink("<context>" + formatIn("mm") + "</context><trace>1 1</trace><context>" +
                         formatIn("cm") + "</context><trace>1 1</trace>")),
            (std::vector<Places>{{{10, 10}}, {{100, 100}}}));
}

TEST(Contexts, InTheStreamKeepWhatTheyDoNotName) {
  const std::string text = ink("<context>" + formatIn("mm") +
                               "</context><context><timestamp "
                               "time='40'/></context><trace>1 1</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 10}}));
  EXPECT_EQ(valuesOf(text, &Seven::time), (std::vector<std::uint32_t>{40}));
}

TEST(Contexts, InDefinitionsHoldOnlyWhereTheyAreReferredTo) {
  EXPECT_EQ(placesOf(ink("<definitions><context xml:id='c'>" + formatIn("cm") +
                         "</context></definitions>" + formatIn("mm") +
                         "<trace>1 1</trace><trace contextRef='#c'>1 1</trace><trace>1 1</trace>")),
            (std::vector<Places>{{{10, 10}}, {{100, 100}}, {{10, 10}}}));
}

TEST(Contexts, MayBeReferredToWithoutAHashAndByAPlainId) {
  EXPECT_EQ(onlyPlaces(ink("<definitions><context id='c'>" + formatIn("cm") +
                           "</context></definitions><trace contextRef='c'>1 1</trace>")),
            (Places{{100, 100}}));
}

TEST(Contexts, OverrideThePartsOfTheirBase) {
  const std::string text =
      ink("<definitions><context xml:id='a'>" + formatIn("cm") +
          "<timestamp time='7'/></context><context xml:id='b' contextRef='#a'><timestamp "
          "time='8'/></context></definitions><trace contextRef='#b'>1 1</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{100, 100}}));
  EXPECT_EQ(valuesOf(text, &Seven::time), (std::vector<std::uint32_t>{8}));
}

TEST(Contexts, NamePartsByReference) {
  const std::string text = ink(
      "<definitions><traceFormat xml:id='f'><channel name='X' units='cm'/><channel name='Y' "
      "units='cm'/></traceFormat><inkSource xml:id='s'><sampleRate value='10'/></inkSource>"
      "<timestamp xml:id='t' time='5'/><context xml:id='c' traceFormatRef='#f' inkSourceRef='#s' "
      "timestampRef='#t'/></definitions><trace contextRef='#c'>1 1,2 2</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{100, 100}, {200, 200}}));
  EXPECT_EQ(valuesOf(text, &Seven::time), (std::vector<std::uint32_t>{5, 105}));
}

TEST(Contexts, OfGroupsHoldForWhatIsInsideAndTheNearestWins) {
  EXPECT_EQ(placesOf(ink("<definitions><context xml:id='m'>" + formatIn("mm") +
                         "</context><context xml:id='c'>" + formatIn("cm") +
                         "</context><context xml:id='i'>" + formatIn("in") +
                         "</context></definitions><traceGroup contextRef='#m'><trace>1 1</trace>"
                         "<traceGroup contextRef='#c'><trace>1 1</trace><trace contextRef='#i'>1 1"
                         "</trace></traceGroup><trace>1 1</trace></traceGroup>")),
            (std::vector<Places>{{{10, 10}}, {{100, 100}}, {{254, 254}}, {{10, 10}}}));
}

TEST(Contexts, OfAnotherSourceDoNotTakeItsResolution) {
  EXPECT_EQ(onlyPlaces(ink("<definitions><context xml:id='c'><traceFormat><channel name='X' "
                           "type='integer' units='mm'/><channel name='Y' type='integer' "
                           "units='mm'/></traceFormat></context></definitions><context><inkSource>"
                           "<traceFormat><channel name='X' type='integer'/><channel name='Y' "
                           "type='integer'/></traceFormat><channelProperty channel='X' "
                           "name='resolution' value='9' units='1/mm'/></inkSource></context>"
                           "<trace contextRef='#c'>1 2</trace>")),
            (Places{{10, 20}}));
}

TEST(Contexts, ThatReferToThemselvesEnd) {
  const std::string text =
      ink("<definitions><context xml:id='a' contextRef='#b'/><context xml:id='b' contextRef='#a'>" +
          formatIn("cm") + "</context></definitions><trace contextRef='#a'>1 1</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{100, 100}}));
}

TEST(Contexts, ThatAreNotThereAreSaid) {
  const std::string text = ink(formatIn("cm") + "<trace contextRef='#gone'>1 1</trace>");
  EXPECT_EQ(onlyPlaces(text), (Places{{100, 100}}));
  EXPECT_EQ(remarked(text, RemarkKind::missingReference, "#gone"), 1U);
  EXPECT_EQ(remarked(ink("<trace contextRef='#DefaultContext'>1 1</trace>"),
                     RemarkKind::missingReference),
            0U);
}

TEST(Namespaces, MayHaveAnyPrefixOrNone) {
  const std::string inside =
      "traceFormat><i:channel name='X' units='mm'/><i:channel name='Y' "
      "units='mm'/></i:traceFormat><i:trace>1 2</i:trace></i:ink>";
  EXPECT_EQ(onlyPlaces("<i:ink xmlns:i='http://www.w3.org/2003/InkML'><i:" + inside),
            (Places{{10, 20}}));
  EXPECT_EQ(onlyPlaces("<i:ink><i:" + inside), (Places{{10, 20}}));
  EXPECT_EQ(onlyPlaces("<ink>" + std::string(kMillimetres) + "<trace>1 2</trace></ink>"),
            (Places{{10, 20}}));
}

TEST(Namespaces, OfOthersAreNotInkML) {
  const std::string text =
      ink("<traceFormat><channel name='X' units='mm'/><channel name='Y' units='mm'/></traceFormat>"
          "<traceGroup><e:trace xmlns:e='http://example.org/e'>9 9</e:trace><annotationXML><e:x "
          "xmlns:e='http://example.org/e'><context/><trace>8 8</trace></e:x></annotationXML>"
          "<trace>1 2</trace></traceGroup>");
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 20}}));
  EXPECT_EQ(remarked(text, RemarkKind::unknownElements, "e:trace"), 1U);
  EXPECT_EQ(remarked(text, RemarkKind::annotationsLeftOut), 1U);
}

TEST(Elements, InWrappersAreFound) {
  EXPECT_EQ(onlyPlaces(ink("<page><layer>" + std::string(kMillimetres) +
                           "<trace>1 2</trace></layer></page>")),
            (Places{{10, 20}}));
}

}  // namespace
