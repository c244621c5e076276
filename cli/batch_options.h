// What commands that take several files have in common.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

#include "cli/ink_view.h"
#include "cli/outputs.h"
#include "cli/recording.h"

namespace cli {

struct BatchOptions {
  std::vector<std::filesystem::path> files;  ///< Recordings, and folders of them.
  OutputPlan outputs;
  std::optional<FileKind> kind;  ///< Overrides names and contents.
  InkTreatment ink;              ///< For commands that translate ink documents.
  std::size_t jobs = 0;          ///< So many files at a time; 0: as many as there are processors.
  std::optional<double> timeLimit;  ///< Seconds of processor time for each file.
  bool quiet = false;
};

}  // namespace cli
