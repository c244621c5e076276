// The centre lines and times of strokes, packed for a replay page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "render/outline.h"

namespace web {

/// One stroke as the pen drew it.
struct ReplayStroke {
  std::size_t path = 0;  ///< Its number among the paths of the SVG.
  int width = 0;         ///< Not less than that of its outline.
  std::vector<render::Spot> line;
  std::vector<std::uint32_t> waits;  ///< As many as the line has points, see `waitsOf`.
};

/// The strokes as bytes. All numbers are whole and written with seven bits a byte, the lowest
/// first, the top bit set where more follow; those that can be negative with the sign in the lowest
/// bit (0, -1, 1, -2 as 0, 1, 2, 3). For each stroke: the number of its path less that of the one
/// after the stroke before, with a sign; the width; the number of points; and for each point how
/// far it lies to the right of the last one and how far below, with signs, and its wait. The first
/// one counts from the last point of the stroke before, that of the first stroke from 0, 0.
std::string packed(const std::vector<ReplayStroke>& strokes);

}  // namespace web
