// The command `penwick check`.
#pragma once

#include "cli/batch_options.h"
#include "cli/report.h"

namespace cli {

/// `quiet` leaves out the files about which there is nothing to say.
struct CheckOptions : BatchOptions {};

/// `penwick check`: one line for each file on standard output, whether it is sound, what is wrong
/// with it and what a rescue would save. The plug-in decides what opens. Done only where all files
/// are sound.
ExitStatus checkFiles(const CheckOptions& options);

}  // namespace cli
