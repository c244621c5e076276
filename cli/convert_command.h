// The command `penwick convert`.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "cli/outputs.h"
#include "cli/recording.h"
#include "cli/report.h"

namespace cli {

struct ConvertOptions {
  std::vector<std::filesystem::path> files;
  OutputPlan outputs;
  std::optional<FileKind> kind;  ///< Overrides the kinds that the names suggest.
  bool exact = false;            ///< Keep the fractions of coordinates.
  bool quiet = false;
};

/// `penwick convert`: recordings as ink documents. The document is complete in itself: it declares
/// the context to which its traces refer. It is read back before it is put in place: one that does
/// not open is an error, one that comes back with other values gets a warning.
ExitStatus convertFiles(const ConvertOptions& options);

}  // namespace cli
