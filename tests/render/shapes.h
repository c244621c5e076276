// Paths to draw, and an independent look at their outlines.
#pragma once

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <vector>

#include "art/document.h"
#include "render/outline.h"

namespace render_tests {

struct At {
  double h = 0;
  double v = 0;
};

/// Straight from place to place.
inline art::Path straightPath(std::initializer_list<At> places) {
  art::Path path;
  for (const At& place : places) {
    const art::Point point{static_cast<float>(place.h), static_cast<float>(place.v)};
    path.segments.push_back({point, point, point, true});
  }
  return path;
}

inline art::Path withPressure(art::Path path, std::initializer_list<art::TabletSample> samples) {
  path.pressure = samples;
  return path;
}

/// Diameter 2 without pressure, 10 with all of it.
inline art::Style twoToTen() {
  art::Style style;
  style.brush = art::CalligraphicBrush{};
  style.brush->size = {.value = 6, .variation = 4, .driver = art::BrushDriver::pressure};
  return style;
}

inline render::Outline outlineOf(const art::Path& path, const art::Style& style = twoToTen(),
                                 std::optional<double> pressure = std::nullopt) {
  return render::Outliner().outline(path, render::Nib(&style), pressure);
}

/// How often the contours go around a place, by the crossings of a ray to the right.
inline int windingAt(const render::Outline& outline, const At& place) {
  int winding = 0;
  for (const render::Contour& contour : outline.contours) {
    for (std::size_t i = 0; i < contour.size(); ++i) {
      const render::Spot& a = contour[i];
      const render::Spot& b = contour[(i + 1) % contour.size()];
      const double v = place.v * 100;
      if ((a.v <= v) == (b.v <= v)) continue;
      const double share = (v - a.v) / (b.v - a.v);
      if (a.h + (b.h - a.h) * share > place.h * 100) winding += b.v > a.v ? 1 : -1;
    }
  }
  return winding;
}

inline bool covers(const render::Outline& outline, const At& place) {
  return windingAt(outline, place) != 0;
}

/// How far what is covered reaches from a covered place in a direction, in points: the first place
/// on the way that is not covered, to a thousandth.
inline double reach(const render::Outline& outline, const At& from, double degrees) {
  const double h = std::cos(degrees * std::numbers::pi / 180);
  const double v = std::sin(degrees * std::numbers::pi / 180);
  // Off the grid of hundredths, so that no ray meets a corner.
  const At start{from.h + 0.000137, from.v + 0.000213};
  const auto inside = [&](double distance) {
    return covers(outline, {start.h + h * distance, start.v + v * distance});
  };
  double far = 0;
  while (inside(far))
    far += 0.05;
  double near = std::max(far - 0.05, 0.0);
  while (far - near > 0.001) {
    const double middle = (near + far) / 2;
    (inside(middle) ? near : far) = middle;
  }
  return near;
}

/// Straight across at a covered place.
inline double widthAcross(const render::Outline& outline, const At& place, double degrees) {
  return reach(outline, place, degrees) + reach(outline, place, degrees + 180);
}

struct Disc {
  double h = 0;
  double v = 0;
  double radius = 0;
};

/// The share of the discs' area in which the outline and the union of the discs differ, by dots of
/// `grain` points. The discs must lie so close that their union has no notches.
inline double differingShare(const render::Outline& outline, const std::vector<Disc>& discs,
                             double grain) {
  double left = 1e9, right = -1e9, bottom = 1e9, top = -1e9;
  for (const Disc& disc : discs) {
    left = std::min(left, disc.h - disc.radius - 1);
    right = std::max(right, disc.h + disc.radius + 1);
    bottom = std::min(bottom, disc.v - disc.radius - 1);
    top = std::max(top, disc.v + disc.radius + 1);
  }
  int covered = 0;
  int differing = 0;
  const int rows = static_cast<int>((top - bottom) / grain);
  const int columns = static_cast<int>((right - left) / grain);
  for (int i = 0; i < rows * columns; ++i) {
    const double h = left + 0.00123 + i % columns * grain;
    const int row = i / columns;
    const double v = bottom + 0.00321 + row * grain;
    const bool wanted = std::ranges::any_of(discs, [&](const Disc& disc) {
      return (h - disc.h) * (h - disc.h) + (v - disc.v) * (v - disc.v) <= disc.radius * disc.radius;
    });
    covered += wanted ? 1 : 0;
    differing += wanted != covers(outline, {h, v}) ? 1 : 0;
  }
  return static_cast<double>(differing) / covered;
}

}  // namespace render_tests
