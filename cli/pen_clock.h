// Times as the pen's own clock counts them.
#pragma once

#include <cstdint>
#include <filesystem>

#include "model/document.h"

namespace cli {

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

/// Replaces the time of every point with the pen's own count; `document` must have been read whole
/// from `file`. As in the reader, a time stamp sets the time of the last point so far and of those
/// that follow; one whose kind is not 17 is ignored. False when the
/// file does not hold as many points as the document.
bool setPenTimes(Orvo::Document& document, const std::filesystem::path& file);

}  // namespace cli
