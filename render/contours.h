// Collects the points of one outline.
#pragma once

#include <cstddef>
#include <vector>

#include "render/outline.h"
#include "render/stations.h"

namespace render {

/// Maps every stamp of a brush of fixed shape to a disc, and outlines of discs back to the brush.
class Squeeze {
 public:
  /// `roundness` above 0; `angle` in radians.
  Squeeze(const Grid& grid, double roundness, double angle);

  Station station(const Place& place, double radius) const;
  Spot spot(double x, double y) const;

 private:
  Grid grid_;
  double cosine_;
  double sine_;
  double roundness_;
};

class Contours {
 public:
  /// Both must outlive this.
  Contours(const Squeeze& squeeze, std::vector<Contour>& contours)
      : squeeze_(squeeze), contours_(contours) {}

  void begin(std::size_t expectedPoints);
  void point(double x, double y);
  /// A contour that is too small to cover anything is left out.
  void end();

 private:
  const Squeeze& squeeze_;
  std::vector<Contour>& contours_;
  Contour* contour_ = nullptr;
};

}  // namespace render
