// The words about inputs and results that several commands share.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/outputs.h"
#include "cli/recording.h"

namespace cli {

/// The words of a command that reads several files and writes a result for each, as they were
/// given.
struct OutputWords {
  std::vector<std::string> files;
  std::string kind;
  std::string output;
  std::string folder;
  bool force = false;
  bool quiet = false;
};

/// The paths that words name.
std::vector<std::filesystem::path> pathsOf(const std::vector<std::string>& words);

/// The kind that "pen" or "inkml" stands for; nothing for any other word.
std::optional<FileKind> kindOf(const std::string& word);

/// Where the results go, but for their ending.
OutputPlan planOf(const OutputWords& words);

/// What is wrong with the places given for the results, or nothing.
std::string wrongOutputs(const OutputWords& words);

/// The name of the format that is asked for by its option, else by the ending of the output, else
/// the usual one.
std::string formatOf(const std::string& asked, const OutputWords& words, const char* usual);

/// What is wrong with the name of a file that gets JSON, or nothing: its ending may be any but that
/// of a picture or a recording. `content` says what the file gets, such as "a journal".
std::string wrongEnding(const std::string& output, const std::string& content);

}  // namespace cli
