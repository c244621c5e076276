// The command `penwick ink`.
#pragma once

#include <filesystem>
#include <optional>

#include "cli/recording.h"
#include "cli/report.h"

namespace cli {

struct InkOptions {
  std::filesystem::path file;
  std::filesystem::path output = "-";
  std::optional<FileKind> kind;    ///< Overrides the kind that the name suggests.
  bool replaceRecordings = false;  ///< Otherwise a recording at `output` is kept.
  bool quiet = false;
  bool rescue = false;  ///< Read what can be saved of damaged files.
};

/// `penwick ink`: the ink document of a recording as JSON. A recording that is not whole gives
/// none.
ExitStatus showInk(const InkOptions& options);

}  // namespace cli
