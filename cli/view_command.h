// The command `penwick view`.
#pragma once

#include "cli/open_command.h"
#include "cli/report.h"

namespace cli {

/// `penwick view`: makes a page of every file, as `penwick open` does, in the user's cache folder,
/// and has the system's browser show it.
ExitStatus viewFiles(const OpenOptions& options);

}  // namespace cli
