// What can be saved of a damaged recording, whatever its kind.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/recording.h"
#include "rescue/rescued.h"

namespace cli {

/// What could be saved of one recording. One that is sound needs no mending.
struct Rescued : rescue::Rescued {
  FileKind kind = FileKind::pen;
  /// Where nothing was saved: why, in one sentence. Otherwise empty.
  std::string problem;
  std::vector<std::string> repairs;  ///< What was put right, a few words each.
};

/// Reads a file and saves what can be saved of it.
Rescued rescueRecording(const std::filesystem::path& file, FileKind kind,
                        rescue::Mend mend = rescue::Mend::damaged);

/// What was kept and lost and where, such as "3 of about 5 points kept, 1 stretch left out (bytes
/// 10-22)".
std::string describe(const Rescued& rescued);

/// A sentence about a damaged recording, with what `penwick rescue` would save of it. Unchanged for
/// an empty sentence, a sound recording, one of more than 64 MiB, and where nothing can be saved.
std::string withRescue(std::string sentence, const std::filesystem::path& file, FileKind kind);

/// What was left out of a whole recording, in one sentence, and what `penwick rescue` would save of
/// it where it is damaged; empty where nothing was left out.
std::string omissionsOf(const Recording& recording, const std::filesystem::path& file);

}  // namespace cli
