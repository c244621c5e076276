// Ink documents in a locale where the C library writes numbers with a comma.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tinyxml.h>

#include "inkml/definitions.h"
#include "inkml/document_serializer.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/ink/xml_text.h"
#include "tests/support/locale/decimal_comma.h"

namespace {

using inktest::makeLayer;
using inktest::makeStroke;
using inktest::pointsOf;
using inktest::printed;
using inktest::Seven;
using Orvo::Document;
using Orvo::DocumentSerializer;
using Orvo::InkMLDefinitions;

class InALocaleWithADecimalComma : public testing::Test {
 protected:
  void SetUp() override { localetest::useDecimalComma(); }

  std::string written() {
    TiXmlDocument xml;
    EXPECT_TRUE(DocumentSerializer(&document_).buildTree(xml, definitions_));
    return printed(*xml.RootElement());
  }

  Document document_;
  InkMLDefinitions definitions_;
};

TEST_F(InALocaleWithADecimalComma, TracesAreWrittenWithDecimalPoints) {
  document_.append(makeLayer({makeStroke(
      {{1520.25, -0.5, 1e-5, 100000, -20000, 30000, 4000000}, {123456, 1234567, 0.125}})}));
  EXPECT_EQ(written(),
            "<ink>\n"
            "    <definitions />\n"
            "    <tracegroup id=\"layer0\">\n"
            "        <trace contextRef=\"#default-context\">"
            "1520.25 -0.5 1e-05 100000 -20000 30000 4000000,123456 1.23457e+06 0.125 0 0 0 0"
            "</trace>\n"
            "    </tracegroup>\n"
            "</ink>");
}

TEST_F(InALocaleWithADecimalComma, DefinitionsAreWrittenWithPlainDigits) {
  Orvo::TraceFormat& format = definitions_.traceFormats.emplace_back();
  format.emplace_back().min.value = -1234567;
  format.back().max.value = 2147483647;
  definitions_.brushes.emplace_back().width.value = 1234567;
  const std::string text = written();
  EXPECT_NE(text.find(" min=\"-1234567\" max=\"2147483647\" "), std::string::npos) << text;
  EXPECT_NE(text.find("<width>1234567</width>"), std::string::npos) << text;
}

TEST_F(InALocaleWithADecimalComma, TracesAndDefinitionsAreReadAsInAnyOtherLocale) {
  inktest::XmlTree tree(
      "<ink><definitions><brush id='b'><annotationXML><width>7.9</width><height>1234567</height>"
      "</annotationXML></brush></definitions>"
      "<tracegroup id='layer0'><trace contextRef='#c'>12.75 -3.9 0.5 1234567,1,5</trace>"
      "</tracegroup></ink>");
  ASSERT_TRUE(DocumentSerializer(&document_).read(tree.document(), definitions_));
  EXPECT_EQ(definitions_.brushes.front().width.value, 7U);
  EXPECT_EQ(definitions_.brushes.front().height.value, 1234567U);
  EXPECT_THAT(pointsOf(document_.back().back()),
              testing::ElementsAre(Seven{12, -3, 0, 1234567}, Seven{1}, Seven{5}));
}

}  // namespace
