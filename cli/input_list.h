// The recordings that a command is given, by their names or in folders.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/recording.h"

namespace cli {

/// One recording to work on, or a folder that gives none.
struct Input {
  std::filesystem::path file;
  /// The folders between the one that was named and the recording; empty for one that was named
  /// itself.
  std::filesystem::path below = {};
  std::optional<FileKind> kind = {};  ///< In a folder, what the ending says in any case of letters.
  std::optional<std::string> problem = {};  ///< Why this folder cannot be worked through.
};

/// What a person should know about a folder.
struct FolderRemark {
  std::filesystem::path folder;
  std::string sentence;
};

struct InputList {
  std::vector<Input> inputs;
  std::vector<FolderRemark> remarks;
};

/// The recordings that `names` stand for: a folder gives those in it and in its folders, in the
/// order of their names. Links in a folder are not followed, which a remark says. Hidden files are
/// left out, as by the patterns of a shell. So is the folder `resultsFolder`, whose recordings are
/// results; it cannot be worked through itself. Empty: the results are no recordings. Each file
/// comes once, however often its name is given.
InputList listInputs(const std::vector<std::filesystem::path>& names,
                     const std::filesystem::path& resultsFolder = {});

}  // namespace cli
