// Shares of pixels against areas worked out by hand and against winding numbers counted sample by
// sample. A pixel is 256 steps wide and high, so that an edge at step k covers k of 256 parts.

#include "render/coverage.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <vector>

namespace {

using render::Coverage;

constexpr int kStepsPerPixel = 256;

// Row by row from the top; v is 0 at the upper edge of the bitmap and falls downward.
class Shares {
 public:
  Shares(int width, int rows) : width_(width), rows_(rows), coverage_(width, rows) {}

  const std::vector<int>& of(const render::Outline& outline, int firstRow = 0) {
    shares_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(rows_), 0);
    begin(outline, firstRow);
    while (const auto row = coverage_.next()) {
      EXPECT_LT(row->row, rows_);
      EXPECT_GE(row->first, 0);
      EXPECT_LE(row->first + static_cast<int>(row->shares.size()), width_);
      std::copy(row->shares.begin(), row->shares.end(),
                shares_.begin() + std::ptrdiff_t{row->row} * width_ + row->first);
    }
    return shares_;
  }
  void begin(const render::Outline& outline, int firstRow = 0) {
    coverage_.begin(outline, {1.0 / kStepsPerPixel, 0, 0, static_cast<double>(firstRow)});
  }
  void readOneRow() { EXPECT_TRUE(coverage_.next()); }

 private:
  int width_;
  int rows_;
  Coverage coverage_;
  std::vector<int> shares_;
};

// Steps to the right and downward, clockwise as seen.
render::Contour box(int left, int top, int right, int bottom) {
  return {{left, -top}, {right, -top}, {right, -bottom}, {left, -bottom}};
}

render::Contour reversed(render::Contour contour) {
  std::reverse(contour.begin(), contour.end());
  return contour;
}

TEST(ACoverage, OfABoxOnPixelEdgesFillsThosePixelsAndNoOthers) {
  EXPECT_EQ(Shares(4, 4).of({{box(256, 256, 768, 768)}, {}}),
            (std::vector<int>{0, 0, 0, 0, 0, 256, 256, 0, 0, 256, 256, 0, 0, 0, 0, 0}));
}

TEST(ACoverage, PlacesAVerticalEdgeToA256thOfAPixel) {
  Shares shares(2, 1);
  for (int k = 0; k <= 256; ++k) {
    EXPECT_EQ(shares.of({{box(0, 0, 256 + k, 256)}, {}}), (std::vector<int>{256, k})) << k;
    EXPECT_EQ(shares.of({{box(k, 0, 512, 256)}, {}}), (std::vector<int>{256 - k, 256})) << k;
  }
}

TEST(ACoverage, PlacesAHorizontalEdgeToASixteenthOfAPixel) {
  Shares shares(1, 2);
  for (int k = 0; k <= 256; k += 16)
    EXPECT_EQ(shares.of({{box(0, k, 256, 512)}, {}}), (std::vector<int>{256 - k, 256})) << k;
}

// A triangle over half of each pixel on its way.
TEST(ACoverage, OfASlopingEdgeIsTheAreaBelowIt) {
  const render::Outline triangle{{{{0, 0}, {768, -768}, {0, -768}}}, {}};
  const std::vector<int> shares = Shares(3, 3).of(triangle);
  const std::vector<int> areas{128, 0, 0, 256, 128, 0, 256, 256, 128};
  for (std::size_t i = 0; i < areas.size(); ++i)
    EXPECT_NEAR(shares[i], areas[i], 8) << i;
}

// Down by one pixel on a way of sixteen: half of them all, however the lines lie.
TEST(ACoverage, OfANearlyHorizontalEdgeHasTheRightTotalArea) {
  const std::vector<int> shares = Shares(16, 1).of({{{{0, 0}, {4096, -256}, {0, -256}}}, {}});
  EXPECT_NEAR(std::accumulate(shares.begin(), shares.end(), 0), 2048, 16);
}

// The halves of a pixel from 0 to 1/2 and from 1/4 to 3/4 cover three quarters of it, not all.
TEST(ACoverage, CountsAnOverlapOnce) {
  EXPECT_EQ(Shares(1, 1).of({{box(0, 0, 128, 256), box(64, 0, 192, 256)}, {}}),
            std::vector<int>{192});
}

TEST(ACoverage, HasNoSeamBetweenPartsThatTouchWithinAPixel) {
  EXPECT_EQ(Shares(1, 1).of({{box(0, 0, 100, 256), box(100, 0, 256, 256)}, {}}),
            std::vector<int>{256});
}

TEST(ACoverage, FillsByTheNonzeroRule) {
  const render::Contour outer = box(0, 0, 768, 256);
  const render::Contour inner = box(256, 0, 512, 256);
  Shares shares(3, 1);
  EXPECT_EQ(shares.of({{outer, inner}, {}}), (std::vector<int>{256, 256, 256}));
  EXPECT_EQ(shares.of({{outer, reversed(inner)}, {}}), (std::vector<int>{256, 0, 256}));
  EXPECT_EQ(shares.of({{reversed(outer), reversed(inner)}, {}}), (std::vector<int>{256, 256, 256}));
}

