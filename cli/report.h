#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace cli {

/// What the command answers to the shell.
enum class ExitStatus {
  done = 0,
  failed = 1,  ///< Something could not be opened or written; the rest was done.
  wrongUsage = 2,
};

/// A file's name as it is printed and as the system's narrow calls take it; UTF-8 on Windows.
std::string nativeName(const std::filesystem::path& path);

/// The path that a word of the command line names; UTF-8 on Windows.
std::filesystem::path pathOf(std::string_view word);

/// A line with its control characters shown as '?', so that no file name moves the cursor.
std::string withoutControls(std::string line);

/// One line on standard error: "penwick: FILE: SENTENCE", without control characters.
void reportError(const std::filesystem::path& file, std::string_view sentence);

/// The same, "penwick: FILE: warning: SENTENCE".
void reportWarning(const std::filesystem::path& file, std::string_view sentence);

}  // namespace cli
