#include "web/replay_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "web/replay_data.h"

namespace {

using testing::HasSubstr;
using testing::Not;

art::Object line(float x, float y, float length) {
  art::Path path;
  for (const float h : {x, x + length})
    path.segments.push_back({{h, y}, {h, y}, {h, y}});
  return {path};
}

art::Document drawing() {
  art::Document document;
  document.width = 100;
  document.height = 50;
  document.page = {0, 0, 100, 50};
  document.layers.push_back({"Sky", true, true, {line(10, 40, 20)}});
  document.layers.push_back({"Sea", true, true, {line(10, 10, 30)}});
  return document;
}

std::string pageOf(const art::Document& document, const web::ReplayFacts& facts) {
  return web::replayPage(document, {}, facts);
}

// What the page has as strokes, in base64.
std::string strokesIn(const std::string& page) {
  constexpr std::string_view kStart = "id=\"strokes\">";
  const std::size_t begin = page.find(kStart) + kStart.size();
  return page.substr(begin, page.find('<', begin) - begin);
}

TEST(PackedStrokes, HaveSmallNumbersInOneByteAndLargeOnesInMore) {
  const std::string bytes = web::packed({{0, 20, {{100, 30}, {99, 31}}, {0, 7}}});
  // 100 and 30 with their signs are 200 and 60; -1 is 1.
  EXPECT_EQ(bytes, std::string("\x00\x14\x02\xC8\x01\x3C\x00\x01\x02\x07", 10));
}

TEST(PackedStrokes, CountFromTheStrokeBefore) {
  const std::string bytes = web::packed({{1, 1, {{5, 5}}, {0}}, {0, 1, {{6, 4}}, {300}}});
  EXPECT_EQ(bytes, std::string("\x02\x01\x01\x0A\x0A\x00"
                               "\x03\x01\x01\x02\x01\xAC\x02",
                               13));
}

TEST(AReplayPage, SaysWhatToKnowAboutTheRecording) {
  EXPECT_THAT(
      pageOf(drawing(), {"a", {}, false, {"cut off", "<b>"}}),
      HasSubstr("<ul id=\"messages\">\n<li>cut off</li>\n<li>&lt;b&gt;</li>\n</ul>\n<main"));
  EXPECT_THAT(pageOf(drawing(), {"a", {}, false}), Not(HasSubstr("id=\"messages\"")));
}

TEST(AReplayPage, HasLinesInTenthsOfAUnitAndTimes) {
  // The first line: path 0, 1.2 wide with what rounding takes, two points: (100, 100), 200 further
  // after 33 ms; the second: path 1, 100 back, 300 below, after 57 ms; 300 further after 9 ms.
  EXPECT_EQ(strokesIn(pageOf(drawing(), {"a", {{1000, 1033}, {1090, 1099}}, false})),
            // 00 0C 02 C8 01 C8 01 00 90 03 00 21 | 00 0C 02 8F 03 D8 04 39 D8 04 00 09
            "AAwCyAHIAQCQAwAhAAwCjwPYBDnYBAAJ");
}

TEST(AReplayPage, HasAnEvenPaceWhereItIsNotClearWhichTimesBelongToWhichPath) {
  const std::string without = strokesIn(pageOf(drawing(), {"a", {}, false}));
  EXPECT_EQ(strokesIn(pageOf(drawing(), {"a", {{1000, 1033}}, false})), without);
  EXPECT_NE(strokesIn(pageOf(drawing(), {"a", {{1000, 1033}, {1090, 1099}}, false})), without);
}

TEST(AReplayPage, FollowsTheClockFromLayerToLayerWhereItMay) {
  const web::StrokeTimes times{{500, 533}, {100, 109}};
  // Path 1 comes first.
  EXPECT_THAT(strokesIn(pageOf(drawing(), {"a", times, true})), testing::StartsWith("AgwC"));
  EXPECT_THAT(strokesIn(pageOf(drawing(), {"a", times, false})), testing::StartsWith("AAwC"));
}

TEST(AReplayPage, KeepsTheOrderOfPathsWhereColoursDiffer) {
  art::Document document = drawing();
  document.styles.emplace_back();
  document.styles[0].strokeColor = {1, 0, 0};
  std::get<art::Path>(document.layers[0].art[0].value).style = 0;
  EXPECT_THAT(strokesIn(pageOf(document, {"a", {{500, 533}, {100, 109}}, true})),
              testing::StartsWith("AA"));
}

TEST(AReplayPage, PairsTimesWithPathsAlsoWhereSomePathsAreNotShown) {
  art::Document document = drawing();
  document.layers[0].art.insert(document.layers[0].art.begin(), art::Object{art::Path{}});
  EXPECT_EQ(strokesIn(pageOf(document, {"a", {{1, 2}, {1000, 1033}, {1090, 1099}}, false})),
            strokesIn(pageOf(drawing(), {"a", {{1000, 1033}, {1090, 1099}}, false})));
}

TEST(AReplayPage, TellsNameAndFacts) {
  const std::string page = pageOf(drawing(), {"cup.pnx", {}, false});
  EXPECT_THAT(page, HasSubstr("<title>cup.pnx</title>"));
  EXPECT_THAT(page, HasSubstr("<h1>cup.pnx</h1><p>2 layers, 2 strokes, 35 × 18 mm</p>"));
}

TEST(AReplayPage, NoNameCanBecomeMarkup) {
  art::Document document = drawing();
  document.layers[0].name = "</svg><script>";
  const std::string page = pageOf(document, {"<b onload=\"x\">&\n", {}, false});
  EXPECT_THAT(page, HasSubstr("<h1>&lt;b onload=&quot;x&quot;&gt;&amp; </h1>"));
  EXPECT_THAT(page, HasSubstr("inkscape:label=\"&lt;/svg&gt;&lt;script&gt;\""));
  EXPECT_THAT(page, Not(HasSubstr("<b onload")));
  EXPECT_THAT(page, Not(HasSubstr("</svg><script>")));
}

TEST(AReplayPage, MayLoadNothing) {
  EXPECT_THAT(pageOf(drawing(), {"a", {}, false}),
              HasSubstr("content=\"default-src 'none'; style-src 'unsafe-inline'; script-src "
                        "'unsafe-inline'; base-uri 'none'; form-action 'none'\""));
}

TEST(AReplayPage, WithoutStrokesSaysSo) {
  art::Document document = drawing();
  document.layers.clear();
  const std::string page = pageOf(document, {"a", {}, false});
  EXPECT_THAT(page, HasSubstr("This recording has no strokes to show."));
  EXPECT_THAT(page, Not(HasSubstr("<script")));
}

}  // namespace
