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
  std::optional<FileKind> kind;  ///< Instead of the kinds that the names tell.
  bool quiet = false;
};

/// `penwick convert`: recordings as ink documents. The document is complete in itself: it declares
/// the context to which its traces refer.
ExitStatus convertFiles(const ConvertOptions& options);

}  // namespace cli
