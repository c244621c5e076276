#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "cli/outputs.h"
#include "cli/progress.h"

namespace cli {

/// The files of one command, one after the other: where each result goes, and what is said of it.
class Batch {
 public:
  using Work =
      std::function<bool(const std::filesystem::path& file, const std::filesystem::path& target)>;

  Batch(std::vector<std::filesystem::path> files, const OutputPlan& plan, bool quiet);

  /// Does `work` with every file whose result may be written to its target. A file that fails does
  /// not keep the others from being done; true when none failed.
  bool run(const Work& work);

  /// Reports an error. False, so that work can end with it.
  bool fail(const std::filesystem::path& file, const std::string& sentence);
  /// Reports a warning, also where little is to be said.
  void warn(const std::filesystem::path& file, const std::string& sentence);
  /// The same, where there is one and more than errors is to be said.
  void mention(const std::filesystem::path& file, const std::string& sentence);
  /// Writes a result; reports what kept it from being written.
  bool write(const std::filesystem::path& target, const std::string& bytes);
  /// Says what was done: on standard output, unless the result itself went there.
  void sayDone(const std::filesystem::path& file, const std::filesystem::path& target,
               const std::string& summary);
  /// Prints lines that are not the command's own on standard error.
  void show(const std::string& text);

 private:
  bool begin(const std::filesystem::path& file, const std::filesystem::path& target);

  std::vector<std::filesystem::path> files_;
  Outputs outputs_;
  std::filesystem::path folder_;
  bool quiet_;
  Progress progress_;
};

}  // namespace cli
