#include "inkml/xpath.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <tinyxml.h>
#include <vector>

#include "tests/support/ink/xml_text.h"

namespace {

using inktest::XmlTree;
using Orvo::childElements;
using Orvo::childText;
using Orvo::siblingElements;
using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::string>;

Names idsOf(const std::vector<const TiXmlElement*>& elements) {
  Names ids;
  for (const TiXmlElement* element : elements)
    ids.emplace_back(element->Attribute("id"));
  return ids;
}

Names children(const TiXmlNode* source, const char* name) {
  return idsOf(childElements(source, name));
}

Names siblings(const TiXmlNode* source, const char* name) {
  return idsOf(siblingElements(source, name));
}

TEST(ChildElements, AreTheDirectChildrenInDocumentOrder) {
  const XmlTree tree(
      "<ink><trace id='a'/><tracegroup><trace id='b'/></tracegroup><trace id='c'/></ink>");
  EXPECT_THAT(children(tree.root(), "trace"), ElementsAre("a", "c"));
  EXPECT_THAT(children(tree.named("tracegroup"), "trace"), ElementsAre("b"));
  EXPECT_THAT(children(tree.withId("a"), "trace"), IsEmpty());
}

TEST(ChildElements, DoNotIncludeTheSourceItself) {
  const XmlTree tree("<ink><trace id='o'><trace id='i'/></trace></ink>");
  EXPECT_THAT(children(tree.withId("o"), "trace"), ElementsAre("i"));
}

TEST(ChildElements, AreComparedByteByByteIncludingThePrefix) {
  const XmlTree tree("<ink><i:trace id='p'/><Trace id='q'/><trace id='r'/></ink>");
  EXPECT_THAT(children(tree.root(), "trace"), ElementsAre("r"));
  EXPECT_THAT(children(tree.root(), "i:trace"), ElementsAre("p"));
}

TEST(ChildElements, AreElementsOnly) {
  const XmlTree tree("<ink>t<!--trace--><![CDATA[trace]]><?trace?><!trace><trace id='x'/></ink>");
  EXPECT_THAT(children(tree.root(), "trace"), ElementsAre("x"));
  const XmlTree attribute("<ink><x trace='1'/></ink>");
  EXPECT_THAT(children(attribute.named("x"), "trace"), IsEmpty());
}

TEST(ChildElements, AreNoneForADocument) {
  XmlTree tree("<ink id='a'/>");
  EXPECT_THAT(children(&tree.document(), "ink"), IsEmpty());
}

TEST(ChildElements, AreNoneForAnElementWithoutParent) {
  TiXmlElement alone("ink");
  alone.LinkEndChild(std::make_unique<TiXmlElement>("trace").release());
  EXPECT_THAT(children(&alone, "trace"), IsEmpty());
}

TEST(ChildElements, AreNoneForATextOrAComment) {
  const XmlTree tree("<ink>text<!--c--><trace id='a'/></ink>");
  EXPECT_THAT(children(tree.root()->FirstChild(), "trace"), IsEmpty());
  EXPECT_THAT(children(tree.root()->FirstChild()->NextSibling(), "trace"), IsEmpty());
  EXPECT_THAT(children(nullptr, "trace"), IsEmpty());
}

TEST(SiblingElements, AreBesideTheSourceAndNotInIt) {
  const XmlTree inside(
      "<definitions><traceFormat id='f'><channel id='c'/></traceFormat>"
      "</definitions>");
  EXPECT_THAT(siblings(inside.named("traceFormat"), "channel"), IsEmpty());
  const XmlTree beside(
      "<definitions><channel id='d1'/><traceFormat><channel id='c'/></traceFormat>"
      "<channel id='d2'/></definitions>");
  EXPECT_THAT(siblings(beside.named("traceFormat"), "channel"), ElementsAre("d1", "d2"));
}

TEST(SiblingElements, IncludeTheSource) {
  const XmlTree tree("<a><b id='1'/><c/><b id='2'/></a>");
  EXPECT_THAT(siblings(tree.withId("1"), "b"), ElementsAre("1", "2"));
}

TEST(SiblingElements, OfARootAreTheOtherRoots) {
  const XmlTree tree("<traceFormat><channel/></traceFormat>");
  EXPECT_THAT(siblings(tree.root(), "channel"), IsEmpty());
  const XmlTree roots("<traceFormat/><channel id='c'/>");
  EXPECT_THAT(siblings(roots.root(), "channel"), ElementsAre("c"));
}

TEST(SiblingElements, AreFoundFromACommentToo) {
  const XmlTree tree("<a><!--x--><b id='1'/></a>");
  EXPECT_THAT(siblings(tree.root()->FirstChild(), "b"), ElementsAre("1"));
}

std::string colorFrom(const TiXmlNode* source) {
  return childText(source, "color");
}

// Found from the element "annotationXML" of a brush with this content.
std::string colorInBrush(const std::string& brush) {
  const XmlTree tree("<ink><definitions><brush>" + brush + "</brush></definitions></ink>");
  return colorFrom(tree.named("annotationXML"));
}

std::string colorIn(const std::string& annotation) {
  return colorInBrush("<annotationXML>" + annotation + "</annotationXML>");
}

TEST(ChildText, IsThatOfTheFirstElementOfTheName) {
  EXPECT_EQ(colorIn("<width>3</width><color>Red</color>"), "Red");
  EXPECT_EQ(colorIn("<color>Red</color><color>Blue</color>"), "Red");
}

TEST(ChildText, IsEmptyForAMissingElement) {
  EXPECT_EQ(colorIn("<width>3</width>"), "");
}

TEST(ChildText, IsNotTakenFromLaterSiblingsOfAnEmptyElement) {
  EXPECT_EQ(colorIn("<color/><color>Blue</color>"), "");
}

TEST(ChildText, IsFoundAtAnyDepthBelowTheSource) {
  EXPECT_EQ(colorIn("<x><color>Deep</color></x>"), "Deep");
}

TEST(ChildText, ComesFromTheSourceBeforeItsDescendants) {
  EXPECT_EQ(colorIn("<x><color>Deep</color></x><color>Direct</color>"), "Direct");
}

TEST(ChildText, ComesFromTheFirstParentInDocumentOrderThatHasOne) {
  EXPECT_EQ(colorIn("<p><q><color>A</color></q></p><r><color>B</color></r>"), "A");
  EXPECT_EQ(colorIn("<color/><p><color>N</color></p>"), "N");
  EXPECT_EQ(colorIn("<color>Out<color>In</color></color>"), "Out");
}

TEST(ChildText, ComesFromTheChildOfTheSourcesParentFirstWhereverItStands) {
  EXPECT_EQ(colorInBrush("<annotationXML><color>In</color></annotationXML><color>Sib</color>"),
            "Sib");
  EXPECT_EQ(colorInBrush("<color>Sib</color><annotationXML><color>In</color></annotationXML>"),
            "Sib");
  EXPECT_EQ(colorInBrush("<annotationXML/><color/><color>S2</color>"), "");
}

TEST(ChildText, IsNotLookedForBelowTheSiblingsOfTheSource) {
  EXPECT_EQ(colorInBrush("<annotationXML/><x><color>X</color></x>"), "");
  EXPECT_EQ(colorInBrush("<annotationXML/><annotationXML><color>X</color></annotationXML>"), "");
}

TEST(ChildText, IsNotLookedForAboveTheParent) {
  const XmlTree tree(
      "<ink><color>I</color><definitions><color>D</color><brush><color>B1</color></brush>"
      "<brush><annotationXML/></brush><brush><color>B2</color></brush></definitions></ink>");
  EXPECT_EQ(colorFrom(tree.named("annotationXML")), "");
}

TEST(ChildText, IsEmptyWithoutATextNodeInAnElementOfThatName) {
  for (const char* content :
       {"", "<color></color>", "<color>   </color>", "<color>&#x20;</color>", "<Color>R</Color>",
        "<i:color>R</i:color>", "<x color='R'/>", "<color><b>x</b></color>"}) {
    SCOPED_TRACE(content);
    EXPECT_EQ(colorIn(content), "");
  }
}

TEST(ChildText, SkipsCommentsAndElementsBeforeIt) {
  EXPECT_EQ(colorIn("<color><!-- c -->Red</color>"), "Red");
  EXPECT_EQ(colorIn("<color><b/>c</color>"), "c");
}

TEST(ChildText, IsOnlyTheFirstPieceOfASplitText) {
  EXPECT_EQ(colorIn("<color>Re<!-- c -->d</color>"), "Re");
  EXPECT_EQ(colorIn("<color>a<b/>c</color>"), "a");
}

TEST(ChildText, KeepsCdataUnchanged) {
  EXPECT_EQ(colorIn("<color><![CDATA[Red & <b>  ]]></color>"), "Red & <b>  ");
}

TEST(ChildText, IsEmptyForAnEmptyCdataBeforeOtherText) {
  EXPECT_EQ(colorIn("<color><![CDATA[]]>Red</color>"), "");
}

TEST(ChildText, HasReferencesDecodedAndWhiteSpaceCondensed) {
  EXPECT_EQ(colorIn("<color>&amp;&#x41;&#65;&lt;&quot;&apos;</color>"), "&AA<\"'");
  EXPECT_EQ(colorIn("<color>  a\n\tb  </color>"), "a b");
  EXPECT_EQ(colorIn("<color>&#x20;Red&#x20;</color>"), " Red ");
}

TEST(ChildText, EndsAtANul) {
  EXPECT_EQ(colorIn("<color>a&#0;b</color>"), "a");
}

TEST(ChildText, IsEmptyForASourceWithoutParent) {
  TiXmlElement alone("annotationXML");
  alone.Parse("<annotationXML><color>R</color></annotationXML>", nullptr, TIXML_ENCODING_UTF8);
  ASSERT_NE(alone.FirstChildElement("color"), nullptr);
  EXPECT_EQ(colorFrom(&alone), "");
  EXPECT_EQ(colorFrom(nullptr), "");
}

TEST(ChildText, IsFoundInATreeWithoutDocument) {
  TiXmlElement brush("brush");
  brush.Parse("<brush><annotationXML><color>R</color></annotationXML></brush>", nullptr,
              TIXML_ENCODING_UTF8);
  EXPECT_EQ(colorFrom(brush.FirstChild()), "R");
}

TEST(ChildText, IsFoundBesideASourceThatIsNoElement) {
  const XmlTree tree("<brush><!--annotationXML--><color>R</color></brush>");
  EXPECT_EQ(colorFrom(tree.root()->FirstChild()), "R");
}

// An element <root> with `count` children <wanted>, every second one with a text.
std::unique_ptr<TiXmlElement> wideTree(int count) {
  auto root = std::make_unique<TiXmlElement>("root");
  for (int i = 0; i < count; ++i) {
    auto child = std::make_unique<TiXmlElement>("wanted");
    if (i % 2 == 1) child->LinkEndChild(std::make_unique<TiXmlText>("t").release());
    root->LinkEndChild(child.release());
  }
  return root;
}

TEST(Elements, AreFoundByTheHundredThousand) {
  TiXmlDocument xml;
  TiXmlNode* root = xml.LinkEndChild(wideTree(200'000).release());
  EXPECT_EQ(childElements(root, "wanted").size(), 200'000U);
  EXPECT_EQ(siblingElements(root->FirstChild(), "wanted").size(), 200'000U);
}

TEST(ChildText, IsFoundInADeepTreeWithoutUsingUpTheStack) {
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
  EXPECT_EQ(colorFrom(source), "R");
}

}  // namespace
