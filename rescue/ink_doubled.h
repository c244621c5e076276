// Runs of bytes that stand twice in a row in an ink document.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "rescue/ink_strokes.h"

namespace rescue {

/// The second of two equal runs of bytes.
struct DoubledBytes {
  std::size_t begin;
  std::size_t end;
};

/// Doubled runs of a point and more, where something is wrong between two points: a gap, or time
/// that runs backwards. In order, not overlapping.
std::vector<DoubledBytes> doubledPoints(std::string_view bytes, std::span<const InkPoint> points,
                                        std::span<const InkRegion> regions,
                                        const InkHabits& habits);

/// Doubled runs of a few bytes around the given places, in order and not overlapping.
std::vector<DoubledBytes> doubledBytesAt(std::string_view bytes,
                                         std::span<const std::size_t> places);

}  // namespace rescue
