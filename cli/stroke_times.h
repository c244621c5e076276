// The times of the strokes that become paths.
#pragma once

#include <filesystem>

#include "cli/recording.h"
#include "web/replay_times.h"

namespace cli {

/// Replaces the times of `document`, which was read whole from the pen recording `file`, with the
/// pen's own clock, see `facts::setPenTimes`. False where the file has changed since.
bool takePenTimes(Orvo::Document& document, const std::filesystem::path& file);

/// The times of the strokes of two or more points, which are those that the plug-in draws, in
/// order; `file` is the one that the recording was read from. Times are those of an ink document,
/// and for a pen recording its own clock, see `takePenTimes`, which `recording` then holds,
/// too. Empty where the recording is not whole or the file has changed.
web::StrokeTimes strokeTimes(const Recording& recording, const std::filesystem::path& file);

}  // namespace cli
