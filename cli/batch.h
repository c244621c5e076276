// Works through the files that one command is given.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "cli/batch_options.h"
#include "cli/input_file.h"
#include "cli/input_list.h"
#include "cli/messages.h"
#include "cli/outputs.h"
#include "cli/progress.h"
#include "cli/tally.h"
#include "platform/worker_processes.h"

namespace cli {

/// Works through the files of one command: which they are, where each result goes, and what is
/// printed about it. Several files are worked on in processes of their own, so that one that
/// crashes or hangs costs nothing but itself; one file alone is, too, where a time limit is given.
/// What is printed comes in the order of the files.
class Batch : private platform::Jobs {
 public:
  using Work =
      std::function<bool(const std::filesystem::path& file, const std::filesystem::path& target)>;

  /// `verb` is what is done to the files, such as "drawn"; empty where no line sums up.
  Batch(const BatchOptions& options, std::string verb);

  /// Calls `work` for every file whose result may be written to its target; nothing but what it
  /// says and writes through this batch gets out of it. The file that it gets can be read as often
  /// as needed; where it is a copy of a pipe, messages about it still use the name that the person
  /// gave. After a file that fails the others are still done; true when none failed.
  bool run(const Work& work);

  /// Gives something of the current file back, from the process that works on it.
  void give(std::string product);
  /// What became of each input, after `run`.
  const std::vector<FileReport>& reports() const { return reports_; }
  /// What was said so far about the current file.
  std::vector<std::string> remarks() const { return remarksOf(*report_); }
  const std::vector<Input>& inputs() const { return list_.inputs; }

  /// Reports an error. False, so that work can end with it.
  bool fail(const std::filesystem::path& file, const std::string& sentence);
  /// Reports a warning, even with --quiet.
  void warn(const std::filesystem::path& file, const std::string& sentence);
  /// Reports a warning unless it is empty or --quiet is given.
  void mention(const std::filesystem::path& file, const std::string& sentence);
  /// The same for several warnings, one line each.
  void mentionAll(const std::filesystem::path& file, const std::vector<std::string>& sentences);
  /// Writes a result; reports an error and gives false where that fails.
  bool write(const std::filesystem::path& target, const std::string& bytes);
  /// Says what was done: on standard output, unless the result itself went there. An empty `target`
  /// is none.
  void sayDone(const std::filesystem::path& file, const std::filesystem::path& target,
               const std::string& summary);
  /// A line of a result that is printed line by line.
  void sayLine(const std::string& line);
  /// Reports something about a file that is neither an error nor a warning.
  void note(const std::filesystem::path& file, const std::string& sentence);
  /// Prints lines that are not the command's own, with a heading, on standard error.
  void show(const std::filesystem::path& file, const std::string& heading, const std::string& text);

  /// The name of a file in messages.
  const std::filesystem::path& nameOf(const std::filesystem::path& file) const;

 private:
  std::string carryOut(std::size_t job) override;
  void begun(std::size_t job) override;
  void ended(std::size_t job, const platform::JobEnd& end) override;
  void wait() override;
  void interrupted() override;

  Outcome doOne(std::size_t index);
  Outcome keep(const std::filesystem::path& file, const std::filesystem::path& target);
  bool begin(const Input& input, const Place& place);
  bool doWork(const std::filesystem::path& file, const std::filesystem::path& target);
  FileReport reportOf(std::size_t index, const platform::JobEnd& end) const;
  std::string explainEnd(const platform::JobEnd& end) const;
  void printInOrder();
  void sumUp();
  platform::WorkerOptions workers() const;
  /// Prints a message, or adds it to the report of the current file.
  void say(Message::Kind kind, std::string lines);

  const BatchOptions& options_;
  std::string verb_;
  InputList list_;
  Outputs outputs_;
  Progress progress_;
  const Work* work_ = nullptr;
  std::optional<InputFile> input_;           ///< The current file.
  FileReport* report_ = nullptr;             ///< Of the current file.
  std::map<std::size_t, FileReport> ready_;  ///< Reports that wait for those before them.
  std::size_t printed_ = 0;                  ///< The reports of so many files are printed.
  std::vector<FileReport> reports_;
  Tally tally_;
};

}  // namespace cli
