// The words about inputs and results that several commands share.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/batch_options.h"

namespace cli {

/// The words of a command that reads several files, as they were given.
struct InputWords {
  std::vector<std::string> files;
  std::string kind;
  bool translate = false;
  std::optional<double> unit;
  std::size_t jobs = 0;
  std::optional<double> timeLimit;
  bool quiet = false;
};

/// The words of a command that also writes a result for each.
struct OutputWords : InputWords {
  std::string output;
  std::string folder;
  std::string onConflict;
  bool force = false;
};

/// The paths that words name.
std::vector<std::filesystem::path> pathsOf(const std::vector<std::string>& words);

/// Whether a word names a folder.
bool isFolder(const std::string& word);

/// The kind that "pen", "inkml" or "inkml-subset" stands for; nothing for any other word.
std::optional<FileKind> kindOf(const std::string& word);

/// Takes the words about the files that are read.
void take(const InputWords& words, BatchOptions& options);

/// What is wrong with these words, or nothing.
std::string wrongInputs(const InputWords& words);

/// Takes the words that several commands share, but for the ending of the results.
void take(const OutputWords& words, BatchOptions& options);

/// What is wrong with these words, or nothing.
std::string wrongOutputs(const OutputWords& words);

/// The name of the format that is asked for by its option, else by the ending of the output, else
/// the usual one.
std::string formatOf(const std::string& asked, const OutputWords& words, const char* usual);

/// What is wrong with the name of a file that gets JSON, or nothing: its ending may be any but that
/// of a picture or a recording. `content` says what the file gets, such as "a journal".
std::string wrongEnding(const std::string& output, const std::string& content);

}  // namespace cli
