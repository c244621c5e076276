// What an SVG holds of a drawing; the small goldens in tests/goldens/render were checked by eye.

#include "render/svg.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "render/text.h"
#include "sheets.h"

namespace {

using namespace render_tests;
using testing::HasSubstr;
using testing::Not;

std::string golden(const std::string& name) {
  std::ifstream file(PENWICK_GOLDENS "/" + name);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++found;
  return found;
}

TEST(AnSvg, OfTwoLayersMatchesItsGolden) {
  const std::string svg = render::toSvg(twoLayers());
  EXPECT_EQ(svg, golden("two_layers.svg"));
}

TEST(AnSvg, OfCentreLinesMatchesItsGolden) {
  art::Document document = twoLayers();
  art::Path curve = straightPath({{5, 5}, {20, 5}});
  curve.segments[0].out = {10, 12};
  curve.segments[1].in = {15, -2};
  curve.closed = true;
  draw(document, "Curve", curve);
  document.layers.back().visible = false;
  EXPECT_EQ(render::toSvg(document, {.centreLines = true}), golden("centre_lines.svg"));
}

TEST(AnSvg, HasTheSizeOfThePageInMillimetresAndItsUnitsArePoints) {
  // 72 points are 25.4 mm.
  EXPECT_THAT(render::toSvg(sheet(72, 144)),
              HasSubstr("width=\"25.4mm\" height=\"50.8mm\" viewBox=\"0 0 72 144\""));
}

TEST(AnSvg, GrowsWhereTheBrushReachesBeyondThePage) {
  art::Document document = sheet(60, 40);
  draw(document, "a", straightPath({{1, 20}, {30, 38.5}}));  // radius 3: to -2 and 41.5
  EXPECT_THAT(render::toSvg(document), HasSubstr("viewBox=\"0 0 62 41.5\""));
}

// 72 by 36 points; a quarter of a point is 2.5 tenths of one.
TEST(AnSvg, OfHairlinesOnlyUsesTenthsOfPointsSoThatRoundingDoesNotShow) {
  art::Document document = sheet(72, 36);
  document.styles[0].strokeWeight = 0.125;  // a quarter of a point to 1.25
  draw(document, "a", withPressure(straightPath({{10, 10}, {50, 10}}), {{0, 0}, {1, 0}}));
  const std::string svg = render::toSvg(document);
  EXPECT_THAT(svg, HasSubstr("width=\"25.4mm\" height=\"12.7mm\" viewBox=\"0 0 720 360\""));
  EXPECT_THAT(svg, HasSubstr("M500 258.75l"));
  draw(document, "a", withPressure(straightPath({{10, 20}, {50, 20}}), {{0, 1}, {1, 1}}));
  EXPECT_THAT(render::toSvg(document), HasSubstr("viewBox=\"0 0 72 36\""));
}

TEST(AnSvg, OfAnEmptyPageIsStillAPicture) {
  EXPECT_THAT(render::toSvg(sheet(0, 0)), HasSubstr("viewBox=\"0 0 1 1\""));
}

TEST(AnSvg, HasOnePathForEachStroke) {
  art::Document document = twoLayers();
  // A jump of the pressure: its outline is of two parts.
  draw(document, "Corner",
       withPressure(straightPath({{5, 25}, {45, 25}}), {{0, 1}, {0.5F, 1}, {0.5F, 0}, {1, 0}}));
  const std::string svg = render::toSvg(document);
  EXPECT_EQ(count(svg, "<path "), 4U);
  EXPECT_EQ(count(svg, "z\"/>"), 4U);
  EXPECT_EQ(count(svg, "zM"), 1U);
}

TEST(AnSvg, DrawsPathsInGroupsWithTheStyleOfTheGroup) {
  art::Document document = sheet(60, 40);
  document.styles.push_back(twoToTen());
  document.styles.back().strokeColor = {1, 0, 0.5};
  art::Group group;
  group.style = 1;
  group.art.push_back({straightPath({{10, 10}, {20, 10}})});
  document.layers.emplace_back().art.push_back({group});
  const std::string svg = render::toSvg(document);
  EXPECT_THAT(svg, HasSubstr("fill=\"#ff0080\""));
  EXPECT_EQ(count(svg, "<path "), 1U);
}

TEST(AnSvg, GivesAStrokeItsOwnColourWhereItDiffersFromItsLayer) {
  art::Document document = twoLayers();
  document.styles.push_back(twoToTen());
  document.styles.back().strokeColor = {0, 0.2, 1};
  std::get<art::Path>(document.layers[0].art[1].value).style = 1;
  const std::string svg = render::toSvg(document);
  EXPECT_EQ(count(svg, "fill=\"#03f\""), 1U);
  EXPECT_EQ(count(svg, "fill=\"#000\""), 2U);
}

TEST(AnSvg, IsXmlWhateverALayerIsCalled) {
  art::Document document = sheet(60, 40);
  document.layers.emplace_back().name = "<a> & \"b\"\x01\n\xFF\xC0\xAF \xED\xA0\x80 \xE2\x82\xAC";
  EXPECT_THAT(render::toSvg(document),
              HasSubstr("inkscape:label=\"&lt;a&gt; &amp; &quot;b&quot;  "
                        "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD "
                        "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD \xE2\x82\xAC\""));
}

TEST(AnSvg, HidesALayerThatIsNotVisible) {
  art::Document document = twoLayers();
  EXPECT_THAT(render::toSvg(document), Not(HasSubstr("display")));
  document.layers[1].visible = false;
  EXPECT_EQ(count(render::toSvg(document), "style=\"display:none\""), 1U);
}

TEST(AnSvg, HasABackgroundOnlyOnRequest) {
  EXPECT_THAT(render::toSvg(twoLayers()), Not(HasSubstr("<rect")));
  EXPECT_THAT(render::toSvg(twoLayers(), {.background = art::Color{1, 1, 1}}),
              HasSubstr("<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>"));
}

// The most digits after any decimal point.
std::size_t mostDecimals(const std::string& text) {
  std::size_t most = 0;
  for (std::size_t at = text.find('.'); at != std::string::npos; at = text.find('.', at + 1)) {
    const std::size_t end = text.find_first_not_of("0123456789", at + 1);
    most = std::max(most, std::min(end, text.size()) - at - 1);
  }
  return most;
}

TEST(AnSvg, HasNoNumberWithMoreThanTwoDecimals) {
  EXPECT_EQ(mostDecimals(render::toSvg(twoLayers())), 2U);
}

std::string written(int hundredths) {
  std::string text;
  render::appendHundredths(text, hundredths);
  return text;
}

TEST(Hundredths, AreWrittenAsShortAsTheyCanBe) {
  EXPECT_EQ(written(0), "0");
  EXPECT_EQ(written(5), ".05");
  EXPECT_EQ(written(-5), "-.05");
  EXPECT_EQ(written(50), ".5");
  EXPECT_EQ(written(100), "1");
  EXPECT_EQ(written(-1234), "-12.34");
  EXPECT_EQ(written(1210), "12.1");
  EXPECT_EQ(written(2147483647), "21474836.47");
  EXPECT_EQ(written(-2147483647 - 1), "-21474836.48");
}

}  // namespace
