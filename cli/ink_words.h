// The words of `penwick ink`, checked and carried out.
#pragma once

#include <string>

#include "cli/report.h"

namespace cli {

/// The words of `penwick ink` as they were given.
struct InkWords {
  std::string file;
  std::string output = "-";
  std::string kind;
  bool force = false;
  bool quiet = false;
  bool rescue = false;
};

/// Shows the file, or reports what is wrong with the words.
ExitStatus run(const InkWords& words);

}  // namespace cli
