// Pictures where numbers are written with a comma. The locale is made for this test; LOCPATH says
// where.

#include <clocale>
#include <cstdio>
#include <gtest/gtest.h>

#include "render/picture.h"
#include "sheets.h"

namespace {

using namespace render_tests;

std::string bytesOf(render::Format format) {
  render::Options options;
  options.background = art::Color{0.5, 0.25, 1};
  const render::Picture picture = render::toPicture(twoLayers(), format, options);
  EXPECT_FALSE(picture.refusal.has_value());
  return picture.bytes;
}

TEST(APicture, HasTheSameBytesWhereNumbersHaveACommaInThem) {
  const std::string svg = bytesOf(render::Format::svg);
  const std::string pdf = bytesOf(render::Format::pdf);
  const std::string png = bytesOf(render::Format::png);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "the locale is not there";
  char number[16];
  std::snprintf(number, sizeof number, "%.1f", 0.5);
  ASSERT_STREQ(number, "0,5");
  EXPECT_EQ(bytesOf(render::Format::svg), svg);
  EXPECT_EQ(bytesOf(render::Format::pdf), pdf);
  EXPECT_EQ(bytesOf(render::Format::png), png);
}

}  // namespace
