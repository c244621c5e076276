// The command `penwick convert`.
#pragma once

#include "cli/batch_options.h"
#include "cli/report.h"

namespace cli {

struct ConvertOptions : BatchOptions {
  bool exact = false;   ///< Keep the fractions of coordinates.
  bool rescue = false;  ///< Read what can be saved of damaged files.
};

/// `penwick convert`: recordings as ink documents. The document is complete in itself: it declares
/// the context to which its traces refer. It is read back before it is put in place: one that does
/// not open is an error, one that comes back with other values gets a warning.
ExitStatus convertFiles(const ConvertOptions& options);

}  // namespace cli
