// The words of `penwick info`, checked and carried out.
#pragma once

#include "cli/output_words.h"
#include "cli/report.h"

namespace cli {

/// The words of `penwick info` as they were given.
struct InfoWords : InputWords {
  bool json = false;
};

/// Tells about the files, or reports what is wrong with the words.
ExitStatus run(const InfoWords& words);

}  // namespace cli
