#include "inkml/stroke_serializer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <tinyxml.h>

#include "tests/support/ink/ink_builder.h"
#include "tests/support/ink/xml_text.h"

namespace {

using inktest::makeStroke;
using inktest::pointsOf;
using inktest::printed;
using inktest::Seven;
using inktest::XmlTree;
using Orvo::Stroke;
using Orvo::StrokeSerializer;
using testing::ElementsAre;
using testing::IsEmpty;

std::string written(Stroke stroke, const std::string& reference = "#default-context") {
  TiXmlElement parent("parent");
  EXPECT_TRUE(StrokeSerializer("trace", &stroke, reference).write(parent));
  return printed(*parent.FirstChild());
}

// The text of a stroke of one point with this x.
std::string writtenX(double x) {
  const std::string text = written(makeStroke({{x, 0, 0, 0, 0, 0, 0}}));
  const std::string start = "<trace contextRef=\"#default-context\">";
  const std::string end = " 0 0 0 0 0 0</trace>";
  EXPECT_EQ(text.substr(0, start.size()), start);
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
  return text.substr(start.size(), text.size() - start.size() - end.size());
}

TEST(WrittenTrace, ListsSevenNumbersForEachPoint) {
  EXPECT_EQ(written(makeStroke(
                {{1520, 3310, 0.5, 812, -20, 15, 40000}, {1524, 3318, 0.5, 830, -19, 15, 40008}})),
            "<trace contextRef=\"#default-context\">"
            "1520 3310 0.5 812 -20 15 40000,1524 3318 0.5 830 -19 15 40008</trace>");
}

TEST(WrittenTrace, HasTheNameOfItsSerializer) {
  TiXmlElement parent("parent");
  Stroke stroke = makeStroke({{1, 2}});
  const StrokeSerializer serializer("line", &stroke, "#c");
  EXPECT_EQ(serializer.getName(), "line");
  EXPECT_TRUE(serializer.write(parent));
  EXPECT_EQ(printed(*parent.FirstChild()), "<line contextRef=\"#c\">1 2 0 0 0 0 0</line>");
}

TEST(WrittenTrace, HasAnEmptyTextForAnEmptyStroke) {
  TiXmlElement parent("parent");
  Stroke stroke;
  EXPECT_TRUE(StrokeSerializer("trace", &stroke, "#c").write(parent));
  ASSERT_NE(parent.FirstChild()->FirstChild(), nullptr);
  EXPECT_EQ(printed(*parent.FirstChild()), "<trace contextRef=\"#c\"></trace>");
}

TEST(WrittenTrace, KeepsTheSignsOfItsIntegers) {
  EXPECT_EQ(written(makeStroke({{0, 0, 0, 4294967295U, INT32_MIN, INT32_MAX, 4294967295U}}), "#c"),
            "<trace contextRef=\"#c\">0 0 0 4294967295 -2147483648 2147483647 4294967295</trace>");
}

TEST(WrittenTrace, HasSixSignificantDigits) {
  EXPECT_EQ(writtenX(1520), "1520");
  EXPECT_EQ(writtenX(0.125), "0.125");
  EXPECT_EQ(writtenX(1520.25), "1520.25");
  EXPECT_EQ(writtenX(-3.9), "-3.9");
  EXPECT_EQ(writtenX(123456.7), "123457");
  EXPECT_EQ(writtenX(999999), "999999");
  EXPECT_EQ(writtenX(999999.5), "1e+06");
  EXPECT_EQ(writtenX(1000000), "1e+06");
  EXPECT_EQ(writtenX(1234567), "1.23457e+06");
  EXPECT_EQ(writtenX(0.0001), "0.0001");
  EXPECT_EQ(writtenX(0.00001), "1e-05");
  EXPECT_EQ(writtenX(0.1 + 0.2), "0.3");
  EXPECT_EQ(writtenX(-0.0), "-0");
  EXPECT_EQ(writtenX(1e300), "1e+300");
}

TEST(WrittenTrace, SpellsInfinitiesAndNan) {
  EXPECT_EQ(writtenX(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(writtenX(-std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_EQ(writtenX(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(WrittenTrace, IsWholeForTheLongestNumbers) {
  const double longest = -2.22507e-308;
  EXPECT_EQ(
      written(
          makeStroke({{longest, longest, longest, 4294967295U, INT32_MIN, INT32_MIN, 4294967295U}}),
          "#c"),
      "<trace contextRef=\"#c\">-2.22507e-308 -2.22507e-308 -2.22507e-308 4294967295 "
      "-2147483648 -2147483648 4294967295</trace>");
}

struct Commas : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(WrittenTrace, IsTheSameInEveryLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new Commas));
  const std::string text =
      written(makeStroke({{1520.25, 123456, 0.5, 100000, -20000, 0, 4000000}}), "#c");
  std::locale::global(before);
  EXPECT_EQ(text, "<trace contextRef=\"#c\">1520.25 123456 0.5 100000 -20000 0 4000000</trace>");
}

// Reads traces into a stroke, which may already have points.
class ReadTrace : public testing::Test {
 protected:
  bool read(const std::string& content, const std::string& attributes = "contextRef='#c'") {
    const XmlTree tree("<trace " + attributes + ">" + content + "</trace>");
    return serializer_.read(tree.root());
  }

  std::vector<Seven> pointsIn(const std::string& content) {
    stroke_ = Stroke();
    EXPECT_TRUE(read(content)) << content;
    return pointsOf(stroke_);
  }

  Stroke stroke_;
  StrokeSerializer serializer_{"trace", &stroke_, "none"};
};

TEST_F(ReadTrace, GivesTheSevenValuesOfEachPoint) {
  EXPECT_THAT(pointsIn("1520 3310 7 812 -20 15 40000,1524 3318 8 830 -19 15 40008"),
              ElementsAre(Seven{1520, 3310, 7, 812, -20, 15, 40000},
                          Seven{1524, 3318, 8, 830, -19, 15, 40008}));
}

TEST_F(ReadTrace, CutsOffFractionsAndExponents) {
  EXPECT_THAT(pointsIn("12.75 -3.9 0.5 1e+06 2.9 -2.9 1.5e3"),
              ElementsAre(Seven{12, -3, 0, 1, 2, -2, 1}));
}

TEST_F(ReadTrace, HasZerosForMissingNumbers) {
  EXPECT_THAT(pointsIn("10 20"), ElementsAre(Seven{10, 20, 0, 0, 0, 0, 0}));
  EXPECT_THAT(pointsIn("10,20"), ElementsAre(Seven{10}, Seven{20}));
}

TEST_F(ReadTrace, IgnoresNumbersAfterTheSeventh) {
  EXPECT_THAT(pointsIn("1 2 3 4 5 6 7 8"), ElementsAre(Seven{1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(ReadTrace, SkipsEmptyTokens) {
  EXPECT_THAT(pointsIn(",1,,2,"), ElementsAre(Seven{1}, Seven{2}));
}

TEST_F(ReadTrace, TakesBlankTokensAsPointsOfZeros) {
  EXPECT_THAT(pointsIn("<![CDATA[ , ,]]>"), ElementsAre(Seven{}, Seven{}));
  EXPECT_THAT(pointsIn("&#x20;,&#x20;,"), ElementsAre(Seven{}, Seven{}));
}

TEST_F(ReadTrace, HasNoPointsInCommasAlone) {
  EXPECT_THAT(pointsIn(","), IsEmpty());
  EXPECT_THAT(pointsIn("<![CDATA[]]>"), IsEmpty());
}

TEST_F(ReadTrace, TakesWordsAsZero) {
  EXPECT_THAT(pointsIn("abc 5 -,x"), ElementsAre(Seven{0, 5, 0}, Seven{}));
}

TEST_F(ReadTrace, TakesLineBreaksAndTabsOfTheFileAsBlanks) {
  EXPECT_THAT(pointsIn("\n 1 2,\n\t3\n4 ,\r\n5"), ElementsAre(Seven{1, 2}, Seven{3, 4}, Seven{5}));
}

TEST_F(ReadTrace, SplitsNumbersAtBlanksOnly) {
  EXPECT_THAT(pointsIn("<![CDATA[1\n2 3\t4,\n5 6]]>"), ElementsAre(Seven{1, 3}, Seven{5, 6}));
}

TEST_F(ReadTrace, TakesUnsignedNumbersOfThirtyTwoBits) {
  EXPECT_THAT(pointsIn("0 0 0 4294967295 0 0 4000000000"),
              ElementsAre(Seven{0, 0, 0, 4294967295U, 0, 0, 4000000000U}));
  EXPECT_THAT(pointsIn("0 0 0 -1 0 0 -1"),
              ElementsAre(Seven{0, 0, 0, 4294967295U, 0, 0, 4294967295U}));
}

TEST_F(ReadTrace, KeepsTheLowBitsOfACoordinateThatIsTooLarge) {
  // 2^31, 2^32 + 7, -2^32 - 7, and beyond 64 bits the nearest number of 64 bits.
  EXPECT_THAT(pointsIn("0 0 2147483648,0 0 4294967303,0 0 -4294967303,0 0 99999999999999999999,"
                       "0 0 -99999999999999999999"),
              ElementsAre(Seven{0, 0, -2147483648.0}, Seven{0, 0, 7}, Seven{0, 0, -7},
                          Seven{0, 0, -1}, Seven{0, 0, 0}));
  EXPECT_THAT(pointsIn("2147483648 4294967303"), ElementsAre(Seven{-2147483648.0, 7}));
}

TEST_F(ReadTrace, TakesACommentAsItsText) {
  EXPECT_THAT(pointsIn("<!--1 2,3 4-->5 6"), ElementsAre(Seven{1, 2}, Seven{3, 4}));
}

TEST_F(ReadTrace, TakesTheNameOfAnElementAsItsText) {
  EXPECT_THAT(pointsIn("<b/>5 6"), ElementsAre(Seven{}));
}

TEST_F(ReadTrace, EndsAtANul) {
  EXPECT_THAT(pointsIn("1 2,3&#0; 4,5"), ElementsAre(Seven{1, 2}, Seven{3}));
}

TEST_F(ReadTrace, FailsWithoutAChildAndLeavesTheStrokeUnchanged) {
  EXPECT_FALSE(read(""));
  EXPECT_FALSE(read("  \n "));
  EXPECT_FALSE(serializer_.read(nullptr));
  EXPECT_EQ(stroke_.size(), 0U);
  EXPECT_EQ(serializer_.contextRef, "none");
}

TEST_F(ReadTrace, FailsWithoutContextAfterThePointsAreAppended) {
  EXPECT_FALSE(read("1 2,3 4", ""));
  EXPECT_EQ(stroke_.size(), 2U);
  EXPECT_FALSE(read("5 6", "contextref='#c' brushRef='#b'"));
  EXPECT_EQ(serializer_.contextRef, "none");
}

TEST_F(ReadTrace, TakesAnyContextReference) {
  EXPECT_TRUE(read("1 2", "contextRef='anything'"));
  EXPECT_EQ(serializer_.contextRef, "anything");
  EXPECT_TRUE(read("1 2", "contextRef=''"));
  EXPECT_EQ(serializer_.contextRef, "");
}

TEST_F(ReadTrace, AppendsToThePointsOfTheStroke) {
  stroke_.append(inktest::makePoint({9}));
  EXPECT_TRUE(read("1 2"));
  EXPECT_THAT(pointsOf(stroke_), ElementsAre(Seven{9}, Seven{1, 2}));
}

TEST_F(ReadTrace, WidensTheBoxOfTheStroke) {
  EXPECT_TRUE(read("5 6,1 9,3 2"));
  EXPECT_EQ(stroke_.bounds().minCorner.value.x.value, 1);
  EXPECT_EQ(stroke_.bounds().minCorner.value.y.value, 2);
  EXPECT_EQ(stroke_.bounds().maxCorner.value.x.value, 5);
  EXPECT_EQ(stroke_.bounds().maxCorner.value.y.value, 9);
}

}  // namespace
