// The command `penwick packets`.
#pragma once

#include <filesystem>
#include <optional>

#include "cli/recording.h"
#include "cli/report.h"

namespace cli {

struct PacketsOptions {
  std::filesystem::path file;
  std::optional<FileKind> kind;  ///< Overrides name and contents.
  bool json = false;             ///< One object for each line, instead of words.
};

/// `penwick packets`: a pen recording packet by packet as it comes, or the elements of an ink
/// document. Damage is marked where it lies. Done where the reader gets to the end.
ExitStatus listPackets(const PacketsOptions& options);

}  // namespace cli
