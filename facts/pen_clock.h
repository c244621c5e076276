// Times as the pen's own clock counts them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "facts/packet_reader.h"
#include "model/document.h"

namespace facts {

/// The pen's clock: a counter of 24 bits that starts again at 0 after 16,777,215. Read in this way,
/// it runs forward.
class PenClock {
 public:
  static constexpr std::uint32_t kTurn = 1U << 24U;

  /// The count since the recording began, from what the clock shows now (0 to `kTurn` - 1). A fall
  /// of more than half a turn means that the clock has started again; after any other fall the
  /// count falls too. It stops at 2147483647, the most that a trace format can declare.
  std::uint32_t count(std::uint32_t shown);

 private:
  std::uint32_t last_ = 0;
  std::uint64_t turns_ = 0;  // What the whole turns add to the count.
};

/// Collects the time of every point of a recording, packet by packet. As in the parser, a time
/// stamp sets the time of the last point so far and of those that follow, and points above the
/// sheet are left out; a stamp whose kind is not 17 is ignored.
class PenTimes {
 public:
  void add(const Packet& packet);

  /// In file order; 0 before the first time stamp.
  const std::vector<std::uint32_t>& points() const { return points_; }
  /// How many points, all of them at the start, have no time.
  std::size_t untimed() const { return hasTime_ ? untimed_ : points_.size(); }

 private:
  PenClock clock_;
  std::uint32_t time_ = 0;
  bool hasTime_ = false;
  std::size_t untimed_ = 0;
  std::vector<std::uint32_t> points_;
};

/// Whether the plug-in keeps a point: those above the sheet, with y below 0, are left out.
bool isOnSheet(const Packet& coordinate);

/// Replaces the time of every point with the pen's own count, where `times` are those of the
/// recording that `document` was read from. False when there are not as many as it has points.
bool setPenTimes(Orvo::Document& document, const PenTimes& times);

/// The same, where `document` was read whole from `recording`.
bool setPenTimes(Orvo::Document& document, NextBytes recording);

}  // namespace facts
