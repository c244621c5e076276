#include "art/json.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace art;

Segment segment(float from) {
  return {{from, from + 1}, {from + 2, from + 3}, {from + 4, from + 5}, false};
}

Document page() {
  Document document;
  document.width = 595.276F;
  document.height = 841.89F;
  document.page = {0, 0, 595.276F, 841.89F};
  return document;
}

Document withPaths(std::vector<Object> objects) {
  Document document = page();
  document.layers.push_back({"Layer 1", true, true, std::move(objects)});
  return document;
}

TEST(ArtJson, AnEmptyDocumentIsItsPage) {
  EXPECT_EQ(toJson(page()), R"({"document":{"width":595.276,"height":841.89,"rulerOrigin":[0,0],)"
                            "\"page\":[0,0,595.276,841.89]},\n\"layers\":[\n]}\n");
}

TEST(ArtJson, ThePageIsLeftBottomRightTop) {
  Document document = page();
  document.page = {.left = 1, .bottom = 2, .right = 3, .top = 4};
  document.rulerOrigin = {5, 6};
  EXPECT_NE(toJson(document).find(R"("rulerOrigin":[5,6],"page":[1,2,3,4])"), std::string::npos);
}

TEST(ArtJson, ALayerHasNameEditableAndArtBottomToTop) {
  Document document = page();
  document.layers.push_back({"below", true, true, {}});
  document.layers.push_back({"above \"it\"", false, true, {}});
  EXPECT_NE(
      toJson(document).find("\"layers\":[\n{\"name\":\"below\",\"editable\":true,\"art\":[]},\n"
                            "{\"name\":\"above \\\"it\\\"\",\"editable\":false,\"art\":[]}\n"
                            "]}\n"),
      std::string::npos);
}

TEST(ArtJson, APathIsOneLineOfItsSegmentsTabletDataAndStyle) {
  Path path;
  path.segments = {segment(1), segment(10)};
  path.segments[1].corner = true;
  path.pressure = {{0, 0.5F}, {1, 0.1F}};
  path.style = 1;
  Document document = withPaths({{path}});
  document.styles.resize(2);
  document.styles[1].name = "kvoaiexportset";
  EXPECT_NE(toJson(document).find("\"art\":[\n"
                                  R"({"type":"path","closed":false,)"
                                  R"("segments":[[1,2,3,4,5,6,false],[10,11,12,13,14,15,true]],)"
                                  R"("tablet":[[0,0.5],[1,0.1]],"style":"kvoaiexportset"})"
                                  "\n]}\n]}\n"),
            std::string::npos);
}

TEST(ArtJson, APathWithoutAnythingHasEmptyArraysAndNoStyle) {
  Path path;
  path.closed = true;
  EXPECT_NE(toJson(withPaths({{path}}))
                .find(R"({"type":"path","closed":true,"segments":[],"tablet":[],"style":null})"),
            std::string::npos);
}

TEST(ArtJson, AStyleThatTheDocumentDoesNotHaveIsNull) {
  Path path;
  path.style = 3;
  EXPECT_NE(toJson(withPaths({{path}})).find(R"("style":null)"), std::string::npos);
}

TEST(ArtJson, AGroupHoldsItsOwnArt) {
  Group inner;
  inner.art.push_back({Path{}});
  Group outer;
  outer.art.push_back({inner});
  EXPECT_NE(toJson(withPaths({{outer}, {Path{}}}))
                .find("\"art\":[\n{\"type\":\"group\",\"art\":[\n{\"type\":\"group\",\"art\":[\n"
                      "{\"type\":\"path\",\"closed\":false,\"segments\":[],\"tablet\":[],"
                      "\"style\":null}\n]}\n]},\n{\"type\":\"path\","),
            std::string::npos);
}

TEST(ArtJson, OtherTabletDataIsNamedAfterItsKind) {
  Path path;
  path.otherTabletData[TabletKind::rotation] = {{1, 2}};
  path.otherTabletData[TabletKind::tilt] = {{0, 0.25F}};
  EXPECT_NE(
      toJson(withPaths({{path}}))
          .find(R"("tablet":[],"otherTablet":{"tilt":[[0,0.25]],"rotation":[[1,2]]},"style")"),
      std::string::npos);
}

TEST(ArtJson, CoordinatesThatAreNotFiniteAreNull) {
  Path path;
  path.segments = {segment(0)};
  path.segments[0].p.h = std::numeric_limits<float>::infinity();
  EXPECT_NE(toJson(withPaths({{path}})).find("[[null,1,2,3,4,5,false]]"), std::string::npos);
}

TEST(ArtJson, ItIsTheSameForTheSameDocumentAndEndsWithALineEnd) {
  Path path;
  path.segments = {segment(0.1F), segment(-7.25F)};
  const Document document = withPaths({{path}, {path}});
  EXPECT_EQ(toJson(document), toJson(document));
  EXPECT_TRUE(toJson(document).ends_with("]}\n"));
}

TEST(ArtDocument, CountsPathsInsideGroupsToo) {
  Group inner;
  inner.art = {{Path{}}, {Path{}}};
  Group outer;
  outer.art = {{inner}, {Path{}}};
  EXPECT_EQ(countPaths(withPaths({{outer}, {Path{}}})), 4U);
  EXPECT_EQ(countPaths(page()), 0U);
}

TEST(ArtJson, ThreeHundredThousandSegmentsTakeOneLineForEachPath) {
  Path path;
  for (int i = 0; i < 100; ++i)
    path.segments.push_back(segment(0.37F * static_cast<float>(i)));
  const Document document = withPaths(std::vector<Object>(3000, Object{path}));
  const std::string json = toJson(document);
  EXPECT_EQ(std::count(json.begin(), json.end(), '\n'),
            3 + 3000 + 2);  // page, layers, layer; paths; two ends
}

}  // namespace
