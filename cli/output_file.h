// Writing a result to a file or to standard output.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// Writes the whole of `bytes` to a file, or to standard output where `target` is "-". A file
/// appears whole or not at all: it is written beside its place and renamed, and has the permissions
/// of the one that it replaces. A link stays, and the file that it names is written, whether it
/// exists or not. What is not a regular file (a device, a pipe) is written to directly. Gives one
/// sentence where something went wrong; then nothing is left behind.
std::optional<std::string> writeOutput(const std::filesystem::path& target, std::string_view bytes);

inline bool isStandardOutput(const std::filesystem::path& target) {
  return target == "-";
}

/// The file that a link leads to, which need not exist; any other name unchanged.
std::filesystem::path behindLinks(const std::filesystem::path& file);

}  // namespace cli
