// The command `penwick info`.
#pragma once

#include "cli/batch_options.h"
#include "cli/report.h"

namespace cli {

struct InfoOptions : BatchOptions {
  bool json = false;
};

/// `penwick info`: what is in each file, as a table or as one line of JSON. Of a pen recording that
/// its reader does not get to the end of, what lies before that place; then, and where nothing can
/// be read, the status is not done.
ExitStatus tellAboutFiles(const InfoOptions& options);

}  // namespace cli
