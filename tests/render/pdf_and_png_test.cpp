// PDF and PNG, read back with qpdf and cairo, independently of the code that wrote them.

#include "render/pdf_and_png.h"

#include <cairo.h>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf_facts.h"
#include "sheets.h"

namespace {

using namespace render_tests;
using testing::HasSubstr;

PdfFacts factsOf(const render::Picture& picture) {
  EXPECT_EQ(picture.refusal.value_or(""), "");
  PdfFacts facts = readPdf(picture.bytes);
  EXPECT_FALSE(facts.warned);
  return facts;
}

TEST(APdf, HasOnePageOfTheDrawingsSizeInPoints) {
  art::Document document = sheet(60, 40);
  draw(document, "a", straightPath({{1, 20}, {30, 38.5}}));  // radius 3: to -2 and 41.5
  EXPECT_THAT(factsOf(render::toPdf(document)).box, testing::ElementsAre(0, 0, 62, 41.5));
}

TEST(APdf, HasEachLayerAsAnOptionalOneListedFromTheTop) {
  art::Document document = twoLayers();
  document.layers[1].name = "Ecke \xE2\x82\xAC";
  document.layers[0].visible = false;
  const PdfFacts facts = factsOf(render::toPdf(document));
  EXPECT_THAT(facts.layers, testing::ElementsAre("Growing & dot", "Ecke \xE2\x82\xAC"));
  EXPECT_THAT(facts.order, testing::ElementsAre("Ecke \xE2\x82\xAC", "Growing & dot"));
  EXPECT_THAT(facts.off, testing::ElementsAre("Growing & dot"));
  EXPECT_THAT(facts.content, HasSubstr("/OC /L1 BDC"));
  EXPECT_THAT(facts.content, HasSubstr("/OC /L2 BDC"));
}

TEST(APdf, FillsOneOutlineForEachStroke) {
  const std::string content = factsOf(render::toPdf(twoLayers())).content;
  std::size_t fills = 0;
  for (std::size_t at = content.find("f Q"); at != std::string::npos;
       at = content.find("f Q", at + 1))
    ++fills;
  EXPECT_EQ(fills, 3U);
}

TEST(APdf, BeyondTheLargestPageSizeUsesLargerUnits) {
  const PdfFacts facts = factsOf(render::toPdf(sheet(28800, 100)));
  EXPECT_EQ(facts.userUnit, 2);
  EXPECT_THAT(facts.box, testing::ElementsAre(0, 0, 14400, 50));
}

TEST(APdf, OfCentreLinesStrokesThem) {
  render::Options options;
  options.centreLines = true;
  const std::string content = factsOf(render::toPdf(twoLayers(), options)).content;
  EXPECT_THAT(content, HasSubstr("1000 1000 m\n5000 1000 l\nS\n"));
  EXPECT_THAT(content, HasSubstr("100 w\n"));
}

TEST(APdf, HasTheSameBytesEveryTime) {
  EXPECT_EQ(render::toPdf(twoLayers()).bytes, render::toPdf(twoLayers()).bytes);
}

struct Reader {
  std::string bytes;
  std::size_t at = 0;
};

cairo_status_t readBytes(void* closure, unsigned char* to, unsigned length) {
  auto* reader = static_cast<Reader*>(closure);
  if (reader->at + length > reader->bytes.size()) return CAIRO_STATUS_READ_ERROR;
  std::memcpy(to, reader->bytes.data() + reader->at, length);
  reader->at += length;
  return CAIRO_STATUS_SUCCESS;
}

class Png {
 public:
  explicit Png(const render::Picture& picture) {
    EXPECT_EQ(picture.refusal.value_or(""), "");
    Reader reader{picture.bytes};
    surface_ = cairo_image_surface_create_from_png_stream(readBytes, &reader);
    EXPECT_EQ(cairo_surface_status(surface_), CAIRO_STATUS_SUCCESS);
  }
  ~Png() { cairo_surface_destroy(surface_); }
  Png(const Png&) = delete;
  Png& operator=(const Png&) = delete;

