#include "inkml/xpath.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "tests/support/ink/xml_text.h"

namespace {

using inktest::XmlTree;
using Orvo::selectElements;
using Orvo::selectString;
using Orvo::selectTexts;
using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::string>;

Names idsOf(const std::vector<const TiXmlElement*>& elements) {
  Names ids;
  for (const TiXmlElement* element : elements)
    ids.emplace_back(element->Attribute("id"));
  return ids;
}

Names select(const TiXmlNode* source, const char* path) {
  return idsOf(selectElements(source, path));
}

TEST(RelativeName, SelectsTheDirectChildElementsInDocumentOrder) {
  const XmlTree tree(
      "<ink><trace id='a'/><tracegroup><trace id='b'/></tracegroup><trace id='c'/></ink>");
  EXPECT_THAT(select(tree.root(), "trace"), ElementsAre("a", "c"));
  EXPECT_THAT(select(tree.named("tracegroup"), "trace"), ElementsAre("b"));
  EXPECT_THAT(select(tree.withId("a"), "trace"), IsEmpty());
}

TEST(RelativeName, NeverSelectsTheSourceItself) {
  const XmlTree tree("<ink><trace id='o'><trace id='i'/></trace></ink>");
  EXPECT_THAT(select(tree.withId("o"), "trace"), ElementsAre("i"));
}

TEST(RelativeName, IsComparedByteByByteWithItsPrefix) {
  const XmlTree tree("<ink><i:trace id='p'/><Trace id='q'/><trace id='r'/></ink>");
  EXPECT_THAT(select(tree.root(), "trace"), ElementsAre("r"));
  EXPECT_THAT(select(tree.root(), "i:trace"), ElementsAre("p"));
}

TEST(RelativeName, SelectsElementsOnly) {
  const XmlTree tree("<ink>t<!--trace--><![CDATA[trace]]><?trace?><!trace><trace id='x'/></ink>");
  EXPECT_THAT(select(tree.root(), "trace"), ElementsAre("x"));
  const XmlTree attribute("<ink><x trace='1'/></ink>");
  EXPECT_THAT(select(attribute.named("x"), "trace"), IsEmpty());
}

TEST(RelativeName, SelectsNothingFromADocument) {
  XmlTree tree("<ink id='a'/>");
  EXPECT_THAT(select(&tree.document(), "ink"), IsEmpty());
}

TEST(RelativeName, SelectsNothingFromAnElementWithoutParent) {
  TiXmlElement alone("ink");
  alone.LinkEndChild(std::make_unique<TiXmlElement>("trace").release());
  EXPECT_THAT(select(&alone, "trace"), IsEmpty());
}

TEST(RelativeName, SelectsNothingFromATextOrComment) {
  const XmlTree tree("<ink>text<!--c--><trace id='a'/></ink>");
  EXPECT_THAT(select(tree.root()->FirstChild(), "trace"), IsEmpty());
  EXPECT_THAT(select(tree.root()->FirstChild()->NextSibling(), "trace"), IsEmpty());
  EXPECT_THAT(select(nullptr, "trace"), IsEmpty());
}

TEST(NameFromTheTop, SelectsTheSiblingsOfTheSource) {
  const XmlTree inside(
      "<definitions><traceFormat id='f'><channel id='c'/></traceFormat>"
      "</definitions>");
  EXPECT_THAT(select(inside.named("traceFormat"), "/channel"), IsEmpty());
  const XmlTree beside(
      "<definitions><channel id='d1'/><traceFormat><channel id='c'/></traceFormat>"
      "<channel id='d2'/></definitions>");
  EXPECT_THAT(select(beside.named("traceFormat"), "/channel"), ElementsAre("d1", "d2"));
}

TEST(NameFromTheTop, SelectsTheSourceToo) {
  const XmlTree tree("<a><b id='1'/><c/><b id='2'/></a>");
  EXPECT_THAT(select(tree.withId("1"), "/b"), ElementsAre("1", "2"));
}

TEST(NameFromTheTop, SelectsTheChildrenOfTheDocumentForARoot) {
  const XmlTree tree("<traceFormat><channel/></traceFormat>");
  EXPECT_THAT(select(tree.root(), "/channel"), IsEmpty());
  const XmlTree roots("<traceFormat/><channel id='c'/>");
  EXPECT_THAT(select(roots.root(), "/channel"), ElementsAre("c"));
}

TEST(NameFromTheTop, SelectsFromACommentToo) {
  const XmlTree tree("<a><!--x--><b id='1'/></a>");
  EXPECT_THAT(select(tree.root()->FirstChild(), "/b"), ElementsAre("1"));
}

// The texts and the string of "//color[1]/text()" from the element "annotationXML".
struct Colors {
  Names set;
  std::string text;
};

Colors colorsFrom(const TiXmlNode* source) {
  Colors colors;
  for (const TiXmlText* text : selectTexts(source, "//color[1]/text()"))
    colors.set.emplace_back(text->Value());
  colors.text = selectString(source, "//color[1]/text()");
  return colors;
}

Colors colorsInBrush(const std::string& brush) {
  const XmlTree tree("<ink><definitions><brush>" + brush + "</brush></definitions></ink>");
  return colorsFrom(tree.named("annotationXML"));
}

Colors colorsIn(const std::string& annotation) {
  return colorsInBrush("<annotationXML>" + annotation + "</annotationXML>");
}

void expectColors(const Colors& found, const Names& set, const std::string& text) {
  EXPECT_EQ(found.set, set);
  EXPECT_EQ(found.text, text);
}

TEST(FirstText, IsThatOfTheFirstElementOfTheName) {
  expectColors(colorsIn("<width>3</width><color>Red</color>"), {"Red"}, "Red");
  expectColors(colorsIn("<color>Red</color><color>Blue</color>"), {"Red"}, "Red");
}

TEST(FirstText, IsNotLookedForInLaterSiblingsOfAnEmptyOne) {
  expectColors(colorsIn("<color/><color>Blue</color>"), {}, "");
}

TEST(FirstText, IsFoundAtEveryDepthBelowTheSource) {
  expectColors(colorsIn("<x><color>Deep</color></x>"), {"Deep"}, "Deep");
}

TEST(FirstText, ComesFromTheSourceBeforeItComesFromBelow) {
  expectColors(colorsIn("<x><color>Deep</color></x><color>Direct</color>"), {"Direct", "Deep"},
               "Direct");
}

TEST(FirstText, IsTakenOnceForEachParentInDocumentOrder) {
  expectColors(colorsIn("<p><q><color>A</color></q></p><r><color>B</color></r>"), {"A", "B"}, "A");
  expectColors(colorsIn("<color/><p><color>N</color></p>"), {"N"}, "N");
  expectColors(colorsIn("<color>Out<color>In</color></color>"), {"Out", "In"}, "Out");
}

TEST(FirstText, ComesFromTheParentsOwnChildBeforeAllWhereverItStands) {
  expectColors(colorsInBrush("<annotationXML><color>In</color></annotationXML><color>Sib</color>"),
               {"Sib", "In"}, "Sib");
  expectColors(colorsInBrush("<color>Sib</color><annotationXML><color>In</color></annotationXML>"),
               {"Sib", "In"}, "Sib");
  expectColors(colorsInBrush("<annotationXML/><color/><color>S2</color>"), {}, "");
}

TEST(FirstText, IsNotLookedForBelowTheSiblingsOfTheSource) {
  expectColors(colorsInBrush("<annotationXML/><x><color>X</color></x>"), {}, "");
  expectColors(colorsInBrush("<annotationXML/><annotationXML><color>X</color></annotationXML>"), {},
               "");
}

TEST(FirstText, IsNotLookedForAboveTheParent) {
  const XmlTree tree(
      "<ink><color>I</color><definitions><color>D</color><brush><color>B1</color></brush>"
      "<brush><annotationXML/></brush><brush><color>B2</color></brush></definitions></ink>");
  expectColors(colorsFrom(tree.named("annotationXML")), {}, "");
}

TEST(FirstText, IsEmptyWithoutATextNodeOfThatName) {
  for (const char* content :
       {"", "<color></color>", "<color>   </color>", "<color>&#x20;</color>", "<Color>R</Color>",
        "<i:color>R</i:color>", "<x color='R'/>", "<color><b>x</b></color>"}) {
    SCOPED_TRACE(content);
    expectColors(colorsIn(content), {}, "");
  }
}

TEST(FirstText, IsNotDisturbedByCommentsAndElements) {
  expectColors(colorsIn("<color><!-- c -->Red</color>"), {"Red"}, "Red");
  expectColors(colorsIn("<color><b/>c</color>"), {"c"}, "c");
}

TEST(FirstText, IsOnlyTheFirstPieceOfASplitText) {
  expectColors(colorsIn("<color>Re<!-- c -->d</color>"), {"Re", "d"}, "Re");
  expectColors(colorsIn("<color>a<b/>c</color>"), {"a", "c"}, "a");
}

TEST(FirstText, KeepsCdataAsItStands) {
  expectColors(colorsIn("<color><![CDATA[Red & <b>  ]]></color>"), {"Red & <b>  "}, "Red & <b>  ");
}

TEST(FirstText, MayBeAnEmptyCdata) {
  expectColors(colorsIn("<color><![CDATA[]]>Red</color>"), {"", "Red"}, "");
}

TEST(FirstText, HasItsReferencesDecodedAndItsWhiteSpaceCondensed) {
  expectColors(colorsIn("<color>&amp;&#x41;&#65;&lt;&quot;&apos;</color>"), {"&AA<\"'"}, "&AA<\"'");
  expectColors(colorsIn("<color>  a\n\tb  </color>"), {"a b"}, "a b");
  expectColors(colorsIn("<color>&#x20;Red&#x20;</color>"), {" Red "}, " Red ");
}

TEST(FirstText, EndsAtANul) {
  EXPECT_EQ(colorsIn("<color>a&#0;b</color>").text, "a");
}

TEST(FirstText, IsEmptyForASourceWithoutParent) {
  TiXmlElement alone("annotationXML");
  alone.Parse("<annotationXML><color>R</color></annotationXML>", nullptr, TIXML_ENCODING_UTF8);
  ASSERT_NE(alone.FirstChildElement("color"), nullptr);
  expectColors(colorsFrom(&alone), {}, "");
  expectColors(colorsFrom(nullptr), {}, "");
}

TEST(FirstText, IsFoundInATreeWithoutDocument) {
  TiXmlElement brush("brush");
  brush.Parse("<brush><annotationXML><color>R</color></annotationXML></brush>", nullptr,
              TIXML_ENCODING_UTF8);
  expectColors(colorsFrom(brush.FirstChild()), {"R"}, "R");
}

TEST(FirstText, IsFoundBesideASourceThatIsNoElement) {
  const XmlTree tree("<brush><!--annotationXML--><color>R</color></brush>");
  expectColors(colorsFrom(tree.root()->FirstChild()), {"R"}, "R");
}

TEST(OtherPaths, SelectNothing) {
  const XmlTree tree("<a><b>text</b></a>");
  for (const char* path :
       {"", "//", "//b", "//b[2]/text()", "b[1]/text()", "//[1]/text()", "[1]/text()", "/"}) {
    EXPECT_THAT(selectTexts(tree.named("b"), path), IsEmpty()) << path;
    EXPECT_EQ(selectString(tree.named("b"), path), "") << path;
  }
  EXPECT_THAT(selectElements(tree.root(), ""), IsEmpty());
}

// Builds <root> with `count` children <wanted>, every second one with a text.
std::unique_ptr<TiXmlElement> wideTree(int count) {
  auto root = std::make_unique<TiXmlElement>("root");
  for (int i = 0; i < count; ++i) {
    auto child = std::make_unique<TiXmlElement>("wanted");
    if (i % 2 == 1) child->LinkEndChild(std::make_unique<TiXmlText>("t").release());
    root->LinkEndChild(child.release());
  }
  return root;
}

TEST(Evaluation, OfTwoHundredThousandMatchesIsAMatterOfMilliseconds) {
  TiXmlDocument xml;
  TiXmlNode* root = xml.LinkEndChild(wideTree(200'000).release());
  EXPECT_EQ(selectElements(root, "wanted").size(), 200'000U);
  EXPECT_EQ(selectElements(root->FirstChild(), "/wanted").size(), 200'000U);
}

TEST(Evaluation, OfADeepTreeNeedsNoStack) {
  // Built from the inside: linking a child looks at no more than the two nodes.
  auto inner = std::make_unique<TiXmlElement>("color");
  inner->LinkEndChild(std::make_unique<TiXmlText>("R").release());
  for (int i = 0; i < 20'000; ++i) {
    auto outer = std::make_unique<TiXmlElement>("x");
    outer->LinkEndChild(inner.release());
    inner = std::move(outer);
  }
  TiXmlElement brush("brush");
  const TiXmlNode* source = brush.LinkEndChild(inner.release());
  EXPECT_EQ(selectString(source, "//color[1]/text()"), "R");
}

}  // namespace
