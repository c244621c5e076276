#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/outputs.h"
#include "cli/report.h"
#include "render/options.h"

namespace cli {

/// The endings of the files that `open` writes, without the dot.
inline constexpr const char* kFormats[] = {"svg", "pdf", "png", "json"};
bool isFormat(std::string_view name);

struct OpenOptions {
  std::vector<std::filesystem::path> files;
  OutputPlan outputs;
  render::Options picture;
  std::optional<std::filesystem::path> journal;  ///< For one file.
  std::filesystem::path module;  ///< Empty: the module that belongs to this program.
  bool quiet = false;
  bool verbose = false;
  bool builtInLibrary = true;
};

/// `penwick open`: every file through the plug-in, each with a fresh load of the module, and what
/// it drew into a file. The plug-in decides what opens; a file that does not open is explained and
/// the others are still done.
ExitStatus openFiles(const OpenOptions& options);

}  // namespace cli
