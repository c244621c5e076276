#include "cli/output_format.h"

#include <gtest/gtest.h>

namespace {

using cli::OutputFormat;
using cli::parseOutputFormat;

TEST(AnOutputFormat, IsParsedFromItsNameInAnyCaseOfLetters) {
  EXPECT_EQ(parseOutputFormat("svg"), OutputFormat::svg);
  EXPECT_EQ(parseOutputFormat("PDF"), OutputFormat::pdf);
  EXPECT_EQ(parseOutputFormat("Png"), OutputFormat::png);
  EXPECT_EQ(parseOutputFormat("jsoN"), OutputFormat::json);
}

TEST(AnOutputFormat, IsNotGuessedFromAnyOtherName) {
  for (const char* name : {"", "sv", "svgz", ".svg", "svg ", "xls"})
    EXPECT_EQ(parseOutputFormat(name), std::nullopt) << name;
}

TEST(AnOutputFormat, HasANameThatParsesBack) {
  for (const OutputFormat format : cli::kOutputFormats)
    EXPECT_EQ(parseOutputFormat(cli::nameOf(format)), format);
  EXPECT_EQ(cli::listOutputFormats(), "svg, pdf, png, html, json");
}

}  // namespace
