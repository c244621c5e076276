// Showing a page to the user.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Has the system show each file in the program that the user has for its kind: natively through
/// `xdg-open`, all at the same time, and returns when each was handed over, which may be when its
/// program ends. For each file why it could not be shown, in a few words, or nothing.
std::vector<std::optional<std::string>> showFiles(const std::vector<std::filesystem::path>& files);

}  // namespace platform
