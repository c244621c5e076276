// The words of `penwick packets`, checked and carried out.
#pragma once

#include <string>

#include "cli/report.h"

namespace cli {

/// The words of `penwick packets` as they were given.
struct PacketsWords {
  std::string file;
  std::string kind;
  bool json = false;
};

/// Lists the packets of the file.
ExitStatus run(const PacketsWords& words);

}  // namespace cli
