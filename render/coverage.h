// How much of each pixel an outline covers.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "render/outline.h"

namespace render {

/// Where a spot of the grid lies among pixels: columns to the right of the left edge, rows below
/// the top edge.
struct PixelMap {
  double pixelsPerStep = 0;
  int left = 0;         ///< steps
  int top = 0;          ///< steps
  double firstRow = 0;  ///< counted as row 0

  double column(const Spot& spot) const {
    return (static_cast<double>(spot.h) - left) * pixelsPerStep;
  }
  double row(const Spot& spot) const {
    return (static_cast<double>(top) - spot.v) * pixelsPerStep - firstRow;
  }
};

/// Takes 256 samples of each pixel, on 16 lines, and counts those inside the outline by the nonzero
/// rule: where an outline overlaps itself, nothing counts twice and no seam shows. The time grows
/// with the length of the outline and with the size of the picture, however often the outline
/// crosses itself. One object for many outlines keeps its memory.
class Coverage {
 public:
  /// The share of a fully covered pixel.
  static constexpr int kWhole = 256;

  /// Pixels of one row, from `first` on.
  struct Row {
    int row = 0;
    int first = 0;
    std::span<const int> shares;  ///< 0 to `kWhole`; until the next call
  };

  /// The size of a bitmap, or of a band of it, in pixels; both above 0.
  Coverage(int width, int rows);

  /// What lies to the left or right of the bitmap is clamped to its edge.
  void begin(const Outline& outline, const PixelMap& map);

  /// The next row, from top to bottom, in which the outline covers anything.
  std::optional<Row> next();

 private:
  // A side of the outline, from the next line that it crosses. `x` in samples.
  struct Edge {
    double x;
    double xPerLine;
    int line;
    int end;
    int down;  // 1 or 0
  };

  void add(double x0, double y0, double x1, double y1);
  void crossLines(int row);
  void cover(std::span<std::int32_t> crossings);
  void coverFew(std::span<std::int32_t> crossings);
  void coverMany(std::span<const std::int32_t> crossings);
  void reach(int low, int high);
  void coverSpan(int from, int to);
  std::span<const int> takeShares();

  int width_;
  int rows_;
  int row_ = 0;
  int lastRow_ = -1;
  std::vector<std::vector<Edge>> starting_;  // by the row of their first line
  std::vector<Edge> active_;
  // Of each line of a row: the first sample to the right of an edge, times two, and the direction.
  std::vector<std::int32_t> crossings_;
  std::vector<std::int32_t> windings_;  // by how much the winding changes before each sample
  std::vector<int> changes_;            // of the covered share, from each pixel to the next
  std::vector<int> shares_;
  int first_ = 0;  // pixels of the row that may be covered
  int last_ = -1;
};

}  // namespace render
