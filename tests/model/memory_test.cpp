#include <cstddef>
#include <gtest/gtest.h>

#include "model/document.h"
#include "tests/support/memory/live_bytes.h"

namespace {

using memorytest::liveBytes;
using Orvo::Document;
using Orvo::Layer;
using Orvo::Point;
using Orvo::Stroke;

constexpr std::size_t pointCount = 20'000;

// As the pen's reader builds it: each stroke comes in with its first point and grows in its layer.
void fill(Document& document, std::size_t pointsOfStroke) {
  for (std::size_t i = 0; i < pointCount; ++i) {
    const Point point(static_cast<double>(i), 1.0);
    if (i % pointsOfStroke != 0) {
      document.back().back().append(point);
      continue;
    }
    Stroke stroke;
    stroke.append(point);
    if (document.size() == 0) document.append(Layer());
    document.back().append(stroke);
  }
}

double bytesForEachPoint(std::size_t pointsOfStroke) {
  const std::size_t before = liveBytes();
  Document document;
  fill(document, pointsOfStroke);
  return static_cast<double>(liveBytes() - before) / static_cast<double>(pointCount);
}

TEST(DocumentMemory, IsAtMost130BytesForEachPointOfLongStrokes) {
  EXPECT_LE(bytesForEachPoint(1000), 130.0);
  EXPECT_GE(bytesForEachPoint(1000), 112.0);
}

TEST(DocumentMemory, IsAtMost165BytesForEachPointOfShortStrokes) {
  EXPECT_LE(bytesForEachPoint(17), 165.0);
}

TEST(DocumentMemory, FallsWithTheLengthOfStrokesWithoutBadCounts) {
  for (std::size_t count = 17; count <= 1100; ++count) {
    ASSERT_LE(bytesForEachPoint(count), 165.0) << count << " points a stroke";
  }
  for (const std::size_t count : {100U, 129U, 257U, 513U, 1025U, 2049U, 4097U}) {
    EXPECT_LE(bytesForEachPoint(count), 130.0) << count << " points a stroke";
  }
}

TEST(DocumentMemory, OfACopyIsNoLargerThanThatOfTheOriginal) {
  Document document;
  const std::size_t start = liveBytes();
  fill(document, 17);
  const std::size_t original = liveBytes() - start;
  const std::size_t before = liveBytes();
  const Document copy(document);
  EXPECT_LE(liveBytes() - before, original);
  EXPECT_EQ(copy.back().size(), document.back().size());
}

TEST(DocumentMemory, IsGivenBackWhole) {
  const std::size_t before = liveBytes();
  bytesForEachPoint(17);
  EXPECT_EQ(liveBytes(), before);
}

}  // namespace
