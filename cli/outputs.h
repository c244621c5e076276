// Where results go, and what they may overwrite.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace cli {

/// Where the results of one or more files go.
struct OutputPlan {
  std::optional<std::filesystem::path> output;  ///< For one file; "-" is standard output.
  std::filesystem::path folder;  ///< Otherwise the results go here, named after their files.
  std::string ending;            ///< The ending of those results, without the dot.
  bool replaceExisting = false;  ///< Otherwise files that exist are kept.
};

/// Whether two names stand for one file or both for standard output.
bool isOneFile(const std::filesystem::path& one, const std::filesystem::path& other);

/// Whether a file has the ending of a recording: .pnx, .eli, .kvo or .inkml, in any case of
/// letters.
bool isNamedAsRecording(const std::filesystem::path& file);

/// Why the result of `file` may not go to `target`: it is the file itself, or a recording that
/// already exists and `force` is not set.
std::optional<std::string> refusalToOverwrite(const std::filesystem::path& file,
                                              const std::filesystem::path& target, bool force);

/// Names results after their files. Where two files have the same name, the second gets a number:
/// a.svg, a-2.svg.
class Outputs {
 public:
  Outputs(OutputPlan plan, const std::vector<std::filesystem::path>& files);

  /// Creates the folder if it is missing; gives one sentence where that fails.
  std::optional<std::string> prepare() const;

  std::filesystem::path targetFor(const std::filesystem::path& file);

  /// Why the result of `file` may not go to `target`: it is one of the files to be read, or another
  /// file that must be kept.
  std::optional<std::string> refusal(const std::filesystem::path& file,
                                     const std::filesystem::path& target) const;

 private:
  OutputPlan plan_;
  std::set<std::filesystem::path> inputs_;  ///< With links resolved.
  std::set<std::filesystem::path> taken_;
};

}  // namespace cli
