// The words of `penwick convert`, checked and carried out.
#pragma once

#include "cli/output_words.h"
#include "cli/report.h"

namespace cli {

/// The words of `penwick convert` as they were given.
struct ConvertWords : OutputWords {
  bool exact = false;
  bool rescue = false;
};

/// Converts the files, or reports what is wrong with the words.
ExitStatus run(const ConvertWords& words);

}  // namespace cli
