// The line that a brush follows: flattened, with the pressure at each of its places.
#pragma once

#include <optional>
#include <vector>

#include "art/document.h"

namespace render {

struct Place {
  double h = 0;
  double v = 0;
};

/// A place of a path and the pressure there, 0 to 1.
struct Vertex {
  Place place;
  double pressure = 0;
};

/// How far a flattened line may lie from the curve, in points.
inline constexpr double kFlatness = 0.001;

/// The path as straight pieces, start and end included, closed paths back to their start. Points
/// that are not numbers are left out; coordinates are clamped to ±1e7 pt.
void flatten(const art::Path& path, std::vector<Place>& line);

/// The flattened path with the pressure at every place where direction or pressure changes.
/// Pressure runs linearly over the length of the line between the samples; repeated offsets are
/// taken in order, the first and the last value hold beyond their samples, and values are clamped
/// to 0 to 1. Without samples the pressure is 0.5, the brush's own size. `pressure` replaces the
/// samples where the path has no pressure.
class Spine {
 public:
  /// Overwrites the last result; one object for many paths keeps its memory.
  const std::vector<Vertex>& follow(const art::Path& path, std::optional<double> pressure);

 private:
  struct Knot {
    double length;  ///< from the start of the line
    double pressure;
  };

  double measure();
  void tie(const art::Path& path, std::optional<double> pressure, double length);
  double pressureAt(std::size_t nextKnot, double length) const;

  std::vector<Place> line_;
  std::vector<double> lengths_;
  std::vector<Knot> knots_;
  std::vector<Vertex> vertices_;
};

/// Whether the path has any pressure: a tablet value above 0.
bool hasPressure(const art::Path& path);

/// Whether the document has tablet data but no pressure at all: a brush driven by pressure then
/// draws hairlines.
bool lacksPressure(const art::Document& document);

}  // namespace render
