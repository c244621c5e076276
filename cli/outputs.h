// Where results go, and what they may overwrite.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "cli/input_list.h"

namespace cli {

/// What happens where a file of the result's name already exists.
enum class OnConflict {
  keep,     ///< It is kept; nothing is done.
  replace,  ///< It is replaced, even if it is a recording.
  number,   ///< It is kept, and the result gets a number.
};

/// Where the results of one or more files go.
struct OutputPlan {
  std::optional<std::filesystem::path> output;  ///< For one file; "-" is standard output.
  std::filesystem::path folder;  ///< Otherwise the results go here, named after their files.
  /// The ending of those results, without the dot; empty where nothing is written.
  std::string ending;
  /// Instead of `ending`: each result has that of its file.
  bool keepsEndings = false;
  std::string mark;  ///< Goes between the name and its ending, such as ".rescued".
  /// Nothing: a file that `output` names is replaced unless it is a recording; others are kept.
  std::optional<OnConflict> onConflict;
};

/// The same name for a file by whatever path it is reached.
std::filesystem::path canonicalName(const std::filesystem::path& file);

/// Whether two names stand for one file or both for standard output.
bool isOneFile(const std::filesystem::path& one, const std::filesystem::path& other);

/// Whether a file has the ending of a recording: .pnx, .eli, .kvo or .inkml, in any case of
/// letters.
bool isNamedAsRecording(const std::filesystem::path& file);

/// Why the result of `file` may not go to `target`: it is the file itself, or a recording that
/// already exists and `force` is not set.
std::optional<std::string> refusalToOverwrite(const std::filesystem::path& file,
                                              const std::filesystem::path& target, bool force);

/// Where one result goes.
struct Place {
  std::filesystem::path target;
  bool isKept = false;                      ///< What is there is kept; there is nothing to do.
  std::optional<std::string> refusal = {};  ///< Why nothing may be written there.
};

/// Chooses the places of the results. An input is never overwritten.
class Outputs {
 public:
  Outputs(OutputPlan plan, const std::vector<Input>& inputs);

  /// Creates the folder if it is missing; gives one sentence where that fails.
  std::optional<std::string> prepare() const;
  /// Creates the folders that keep the structure of the inputs, for a result that goes to `target`.
  void makeFoldersFor(const std::filesystem::path& target) const;

  /// Where the result of an input goes, as things are now. An empty target where nothing is
  /// written.
  Place placeFor(std::size_t input) const;

 private:
  std::vector<std::filesystem::path> endsOfNames(const std::vector<Input>& inputs) const;
  std::filesystem::path numbered(const std::filesystem::path& target) const;

  OutputPlan plan_;
  std::vector<std::filesystem::path> files_;
  std::vector<std::filesystem::path> targets_;
  std::set<std::filesystem::path> planned_;  ///< All targets.
  std::set<std::filesystem::path> inputs_;   ///< With links resolved.
};

}  // namespace cli
