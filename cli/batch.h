// Works through the files that one command is given.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "cli/input_file.h"
#include "cli/outputs.h"
#include "cli/progress.h"

namespace cli {

/// Works through the files of one command: where each result goes, and what is printed about it.
class Batch {
 public:
  using Work =
      std::function<bool(const std::filesystem::path& file, const std::filesystem::path& target)>;

  /// `kind`, where given, decides how the files are read, instead of their names and contents.
  Batch(std::vector<std::filesystem::path> files, const OutputPlan& plan, bool quiet,
        std::optional<FileKind> kind = {});

  /// Calls `work` for every file whose result may be written to its target. The file that it gets
  /// can be read as often as needed; where it is a copy of a pipe, messages about it still use the
  /// name that the person gave. After a file that fails the others are still done; true when none
  /// failed.
  bool run(const Work& work);

  /// Reports an error. False, so that work can end with it.
  bool fail(const std::filesystem::path& file, const std::string& sentence);
  /// Reports a warning, even with --quiet.
  void warn(const std::filesystem::path& file, const std::string& sentence);
  /// Reports a warning unless it is empty or --quiet is given.
  void mention(const std::filesystem::path& file, const std::string& sentence);
  /// Writes a result; reports an error and gives false where that fails.
  bool write(const std::filesystem::path& target, const std::string& bytes);
  /// Says what was done: on standard output, unless the result itself went there.
  void sayDone(const std::filesystem::path& file, const std::filesystem::path& target,
               const std::string& summary);
  /// Reports something about a file that is neither an error nor a warning.
  void note(const std::filesystem::path& file, const std::string& sentence);
  /// Prints lines that are not the command's own, with a heading, on standard error.
  void show(const std::filesystem::path& file, const std::string& heading, const std::string& text);

 private:
  bool begin(const std::filesystem::path& file, const std::filesystem::path& target);
  bool doWork(const Work& work, const std::filesystem::path& file,
              const std::filesystem::path& target);
  /// The name of a file in messages.
  const std::filesystem::path& nameOf(const std::filesystem::path& file) const;

  std::vector<std::filesystem::path> files_;
  Outputs outputs_;
  std::filesystem::path folder_;
  bool quiet_;
  std::optional<FileKind> kind_;
  std::optional<InputFile> input_;  ///< The current file.
  Progress progress_;
};

}  // namespace cli
