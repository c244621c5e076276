#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace cli {

/// Where the results of several files go.
struct OutputPlan {
  std::optional<std::filesystem::path> output;  ///< For one file; "-" is standard output.
  std::filesystem::path folder;  ///< Otherwise: where results named after their files go.
  std::string format;            ///< Their ending, without the dot.
  bool replaceExisting = false;  ///< Named results never replace a file unasked.
};

/// Whether two names stand for one file or both for standard output.
bool isOneFile(const std::filesystem::path& one, const std::filesystem::path& other);

/// Why what `file` holds may not be replaced by a result at `target`, if it is the same file.
std::optional<std::string> refusalToOverwrite(const std::filesystem::path& file,
                                              const std::filesystem::path& target);

/// Names results after their files; two files of one name get a number: a.svg, a-2.svg.
class Outputs {
 public:
  explicit Outputs(OutputPlan plan) : plan_(std::move(plan)) {}

  /// Makes the folder where it is missing; one sentence when that cannot be done.
  std::optional<std::string> prepare() const;

  std::filesystem::path targetFor(const std::filesystem::path& file);

  /// Why the result of `file` may not go to `target`: it is the file itself, or is there already
  /// and kept.
  std::optional<std::string> refusal(const std::filesystem::path& file,
                                     const std::filesystem::path& target) const;

 private:
  OutputPlan plan_;
  std::set<std::filesystem::path> taken_;
};

}  // namespace cli
