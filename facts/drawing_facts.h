// What there is to say about the drawing of a recording.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/document.h"

namespace facts {

template <class Number>
struct Range {
  Number least;
  Number most;

  bool operator==(const Range&) const = default;
};

struct LayerFacts {
  std::string name;  ///< The layer's annotation "name"; empty without one.
  std::uint64_t strokes = 0;
  std::uint64_t points = 0;

  bool operator==(const LayerFacts&) const = default;
};

/// The box around all points, in ink units of 0.1 mm from the upper left corner of the sheet.
struct Extent {
  double left;
  double top;
  double right;
  double bottom;

  bool operator==(const Extent&) const = default;
};

struct DrawingFacts {
  std::vector<LayerFacts> layers;  ///< Bottom to top.
  std::uint64_t strokes = 0;
  std::uint64_t points = 0;
  std::uint64_t singlePoints = 0;   ///< Strokes of one point.
  std::uint64_t longestStroke = 0;  ///< The most points of a stroke.
  double length = 0;                ///< Of all strokes, from point to point, in ink units.
  std::optional<Extent> extent;     ///< Nothing without points.
  std::optional<Range<std::int32_t>> pressure;  ///< Nothing where every point has pressure 0.
  std::optional<Range<std::int32_t>> tiltX;     ///< Nothing where no point has any tilt.
  std::optional<Range<std::int32_t>> tiltY;     ///< Likewise.
};

/// Pressures are taken as signed numbers, which is what they are in both kinds of files.
DrawingFacts drawingFactsOf(const Orvo::Document& document);

/// How long a recording took, in counts of the pen's own clock. Their unit is not known.
struct ClockFacts {
  std::uint64_t penDown =
      0;                    ///< In each stroke from the earliest time to the latest, all together.
  std::uint64_t whole = 0;  ///< From the earliest time of all to the latest.

  bool operator==(const ClockFacts&) const = default;
};

/// From the times of the points, but for the first `untimed` ones. Nothing where every time is 0.
std::optional<ClockFacts> clockFactsOf(const Orvo::Document& document, std::size_t untimed = 0);

}  // namespace facts
