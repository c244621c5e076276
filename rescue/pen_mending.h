#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rescue/pen_habits.h"
#include "rescue/pen_reading.h"
#include "rescue/pen_rescue.h"

namespace rescue {

/// What a reading is made from.
struct PenMendingInput {
  const Source& source;
  const PenHabits& habits;
  const PenReading& reading;
  /// The bytes before the tags were restored, where bytes from 80 up had turned into "?"; otherwise
  /// nothing. As long as the source.
  std::optional<std::string_view> withQuestionMarks;
};

/// Puts the packets of a reading together to a recording that opens whole and joins nothing that
/// did not belong together, and adds to `result` what was done.
void mendPenRecording(const PenMendingInput& input, PenRescue& result);

}  // namespace rescue
