// Exit status and one-line messages.
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

/// The ending of a file's name without its dot; empty where it has none.
std::string endingOf(const std::filesystem::path& path);

/// One line with its line feed, "penwick: FILE: SENTENCE", with nothing in it that could confuse a
/// terminal.
std::string errorLine(const std::filesystem::path& file, std::string_view sentence);

/// The same, "penwick: FILE: warning: SENTENCE".
std::string warningLine(const std::filesystem::path& file, std::string_view sentence);

/// The same, "penwick: FILE: note: SENTENCE".
std::string noteLine(const std::filesystem::path& file, std::string_view sentence);

/// Prints on standard error, and needs no memory. Where that cannot be written, nobody can be told.
void say(std::string_view text);

/// Says "penwick: there is not enough memory".
void reportNotEnoughMemory();

/// Says "penwick: SENTENCE", of no file.
void reportError(std::string_view sentence);

/// Prints an error line on standard error.
void reportError(const std::filesystem::path& file, std::string_view sentence);

/// Prints a warning line on standard error.
void reportWarning(const std::filesystem::path& file, std::string_view sentence);

/// Prints a note line on standard error.
void reportNote(const std::filesystem::path& file, std::string_view sentence);

/// Says what is wrong with the command line, "penwick: SENTENCE"; gives the exit status for that.
ExitStatus wrongUsage(std::string_view sentence);

}  // namespace cli
