#include "inkml/xml_helpers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <tinyxml.h>
#include <vector>

#include "inkml/channel.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/ink/xml_text.h"

namespace {

using inktest::printed;
using inktest::XmlTree;
using Orvo::splitString;
using Orvo::toDecimalString;
using Orvo::toInteger;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> split(const std::string& text, const std::string& separators) {
  std::vector<std::string> out;
  splitString(text, separators, out);
  return out;
}

TEST(SplitString, GivesTheRunsBetweenSeparators) {
  EXPECT_THAT(split("a,,b,", ","), ElementsAre("a", "b"));
  EXPECT_THAT(split(",,a", ","), ElementsAre("a"));
  EXPECT_THAT(split("abc", ","), ElementsAre("abc"));
  EXPECT_THAT(split("a b,c", ", "), ElementsAre("a", "b", "c"));
  EXPECT_THAT(split("a\tb\nc d", " "), ElementsAre("a\tb\nc", "d"));
}

TEST(SplitString, GivesNothingForNoTextOrSeparatorsAlone) {
  EXPECT_THAT(split("", ","), IsEmpty());
  EXPECT_THAT(split(",,,", ","), IsEmpty());
}

TEST(SplitString, GivesTheWholeTextWhenThereAreNoSeparators) {
  EXPECT_THAT(split("a,b", ""), ElementsAre("a,b"));
  EXPECT_THAT(split("", ""), IsEmpty());
}

TEST(SplitString, AppendsToTheGivenList) {
  std::list<std::string> list = {"first"};
  splitString("second,third", ",", list);
  EXPECT_THAT(list, ElementsAre("first", "second", "third"));
}

TEST(SplitString, AgreesWithSplittingCharacterByCharacter) {
  for (unsigned seed = 0; seed < 1000; ++seed) {
    inktest::InkDice dice(seed);
    const std::string text = dice.text() + dice.text() + dice.text();
    std::vector<std::string> expected;
    bool inRun = false;
    for (const char c : text) {
      const bool separates = c == ' ' || c == ',' || c == '7';
      if (!separates && !inRun) expected.emplace_back();
      if (!separates) expected.back() += c;
      inRun = !separates;
    }
    ASSERT_EQ(split(text, " ,7"), expected) << text;
  }
}

TEST(DecimalString, IsThatOfASignedNumber) {
  EXPECT_EQ(toDecimalString(100), "100");
  EXPECT_EQ(toDecimalString(0), "0");
  EXPECT_EQ(toDecimalString(2147483647U), "2147483647");
  EXPECT_EQ(toDecimalString(2147483648U), "-2147483648");
  EXPECT_EQ(toDecimalString(4294967295U), "-1");
}

TEST(Integer, IsTheWholeNumberAtTheStart) {
  EXPECT_EQ(toInteger("12"), 12);
  EXPECT_EQ(toInteger("-20"), -20);
  EXPECT_EQ(toInteger("+7"), 7);
  EXPECT_EQ(toInteger("12.9"), 12);
  EXPECT_EQ(toInteger("-3.9"), -3);
  EXPECT_EQ(toInteger("1e+06"), 1);
  EXPECT_EQ(toInteger("007x"), 7);
}

TEST(Integer, MayFollowWhiteSpaceOfAnyKind) {
  EXPECT_EQ(toInteger(" \t\n\v\f\r5"), 5);
}

TEST(Integer, IsZeroWithoutDigits) {
  for (const char* text : {"", " ", "abc", "-", "+", "+-5", "-+5", "- 5", ".5", "nan", "inf"}) {
    EXPECT_EQ(toInteger(text), 0) << text;
  }
}

TEST(Integer, BeyondThirtyTwoBitsKeepsItsLowThirtyTwoBits) {
  EXPECT_EQ(toInteger("2147483647"), 2147483647);
  EXPECT_EQ(toInteger("-2147483648"), INT32_MIN);
  EXPECT_EQ(toInteger("2147483648"), INT32_MIN);
  EXPECT_EQ(toInteger("4294967295"), -1);
  EXPECT_EQ(toInteger("4294967296"), 0);
  EXPECT_EQ(toInteger("-4294967297"), -1);
  EXPECT_EQ(toInteger("9223372036854775807"), -1);
  EXPECT_EQ(toInteger("-9223372036854775808"), 0);
}

TEST(Integer, BeyondSixtyFourBitsCountsAsTheNearestOfSixtyFour) {
  EXPECT_EQ(toInteger("9223372036854775808"), -1);
  EXPECT_EQ(toInteger("+99999999999999999999999"), -1);
  EXPECT_EQ(toInteger("-99999999999999999999999"), 0);
}

TEST(OwnElement, IsTheLastChildAndNamedAfterTheObject) {
  TiXmlElement parent("parent");
  Orvo::appendTextElement(parent, "before", "x");
  const TiXmlElement& element = Orvo::appendOwnElement(Orvo::Channel(), parent);
  EXPECT_STREQ(element.Value(), "channel");
  EXPECT_EQ(parent.LastChild(), &element);
  EXPECT_EQ(element.Parent(), &parent);
  EXPECT_EQ(element.FirstChild(), nullptr);
}

TEST(TextElement, HoldsItsTextAsItsOnlyChild) {
  TiXmlElement parent("parent");
  const TiXmlElement& element = Orvo::appendTextElement(parent, "color", "Black & White");
  ASSERT_NE(element.FirstChild(), nullptr);
  EXPECT_STREQ(element.FirstChild()->ToText()->Value(), "Black & White");
  EXPECT_EQ(element.FirstChild(), element.LastChild());
  EXPECT_EQ(printed(element), "<color>Black &amp; White</color>");
}

TEST(TextElement, HasATextNodeEvenForAnEmptyText) {
  TiXmlElement parent("parent");
  const TiXmlElement& element = Orvo::appendTextElement(parent, "color", "");
  ASSERT_NE(element.FirstChild(), nullptr);
  EXPECT_EQ(printed(element), "<color></color>");
}

TEST(Attribute, IsFoundByItsExactName) {
  const XmlTree tree("<a Id='1' id='2' idx='3' empty=''><!-- id --></a>");
  EXPECT_STREQ(Orvo::findAttribute(tree.root(), "id"), "2");
  EXPECT_STREQ(Orvo::findAttribute(tree.root(), "empty"), "");
  EXPECT_EQ(Orvo::findAttribute(tree.root(), "ID"), nullptr);
  EXPECT_EQ(Orvo::findAttribute(tree.root()->FirstChild(), "id"), nullptr);
  EXPECT_EQ(Orvo::findAttribute(nullptr, "id"), nullptr);
}

TEST(Child, IsFoundByItsValueWhateverItsKind) {
  const XmlTree tree("<a>text<!--b--><b id='1'/><c/><c id='2'/></a>");
  EXPECT_STREQ(Orvo::findChild(*tree.root(), "text")->ToText()->Value(), "text");
  EXPECT_NE(Orvo::findChild(*tree.root(), "b")->ToComment(), nullptr);
  EXPECT_EQ(Orvo::findChild(*tree.root(), "c")->ToElement()->Attribute("id"), nullptr);
  EXPECT_EQ(Orvo::findChild(*tree.root(), "d"), nullptr);
}

}  // namespace
