// The words of `penwick view`, checked and carried out.
#pragma once

#include <optional>

#include "cli/output_words.h"
#include "cli/report.h"

namespace cli {

/// The words of `penwick view` as they were given.
struct ViewWords : InputWords {
  std::optional<double> pressure;
  bool rescue = false;
  bool messagesInPages = false;
};

/// Shows the drawings, or reports what is wrong with the words.
ExitStatus run(const ViewWords& words);

}  // namespace cli
