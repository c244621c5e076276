// The folder for the plug-in's log.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace cli {

/// The folder in which the plug-in runs, since it writes its log to the current folder: the user's
/// state folder, created if missing. Empty where it cannot be created; then there is no log.
std::filesystem::path makeOwnLogFolder();

/// Creates the folder that the user names for the log. One sentence where no log can be written
/// there.
std::optional<std::string> prepareLogFolder(const std::filesystem::path& folder);

}  // namespace cli
