#include "model/document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <type_traits>

namespace {

using Orvo::Document;
using Orvo::dumpPointCounts;
using Orvo::Layer;
using Orvo::Point;
using Orvo::Stroke;
using testing::ElementsAre;
using testing::Pair;

// Assigning through a base would slice the object.
static_assert(!std::is_assignable_v<Orvo::AnnotatedRegion<Layer>&, const Document&>);
static_assert(!std::is_assignable_v<Orvo::Region<Layer>&, const Document&>);
static_assert(!std::is_assignable_v<Orvo::AnnotatedRegion<Stroke>&, const Layer&>);
static_assert(!std::is_assignable_v<Orvo::Region<Stroke>&, const Layer&>);
static_assert(!std::is_assignable_v<Orvo::Region<Point>&, const Stroke&>);
static_assert(!std::is_assignable_v<Document&, const Document&>);
static_assert(std::is_assignable_v<Layer&, const Layer&>);
static_assert(std::is_assignable_v<Stroke&, const Stroke&>);

Document documentOf(std::initializer_list<std::initializer_list<int>> pointsOfStrokes) {
  Document document;
  for (const auto& counts : pointsOfStrokes) {
    Layer layer;
    for (const int count : counts) {
      Stroke stroke;
      for (int i = 0; i < count; ++i)
        stroke.append(Point(i, i));
      layer.append(stroke);
    }
    document.append(layer);
  }
  return document;
}

std::string dump(const Document& document) {
  testing::internal::CaptureStdout();
  dumpPointCounts(document);
  EXPECT_EQ(std::fflush(stdout), 0);
  return testing::internal::GetCapturedStdout();
}

TEST(Document, IsNotCompleteByDefault) {
  EXPECT_FALSE(Document().complete.value);
}

TEST(Document, KeepsAnnotationsInTheOrderOfTheirTypes) {
  Document document;
  document.annotations()["b"] = "2";
  document.annotations()["a"] = "1";
  document.annotations()["c"] = "3";
  document.annotations()["b"] = "two";
  EXPECT_THAT(document.annotations(),
              ElementsAre(Pair("a", "1"), Pair("b", "two"), Pair("c", "3")));
}

TEST(Document, KeepsAnnotationsInByteOrderBeyondAsciiToo) {
  Document document;
  for (const char* type : {"\xFF", "\x80", "\x7F", "z", "\xC3\xA9"})
    document.annotations()[type] = "";
  EXPECT_THAT(document.annotations(), ElementsAre(Pair("z", ""), Pair("\x7F", ""), Pair("\x80", ""),
                                                  Pair("\xC3\xA9", ""), Pair("\xFF", "")));
}

TEST(Document, ACopyIsDeep) {
  Document original = documentOf({{2, 3}, {1}});
  original.complete = true;
  original.annotations()["author"] = "me";
  original.begin()->annotations()["name"] = "ground";
  original.bounds().maxCorner.value.z.value = 8;

  Document copy(original);
  original.back().back().append(Point(50, 50));
  original.annotations()["author"] = "you";

  EXPECT_TRUE(copy.complete.value);
  EXPECT_EQ(copy.size(), 2U);
  EXPECT_EQ(copy.begin()->size(), 2U);
  EXPECT_EQ(copy.begin()->back().size(), 3U);
  EXPECT_EQ(copy.back().back().size(), 1U);
  EXPECT_THAT(copy.annotations(), ElementsAre(Pair("author", "me")));
  EXPECT_THAT(copy.begin()->annotations(), ElementsAre(Pair("name", "ground")));
  EXPECT_EQ(copy.bounds().maxCorner.value.z.value, 8);
}

TEST(PointCountDump, WritesALineForEachStrokeLayerByLayer) {
  Document document = documentOf({{2, 0}, {17}});
  document.complete = true;
  EXPECT_EQ(dump(document),
            "there are 2 points in this stroke\n"
            "there are 0 points in this stroke\n"
            "there are 17 points in this stroke\n");
}

TEST(PointCountDump, WritesNothingForADocumentThatIsNotComplete) {
  EXPECT_EQ(dump(documentOf({{2}})), "");
}

}  // namespace
