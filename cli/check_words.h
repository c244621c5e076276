// The words of `penwick check`, checked and carried out.
#pragma once

#include "cli/output_words.h"
#include "cli/report.h"

namespace cli {

/// The words of `penwick check` as they were given.
struct CheckWords : InputWords {};

/// Checks the files, or reports what is wrong with the words.
ExitStatus run(const CheckWords& words);

}  // namespace cli
