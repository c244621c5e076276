// What the readers and writers of ink documents rely on in the XML library: the bytes that it
// writes and the tree that it builds.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include "tests/support/ink/xml_text.h"

namespace {

using inktest::load;
using inktest::printed;
using inktest::XmlTree;

std::string onlyText(const std::string& content) {
  const XmlTree tree("<a>" + content + "</a>");
  const TiXmlNode* child = tree.root()->FirstChild();
  return child == nullptr ? "(none)" : child->Value();
}

std::string writtenText(const std::string& text) {
  TiXmlElement element("a");
  element.LinkEndChild(std::make_unique<TiXmlText>(text).release());
  return printed(element);
}

TEST(WrittenText, HasItsSpecialCharactersAsReferences) {
  EXPECT_EQ(writtenText("&<>\"'"), "<a>&amp;&lt;&gt;&quot;&apos;</a>");
  EXPECT_EQ(writtenText("\t\n\r\x01\x1F"), "<a>&#x09;&#x0A;&#x0D;&#x01;&#x1F;</a>");
  EXPECT_EQ(writtenText("\x7F\xC3\xA9\xFF"), "<a>\x7F\xC3\xA9\xFF</a>");
  EXPECT_EQ(writtenText("&#x41;"), "<a>&amp;#x41;</a>");
}

TEST(WrittenAttribute, HasSingleQuotesWhenItContainsADoubleOne) {
  TiXmlElement element("a");
  element.SetAttribute("x", "1 & 2");
  element.SetAttribute("y", "\"");
  EXPECT_EQ(printed(element), "<a x=\"1 &amp; 2\" y='&quot;' />");
}

TEST(WrittenAttribute, KeepsItsPlaceWhenSetAgain) {
  TiXmlElement element("a");
  element.SetAttribute("id", "1");
  element.SetAttribute("b", "2");
  element.SetAttribute("id", "9");
  EXPECT_EQ(printed(element), "<a id=\"9\" b=\"2\" />");
}

TEST(LoadedText, HasItsWhiteSpaceCondensed) {
  EXPECT_EQ(onlyText("\n  10   20\t30\n40,\n\n 50 \n"), "10 20 30 40, 50");
  EXPECT_EQ(onlyText(" \t\n"), "(none)");
  EXPECT_EQ(onlyText("&#x20;&#x0A;"), "(none)");
  EXPECT_EQ(onlyText(""), "(none)");
}

TEST(LoadedText, KeepsWhiteSpaceFromReferencesAndCdata) {
  EXPECT_EQ(onlyText("&#x20;1&#x0A;2&#x09;"), " 1\n2\t");
  EXPECT_EQ(onlyText("<![CDATA[ 1\r\n2  ]]>"), " 1\n2  ");
  EXPECT_EQ(onlyText("<![CDATA[]]>"), "");
}

TEST(LoadedText, LosesTheAmpersandOfAnUnknownReference) {
  EXPECT_EQ(onlyText("&foo; & b"), "foo;  b");
}

TEST(LoadedTree, EndsSilentlyAtADocumentTypeWithDeclarations) {
  TiXmlDocument xml;
  EXPECT_TRUE(load("<!DOCTYPE ink [ <!ENTITY e \"v\"> ]><ink/>", xml));
  EXPECT_EQ(xml.RootElement(), nullptr);
}

TEST(LoadedTree, EndsSilentlyAtTextAfterTheRoot) {
  TiXmlDocument xml;
  EXPECT_TRUE(load("<ink/>junk<ink/>", xml));
  EXPECT_EQ(xml.RootElement()->NextSibling(), nullptr);
}

TEST(LoadedTree, FailsWithALineAndADescription) {
  TiXmlDocument xml;
  EXPECT_FALSE(load("<ink>\n  <a>\n</ink>", xml));
  EXPECT_GT(xml.ErrorRow(), 0);
  EXPECT_STRNE(xml.ErrorDesc(), "");
}

}  // namespace