  int width() const { return cairo_image_surface_get_width(surface_); }
  int height() const { return cairo_image_surface_get_height(surface_); }
  bool transparent() const {
    return cairo_image_surface_get_format(surface_) == CAIRO_FORMAT_ARGB32;
  }
  // Alpha, red, green, blue, multiplied by alpha; an opaque picture has no alpha.
  unsigned pixel(int column, int row) const {
    unsigned pixel = 0;
    std::memcpy(&pixel,
                cairo_image_surface_get_data(surface_) +
                    static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(surface_) +
                    static_cast<std::ptrdiff_t>(column) * 4,
                4);
    return transparent() ? pixel : pixel | 0xFF000000U;
  }

 private:
  cairo_surface_t* surface_ = nullptr;
};

render::Options atDpi(double dpi) {
  render::Options options;
  options.dpi = dpi;
  return options;
}

// 144 dots per inch: 2 pixels for each point. The corner's upright runs at h = 45 from v = 20 to
// 35, 6 points wide.
TEST(APng, ShowsTheDrawingOnATransparentGround) {
  const Png png(render::toPng(twoLayers(), atDpi(144)));
  EXPECT_EQ(png.width(), 120);
  EXPECT_EQ(png.height(), 80);
  EXPECT_TRUE(png.transparent());
  EXPECT_EQ(png.pixel(90, 20), 0xFF000000U);
  EXPECT_EQ(png.pixel(85, 20), 0xFF000000U);
  EXPECT_EQ(png.pixel(83, 20), 0U);
  EXPECT_EQ(png.pixel(95, 20), 0xFF000000U);
  EXPECT_EQ(png.pixel(96, 20), 0U);
  EXPECT_EQ(png.pixel(20, 20), 0xFF000000U);  // the dot
}

TEST(APng, HasItsBackgroundAndItsColours) {
  art::Document document = twoLayers();
  document.styles[0].strokeColor = {1, 0, 0.2};
  render::Options options = atDpi(144);
  options.background = art::Color{0, 0.6, 1};
  const Png png(render::toPng(document, options));
  EXPECT_FALSE(png.transparent());
  EXPECT_EQ(png.pixel(90, 20), 0xFFFF0033U);
  EXPECT_EQ(png.pixel(60, 5), 0xFF0099FFU);
  options.background.reset();
  EXPECT_EQ(Png(render::toPng(document, options)).pixel(90, 20), 0xFFFF0033U);
}

TEST(APng, LeavesOutALayerThatIsNotVisible) {
  art::Document document = twoLayers();
  document.layers[1].visible = false;
  const Png png(render::toPng(document, atDpi(144)));
  EXPECT_EQ(png.pixel(90, 20), 0U);
  EXPECT_EQ(png.pixel(20, 20), 0xFF000000U);
}

TEST(APng, FitsIntoASizeInPixels) {
  render::Options options;
  options.size = {.width = 600, .height = 100};
  const Png narrow(render::toPng(twoLayers(), options));
  EXPECT_EQ(narrow.width(), 150);
  EXPECT_EQ(narrow.height(), 100);
  options.size = {.width = 600, .height = 0};
  EXPECT_EQ(Png(render::toPng(twoLayers(), options)).height(), 400);
  options.size = {.width = 0, .height = 20};
  EXPECT_EQ(Png(render::toPng(twoLayers(), options)).width(), 30);
}

// More rows than are painted at once: the bands must join.
TEST(APng, OfManyRowsIsOnePicture) {
  art::Document document = sheet(20, 1000);
  draw(document, "a", straightPath({{10, 10}, {10, 990}}));
  const Png png(render::toPng(document, atDpi(72)));
  ASSERT_EQ(png.height(), 1000);
  for (int row = 10; row < 990; ++row)
    ASSERT_EQ(png.pixel(9, row), 0xFF000000U) << row;
}

// Off by at most two steps in every part of the colour.
testing::Matcher<unsigned> isNearly(unsigned wanted) {
  return testing::Truly([wanted](unsigned pixel) {
    for (const unsigned shift : {0U, 8U, 16U, 24U}) {
      const int a = static_cast<int>(pixel >> shift & 0xFFU);
      const int b = static_cast<int>(wanted >> shift & 0xFFU);
      if (std::abs(a - b) > 2) return false;
    }
    return true;
  });
}

// One pixel for each point. The line is 6 points wide around v = 20.75: three quarters of the row
// from v = 23 to 24 are covered.
TEST(APng, MixesTheColoursOfAPartlyCoveredPixel) {
  art::Document document = sheet(60, 40);
  document.styles[0].strokeColor = {1, 0, 0.2};
  draw(document, "a", straightPath({{10, 20.75}, {50, 20.75}}));
  render::Options options = atDpi(72);
  EXPECT_THAT(Png(render::toPng(document, options)).pixel(30, 16), isNearly(0xBFBF0026U));
  options.background = art::Color{0, 0.6, 1};
  EXPECT_THAT(Png(render::toPng(document, options)).pixel(30, 16), isNearly(0xFFBF2666U));
}

// A line to and fro, each pass over half of the one before: radius 3, passes 3 points apart.
TEST(APng, OfAHatchedAreaHasNoSeams) {
  art::Document document = sheet(100, 100);
  art::Path path;
  for (int i = 0; i <= 20; ++i) {
    const float v = 20 + 3 * static_cast<float>(i);
    for (const float h : {20.0F, 80.0F}) {
      const art::Point point{i % 2 == 0 ? h : 100 - h, v};
      path.segments.push_back({point, point, point, true});
    }
  }
  draw(document, "a", path);
  const Png png(render::toPng(document, atDpi(100)));
  for (int row = 28; row < 110; ++row)
    for (int column = 28; column < 110; ++column)
      ASSERT_EQ(png.pixel(column, row), 0xFF000000U) << column << " " << row;
}

// 10,000 dots per metre are 254 an inch.
TEST(APng, StatesItsResolution) {
  const std::string bytes = render::toPng(twoLayers(), atDpi(254)).bytes;
  const std::size_t at = bytes.find("pHYs");
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(bytes.substr(at + 4, 9), std::string("\0\0\x27\x10\0\0\x27\x10\x01", 9));
}

TEST(APng, IsRefusedWhenItWouldBeTooLarge) {
  const render::Picture picture = render::toPng(twoLayers(), atDpi(72000));
  EXPECT_EQ(picture.refusal,
            "the picture would have 60000 by 40000 pixels, more than the 30000 that a side may "
            "have; choose fewer dots per inch or a smaller size");
  EXPECT_EQ(picture.bytes, "");
  EXPECT_THAT(render::toPng(twoLayers(), atDpi(1e300)).refusal.value_or(""),
              HasSubstr("choose fewer dots per inch"));
}

TEST(APng, IsRefusedWithoutAResolutionOrASize) {
  EXPECT_EQ(render::toPng(twoLayers(), atDpi(0)).refusal,
            "a resolution must be above 0 dots per inch");
  render::Options options;
  options.size = {.width = 0, .height = 0};
  EXPECT_EQ(render::toPng(twoLayers(), options).refusal,
            "a size in pixels needs a width or a height above 0");
}

TEST(APng, OfCentreLinesHasLinesOfOnePoint) {
  render::Options options = atDpi(144);
  options.centreLines = true;
  const Png png(render::toPng(twoLayers(), options));
  EXPECT_EQ(png.pixel(90, 20), 0xFF000000U);
  EXPECT_EQ(png.pixel(89, 20), 0xFF000000U);
  EXPECT_EQ(png.pixel(88, 20), 0U);
  EXPECT_EQ(png.pixel(91, 20), 0U);
}

}  // namespace
