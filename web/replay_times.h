// The rhythm of a replay: when the pen gets to each point of each stroke.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "art/document.h"

namespace web {

/// What the pen's clock showed at each point of each stroke, in milliseconds.
using StrokeTimes = std::vector<std::vector<std::uint32_t>>;

/// The longest that a replay waits for the next point or stroke, in milliseconds.
inline constexpr std::uint32_t kLongestPause = 500;
/// How long it waits for the next stroke where the clock does not tell.
inline constexpr std::uint32_t kUsualPause = 200;
/// How fast the pen goes where the clock does not tell, in points of length per millisecond: about
/// ten centimetres a second.
inline constexpr double kUsualSpeed = 0.3;

/// The milliseconds from point to point of each path, in the order of the paths. The first of a
/// path is the pause before it, none before the first path.
///
/// `times` are those of the same strokes, at least one for each segment of a path; a path that has
/// too few, whose clock stands still or falls, or that has no times at all, is drawn at an even
/// pace. Points that share a time are spread over the time until the next one.
std::vector<std::vector<std::uint32_t>> waitsOf(const std::vector<const art::Path*>& paths,
                                                const StrokeTimes& times);

/// The numbers of the strokes in the order in which the clock has them. A pen draws one stroke at a
/// time: where strokes would overlap, the clock is not one for all, and they stay as they are.
std::vector<std::size_t> orderOf(const StrokeTimes& times);

}  // namespace web
