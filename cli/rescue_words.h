// The words of `penwick rescue`, checked and carried out.
#pragma once

#include "cli/output_words.h"
#include "cli/report.h"

namespace cli {

/// The words of `penwick rescue` as they were given.
struct RescueWords : OutputWords {
  bool json = false;
  bool thorough = false;
};

/// Mends the files, or reports what is wrong with the words.
ExitStatus run(const RescueWords& words);

}  // namespace cli