TEST(ACoverage, LeavesOutWhatLiesOutsideTheBitmap) {
  EXPECT_EQ(Shares(2, 2).of({{box(-9000, -9000, 256, 256)}, {}}), (std::vector<int>{256, 0, 0, 0}));
  EXPECT_EQ(Shares(2, 2).of({{box(256, 256, 9000, 9000)}, {}}), (std::vector<int>{0, 0, 0, 256}));
  EXPECT_EQ(Shares(2, 2).of({{box(600, 0, 900, 512)}, {}}), (std::vector<int>{0, 0, 0, 0}));
  EXPECT_EQ(Shares(2, 2).of({{box(0, 600, 512, 900)}, {}}), (std::vector<int>{0, 0, 0, 0}));
}

TEST(ACoverage, StartsAfreshWithEachOutline) {
  Shares shares(2, 3);
  shares.begin({{box(0, 0, 512, 768)}, {}});
  shares.readOneRow();
  EXPECT_EQ(shares.of({{box(256, 256, 512, 512)}, {}}), (std::vector<int>{0, 0, 0, 256, 0, 0}));
}

// A line to and fro across the whole bitmap; nothing about it is regular.
render::Outline scribble(int corners, int width, int height) {
  std::mt19937 random(20);
  const auto below = [&random](int end) {
    return static_cast<int>(random() % static_cast<unsigned>(end));
  };
  render::Contour contour;
  for (int i = 0; i < corners; ++i)
    contour.push_back({below(width * kStepsPerPixel), -below(height * kStepsPerPixel)});
  return {{contour}, {}};
}

int windingAt(const render::Contour& contour, double h, double v) {
  int winding = 0;
  for (std::size_t i = 0; i < contour.size(); ++i) {
    const render::Spot& a = contour[i];
    const render::Spot& b = contour[(i + 1) % contour.size()];
    if ((a.v <= v) == (b.v <= v)) continue;
    const double meets = a.h + (b.h - a.h) * (v - a.v) / (b.v - a.v);
    if (meets > h) winding += b.v > a.v ? 1 : -1;
  }
  return winding;
}

// Of 32 x 32 places in a pixel, those around which the contour goes.
double shareAt(const render::Contour& contour, int column, int row) {
  constexpr int kPlaces = 32;
  int inside = 0;
  for (int i = 0; i < kPlaces * kPlaces; ++i) {
    const std::div_t place = std::div(i, kPlaces);
    const double h = (column + (place.rem + 0.5) / kPlaces) * kStepsPerPixel;
    const double v = -(row + (place.quot + 0.5) / kPlaces) * kStepsPerPixel;
    inside += windingAt(contour, h, v) != 0 ? 1 : 0;
  }
  return 256.0 * inside / (kPlaces * kPlaces);
}

TEST(ACoverage, OfALineThatKeepsCrossingItselfIsWhatItEncloses) {
  constexpr int kSide = 12;
  const render::Outline outline = scribble(80, kSide, kSide);
  const std::vector<int> shares = Shares(kSide, kSide).of(outline);
  int partly = 0;
  double off = 0;
  for (int i = 0; i < kSide * kSide; ++i) {
    const int share = shares[static_cast<std::size_t>(i)];
    const double wanted = shareAt(outline.contours[0], i % kSide, i / kSide);
    partly += wanted > 0 && wanted < 256 ? 1 : 0;
    off += std::abs(share - wanted);
    EXPECT_NEAR(share, wanted, 16) << "column " << i % kSide << " row " << i / kSide;
  }
  EXPECT_GT(partly, 20);  // otherwise the test would show nothing
  EXPECT_LT(off / (kSide * kSide), 3);
}

// In a wide bitmap the crossings of a line are few for its width.
TEST(ACoverage, IsTheSameInABitmapOfAnyWidth) {
  const render::Outline outline = scribble(80, 12, 12);
  const std::vector<int> narrow = Shares(12, 12).of(outline);
  const std::vector<int> wide = Shares(2000, 12).of(outline);
  for (std::size_t i = 0; i < narrow.size(); ++i)
    EXPECT_EQ(wide[i / 12 * 2000 + i % 12], narrow[i]) << i;
}

TEST(ACoverage, OfABandEqualsThoseRowsOfTheWhole) {
  const render::Outline outline = scribble(80, 12, 12);
  const std::vector<int> whole = Shares(12, 12).of(outline);
  const std::vector<int> band = Shares(12, 4).of(outline, 5);
  for (std::size_t i = 0; i < band.size(); ++i)
    EXPECT_NEAR(band[i], whole[i + std::size_t{12} * 5], 1)
        << i;  // a sample on an edge may fall either way
}

}  // namespace
