// Pictures in a locale that writes numbers with a decimal comma.

#include <gtest/gtest.h>

#include "render/pdf_and_png.h"
#include "render/svg.h"
#include "sheets.h"
#include "tests/support/locale/decimal_comma.h"

namespace {

using namespace render_tests;

struct Pictures {
  std::string svg;
  std::string pdf;
  std::string png;
};

Pictures draw() {
  render::Options options;
  options.background = art::Color{0.5, 0.25, 1};
  const art::Document document = twoLayers();
  const render::Picture pdf = render::toPdf(document, options);
  const render::Picture png = render::toPng(document, options);
  EXPECT_FALSE(pdf.refusal || png.refusal);
  return {render::toSvg(document, options), pdf.bytes, png.bytes};
}

TEST(APicture, HasTheSameBytesInALocaleWithADecimalComma) {
  const Pictures before = draw();
  ASSERT_NO_FATAL_FAILURE(localetest::useDecimalComma());
  const Pictures after = draw();
  EXPECT_EQ(after.svg, before.svg);
  EXPECT_EQ(after.pdf, before.pdf);
  EXPECT_EQ(after.png, before.png);
}

}  // namespace
