#include "inkml/ink_elements.h"

#include <gtest/gtest.h>

#include "inkml/document_serializer.h"
#include "tests/support/ink/xml_text.h"

namespace {

using Orvo::InkElement;
using Kind = Orvo::InkProblemKind;

std::vector<InkElement> elementsOf(const std::string& text) {
  inktest::XmlTree tree(text);
  Orvo::Document document;
  Orvo::InkMLDefinitions definitions;
  Orvo::DocumentSerializer(&document).read(tree.document(), definitions);
  std::vector<InkElement> elements;
  Orvo::visitElements(tree.document(), definitions,
                      [&](const InkElement& element) { elements.push_back(element); });
  return elements;
}

// Each element with its depth, and with "+" where it is read.
std::string outlineOf(const std::string& text) {
  std::string outline;
  for (const InkElement& element : elementsOf(text)) {
    outline += std::to_string(element.depth) + element.name + (element.isRead ? "+ " : " ");
  }
  return outline;
}

// The problem of the last element.
std::optional<Kind> lastProblem(const std::string& text) {
  return elementsOf(text).back().problem;
}

TEST(InkElements, AreGivenInOrderWithWhatIsRead) {
  EXPECT_EQ(
      outlineOf("<ink><definitions><traceFormat id='f'><channel/></traceFormat>"
                "<brush id='b'><annotationXML><color>Red</color><odd/></annotationXML></brush>"
                "<context id='c' brushRef='#b' traceFormatRef='#f'/></definitions>"
                "<annotation type='t'>x</annotation>"
                "<tracegroup id='layer0'><trace contextRef='#c'>1 2</trace></tracegroup></ink>"),
      "0ink+ 1definitions+ 2traceFormat+ 3channel 2brush+ 3annotationXML+ 4color+ 4odd "
      "2context+ 1annotation+ 1tracegroup+ 2trace+ ");
}

TEST(InkElements, HaveLinesAttributesAndPoints) {
  const std::vector<InkElement> elements = elementsOf(
      "<ink>\n<tracegroup id='layer0'>\n<trace contextRef='#c' type='penDown'>"
      "1 2,3 4,,5 6</trace></tracegroup></ink>");
  ASSERT_EQ(elements.size(), 3U);
  EXPECT_EQ(elements[1].line, 2);
  EXPECT_EQ(elements[1].id, "layer0");
  EXPECT_FALSE(elements[1].points);
  EXPECT_EQ(elements[2].line, 3);
  EXPECT_EQ(elements[2].type, "penDown");
  EXPECT_EQ(elements[2].points, 3U);
}

TEST(InkElements, SayWhyTheyAreNotRead) {
  EXPECT_EQ(lastProblem("<ink/><more/>"), Kind::furtherRoots);
  EXPECT_EQ(lastProblem("<ink><definitions/><definitions/></ink>"), Kind::furtherDefinitions);
  EXPECT_EQ(lastProblem("<ink><definitions><traceFormat/></definitions></ink>"),
            Kind::skippedFormats);
  EXPECT_EQ(lastProblem("<ink><definitions><brush id='b'/></definitions></ink>"),
            Kind::skippedBrushes);
  EXPECT_EQ(lastProblem("<ink><definitions><context/></definitions></ink>"),
            Kind::contextWithoutId);
  EXPECT_EQ(lastProblem("<ink><definitions><context id='c' brushRef='#b'/></definitions></ink>"),
            Kind::contextBrushMissing);
  EXPECT_EQ(lastProblem("<ink><annotation>x</annotation></ink>"), Kind::skippedAnnotations);
  EXPECT_EQ(lastProblem("<ink><traceGroup/></ink>"), Kind::otherGroups);
  EXPECT_EQ(lastProblem("<ink><trace/></ink>"), Kind::looseTraces);
  const auto inLayer = [](const std::string& inside) {
    return lastProblem("<ink><tracegroup id='layer0'>" + inside + "</tracegroup></ink>");
  };
  EXPECT_EQ(inLayer("<tracegroup/>"), Kind::nestedGroups);
  EXPECT_EQ(inLayer("<Trace/>"), Kind::otherTraces);
  EXPECT_EQ(inLayer("<trace contextRef='#c'/>"), Kind::tracesWithoutText);
  EXPECT_EQ(inLayer("<trace>1 2</trace>"), Kind::tracesWithoutContext);
  EXPECT_EQ(inLayer("<trace contextRef='#c'>1 2<trace/></trace>"), Kind::tracesInTraces);
}

TEST(InkElements, InAGroupWithoutALayerIdAreNotReadButTheGroupIs) {
  const std::string text = "<ink><tracegroup><trace contextRef='#c'>1 2</trace></tracegroup></ink>";
  EXPECT_EQ(outlineOf(text), "0ink+ 1tracegroup+ 2trace ");
  EXPECT_EQ(elementsOf(text)[1].problem, Kind::groupsWithoutLayerId);
}

TEST(InkElements, OfAnotherRootAreNotRead) {
  EXPECT_EQ(outlineOf("<html><ink/></html>"), "0html 1ink ");
}

TEST(InkElements, WithoutAMeaningAreNotReadAndHaveNoProblem) {
  EXPECT_EQ(outlineOf("<odd/><ink><odd><in/></odd><tracegroup id='layer0'><odd/>"
                      "<annotation type='t'>x<in/></annotation><annotation type='t'/>"
                      "</tracegroup></ink>"),
            "0odd 0ink+ 1odd 2in 1tracegroup+ 2odd 2annotation+ 3in 2annotation ");
  EXPECT_EQ(outlineOf("<ink><definitions><odd/><brush id='b'><odd/><annotationXML>"
                      "<color>Red</color><color>Blue</color></annotationXML></brush>"
                      "<brush><annotationXML/></brush></definitions></ink>"),
            "0ink+ 1definitions+ 2odd 2brush+ 3odd 3annotationXML+ 4color+ 4color "
            "2brush 3annotationXML ");
  for (const char* text :
       {"<odd/>", "<ink><odd/></ink>", "<ink><definitions><odd/></definitions></ink>",
        "<ink><tracegroup id='layer0'><odd/></tracegroup></ink>",
        "<ink><tracegroup id='layer0'><trace>1 2<odd/></trace></tracegroup></ink>"}) {
    EXPECT_EQ(lastProblem(text), std::nullopt) << text;
  }
}

}  // namespace
