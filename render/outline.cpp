#include "render/outline.h"

#include <algorithm>
#include <cmath>

#include "render/contours.h"
#include "render/sweep.h"

namespace render {

namespace {

// The shares of the tolerance, besides the flatness; the rest is for the rounding.
constexpr double kThinning = 0.3 * kTolerance;
constexpr double kEdges = 0.3 * kTolerance;

void include(Extent& extent, const Place& place, const Stamp& stamp) {
  if (stamp.roundness == 1) {
    extent.include(place, stamp.radius, stamp.radius);
    return;
  }
  const double cosine = std::cos(stamp.angle);
  const double sine = std::sin(stamp.angle);
  extent.include(place, stamp.radius * std::hypot(cosine, stamp.roundness * sine),
                 stamp.radius * std::hypot(sine, stamp.roundness * cosine));
}

}  // namespace

void Extent::include(const Place& place, double halfWidth, double halfHeight) {
  left = std::min(left, place.h - halfWidth);
  right = std::max(right, place.h + halfWidth);
  bottom = std::min(bottom, place.v - halfHeight);
  top = std::max(top, place.v + halfHeight);
}

void Extent::include(const Extent& other) {
  left = std::min(left, other.left);
  right = std::max(right, other.right);
  bottom = std::min(bottom, other.bottom);
  top = std::max(top, other.top);
}

Outline Outliner::outline(const art::Path& path, const Nib& nib, std::optional<double> pressure) {
  Outline outline;
  const std::vector<Vertex>& vertices = spine_.follow(path, pressure);
  if (vertices.empty()) return outline;
  const Stamp any = nib.at(0);
  const bool changes = nib.changesShape();
  const Squeeze squeeze = changes ? Squeeze(grid_, 1, 0) : Squeeze(grid_, any.roundness, any.angle);
  Contours contours(squeeze, outline.contours);
  stations_.clear();
  for (const Vertex& vertex : vertices) {
    const Stamp stamp = nib.at(vertex.pressure);
    include(outline.extent, vertex.place, stamp);
    if (!changes) stations_.push_back(squeeze.station(vertex.place, stamp.radius));
  }
  if (changes) {
    sweepEllipses(vertices, nib, kEdges, contours);
  } else {
    thin(stations_, kThinning);
    sweepDiscs(stations_, kEdges, contours);
  }
  return outline;
}

}  // namespace render
