// A small picture of a recording, as file managers show it.
#pragma once

#include <filesystem>

#include "cli/report.h"

namespace cli {

/// The sides that a thumbnail may have, in pixels.
inline constexpr int kSmallestThumbnail = 1;
inline constexpr int kLargestThumbnail = 4096;

/// Opens the recording with the plug-in and writes a PNG of what was drawn, on white, in the middle
/// and with a margin; its longer side has `size` pixels. A recording without strokes gives its
/// empty sheet. The bytes go into `target` itself, never into a new file that takes its place: some
/// programs keep the file open and read that very one. Nothing is written before the picture is
/// whole; where something goes wrong, one line on standard error says what.
ExitStatus makeThumbnail(const std::filesystem::path& file, const std::filesystem::path& target,
                         int size);

}  // namespace cli
