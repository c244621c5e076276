// The words of `penwick open`, checked and carried out.
#pragma once

#include <optional>
#include <string>

#include "cli/output_words.h"
#include "cli/report.h"

namespace cli {

/// The words of `penwick open` as they were given.
struct OpenWords : OutputWords {
  std::string format;
  std::string journal;
  std::string module;
  std::string logFolder;
  std::optional<std::string> style;
  std::optional<std::string> background;
  std::optional<std::string> size;
  std::optional<double> pressure;
  std::optional<double> dpi;
  bool verbose = false;
  bool rescue = false;
  bool noLibrary = false;
};

/// Opens the files, or reports what is wrong with the words.
ExitStatus run(const OpenWords& words);

}  // namespace cli
