// The words of `penwick sheet`, checked and carried out.
#pragma once

#include "cli/output_words.h"
#include "cli/report.h"

namespace cli {

/// The words of `penwick sheet` as they were given.
struct SheetWords : InputWords {
  std::string output;
  std::string title = "Recordings";
  bool force = false;
};

/// Makes the sheet, or reports what is wrong with the words.
ExitStatus run(const SheetWords& words);

}  // namespace cli
