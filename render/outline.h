// What a brush covers on its way along a path, as one filled outline.
#pragma once

#include <limits>
#include <optional>
#include <vector>

#include "art/document.h"
#include "render/nib.h"
#include "render/spine.h"
#include "render/stations.h"

namespace render {

/// A point in whole steps of a grid; v grows upward, as in the host.
struct Spot {
  int h = 0;
  int v = 0;
  friend bool operator==(const Spot&, const Spot&) = default;
};

/// Closed; clockwise with v upward.
using Contour = std::vector<Spot>;

/// A rectangle in points; empty while left is not below right.
struct Extent {
  double left = std::numeric_limits<double>::max();
  double bottom = std::numeric_limits<double>::max();
  double right = std::numeric_limits<double>::lowest();
  double top = std::numeric_limits<double>::lowest();

  void include(const Place& place, double halfWidth, double halfHeight);
  void include(const Extent& other);
};

/// What lies inside by the nonzero rule. Almost always one contour, which may cross itself; more
/// where one stamp of the brush lies wholly inside the next.
struct Outline {
  std::vector<Contour> contours;
  Extent extent;  ///< of what the brush covers, before any rounding
};

/// How far an outline may lie from the edge of what the brush covers, in points: less than anyone
/// can see in print.
inline constexpr double kTolerance = 0.02;

/// How finely pictures are drawn: in hundredths of a point, or in thousandths where lines are so
/// thin that hundredths would show.
struct Grid {
  int stepsPerPoint = 100;

  /// The nearest spot; NaN counts as 0, and coordinates are clamped to ±1e9 steps.
  Spot spot(double h, double v) const;
  Spot spot(const art::Point& point) const { return spot(double{point.h}, double{point.v}); }
  double points(int steps) const { return static_cast<double>(steps) / stepsPerPoint; }
};

/// Makes outlines; one object for many paths keeps its memory.
class Outliner {
 public:
  explicit Outliner(const Grid& grid = {}) : grid_(grid) {}

  /// The area that `nib` covers when it is moved along the path: its stamps at all places, diameter
  /// and shape by the pressure there (see `Spine`). A path of no length is one stamp, of its
  /// heaviest pressure; a path without segments has an empty outline.
  Outline outline(const art::Path& path, const Nib& nib,
                  std::optional<double> pressure = std::nullopt);

 private:
  Grid grid_;
  Spine spine_;
  std::vector<Station> stations_;
};

}  // namespace render
