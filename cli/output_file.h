#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// Writes the whole of `bytes` to a file, or to standard output where `target` is "-". A file
/// appears whole or not at all: it is written beside its place and renamed, and
/// has the permissions of the one that it replaces. What is there already
/// and is no plain file (a device, a pipe) is written to as it stands. Gives the sentence that says
/// what went wrong; nothing is then left behind.
std::optional<std::string> writeOutput(const std::filesystem::path& target, std::string_view bytes);

inline bool isStandardOutput(const std::filesystem::path& target) {
  return target == "-";
}

}  // namespace cli
