#pragma once

#include <cstddef>
#include <vector>

#include "rescue/pen_habits.h"
#include "rescue/pen_source.h"

namespace rescue {

/// A packet of a reading, by its place in the source.
struct ReadPacket {
  std::size_t offset;
  std::size_t length;
  /// Where a byte 0D is missing before a 0A, its place; 0 otherwise. `length` is then one less than
  /// the packet's.
  std::size_t missingReturn = 0;
};

/// The most plausible way to read all of the bytes: packets in order; what lies between them,
/// before and behind them could not be read.
struct PenReading {
  std::vector<ReadPacket> packets;
  /// How many bits better this reading describes the bytes than none would.
  double gain = 0;
};

/// `returnsWereRemoved`: packets in which a 0D before a 0A is missing are looked for, too. Takes
/// time in proportion to the bytes.
PenReading readPlausibly(PenBytes bytes, const PenHabits& habits, bool returnsWereRemoved = false);

}  // namespace rescue
