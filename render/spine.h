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
/// that are not numbers are left out; what lies further out than the picture can hold is brought
/// to its rim.
void flatten(const art::Path& path, std::vector<Place>& line);

/// The flattened path with the pressure at every place where direction or pressure changes.
/// Pressure runs linearly over the length of the line between the samples; repeated offsets are
/// taken in order, before the first and behind the last sample their values are held, and values
/// are brought into 0 to 1. Without samples the pressure is 0.5, the brush's own size. `pressure`
/// takes the place of the samples where the path has no pressure.
class Spine {
 public:
  /// Overwrites what was there; kept between paths for its memory.
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

/// Whether the path tells of any pressure: a tablet value above 0.
bool hasPressure(const art::Path& path);

/// Whether nothing in the document tells of pressure though tablet data is there: with a brush
/// driven by pressure it is drawn in hairlines.
bool lacksPressure(const art::Document& document);

}  // namespace render
