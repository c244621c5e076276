// Why the plug-in did not open a recording.
#pragma once

#include <filesystem>
#include <string>

#include "cli/plugin_run.h"

namespace cli {

/// One sentence for a run that gave no document: the call that failed, or what the plug-in's reader
/// did not take, and then what a rescue would save.
std::string explainUnopened(const PluginRun& run, const std::filesystem::path& file);

}  // namespace cli
