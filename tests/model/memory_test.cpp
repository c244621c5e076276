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

constexpr std::size_t kPointCount = 20'000;

// As the parser builds it: each stroke is added with its first point and grows in its layer.
void fill(Document& document, std::size_t pointsPerStroke, std::size_t points = kPointCount) {
  for (std::size_t i = 0; i < points; ++i) {
    const Point point(static_cast<double>(i), 1.0);
    if (i % pointsPerStroke != 0) {
      document.back().back().append(point);
      continue;
    }
    Stroke stroke;
    stroke.append(point);
    if (document.size() == 0) document.append(Layer());
    document.back().append(stroke);
  }
}

double bytesPerPoint(std::size_t pointsPerStroke, std::size_t points = kPointCount) {
  const std::size_t before = liveBytes();
  Document document;
  fill(document, pointsPerStroke, points);
  return static_cast<double>(liveBytes() - before) / static_cast<double>(points);
}

TEST(DocumentMemory, IsAtMost130BytesPerPointOfLongStrokes) {
  EXPECT_LE(bytesPerPoint(1000), 130.0);
  EXPECT_GE(bytesPerPoint(1000), 112.0);
}

TEST(DocumentMemory, IsAtMost165BytesPerPointOfShortStrokes) {
  EXPECT_LE(bytesPerPoint(17), 165.0);
}

TEST(DocumentMemory, StaysWithinItsLimitsForStrokesOfEveryLength) {
  // Whole strokes only, some two thousand points in all.
  for (std::size_t count = 17; count <= 1100; ++count) {
    const std::size_t strokes = 2000 / count + 1;
    ASSERT_LE(bytesPerPoint(count, strokes * count), 165.0) << count << " points a stroke";
  }
  for (const std::size_t count : {100U, 129U, 257U, 513U, 1025U, 2049U, 4097U}) {
    EXPECT_LE(bytesPerPoint(count), 130.0) << count << " points a stroke";
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

TEST(DocumentMemory, IsFreedCompletely) {
  const std::size_t before = liveBytes();
  bytesPerPoint(17);
  EXPECT_EQ(liveBytes(), before);
}

}  // namespace
