// The command `penwick rescue`.
#pragma once

#include "cli/batch_options.h"
#include "cli/report.h"

namespace cli {

struct RescueOptions : BatchOptions {
  bool json = false;      ///< A line of JSON for each file instead of one to read.
  bool thorough = false;  ///< Sound recordings are mended, too, where they look damaged.
};

/// `penwick rescue`: for each damaged recording a mended one of the same kind. Before it is put in
/// place, the plug-in and the readers open it. A sound recording is copied where a place for the
/// results was named, and otherwise left alone. `ExitStatus::failed` where nothing could be saved
/// of a file.
ExitStatus rescueFiles(const RescueOptions& options);

}  // namespace cli
