// Runs the plug-in on one file in an embedded host.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "art/document.h"
#include "embedded/output_capture.h"

namespace cli {

/// What the plug-in did with one file, in a host of its own.
struct PluginRun {
  std::optional<art::Document> document;  ///< Nothing when the plug-in did not open the file.
  bool readNothing = false;  ///< No call failed, but the plug-in's reader gave it no document.
  std::string refusal;       ///< Where a call failed: one sentence with the call and its code.
  std::string notes;         ///< What else a person should know, as one sentence.
  std::string journal;       ///< JSON lines.
  embedded::CapturedOutput printed;
};

struct PluginRunOptions {
  std::filesystem::path module;
  /// The folder in which the plug-in runs and leaves its log; empty: it leaves none.
  std::filesystem::path logFolder;
  bool builtInLibrary = true;
  bool journal = false;
};

/// Loads the module afresh, sends it every message from loading to unloading, and has it open
/// `file`. Throws `std::bad_alloc` where the plug-in gives up because memory ran out.
PluginRun runPlugin(const std::filesystem::path& file, const PluginRunOptions& options);

}  // namespace cli
