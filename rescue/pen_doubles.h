#pragma once

#include <cstddef>
#include <vector>

#include "rescue/pen_habits.h"
#include "rescue/pen_reading.h"
#include "rescue/pen_source.h"

namespace rescue {

/// The second of two equal runs of bytes that stand one behind the other.
struct DoubledRun {
  std::size_t begin;
  std::size_t end;
};

/// Long runs that damage doubled, wherever they are: inside a stroke or where `reading` stops, and
/// no more than a few, so that strokes which the recording itself holds twice are left alone.
std::vector<DoubledRun> longDoubledRuns(PenBytes bytes, const PenReading& reading,
                                        const PenHabits& habits);

/// Runs of any length whose second copy makes the reading stop.
std::vector<DoubledRun> doubledRunsAtGaps(PenBytes bytes, const PenReading& reading,
                                          const PenHabits& habits);

}  // namespace rescue
