#include "cli/check_command.h"

#include "cli/batch.h"
#include "cli/examination.h"
#include "cli/module_place.h"
#include "cli/plugin_run.h"
#include "cli/rescuing.h"
#include "cli/sentences.h"
#include "cli/terminal_text.h"
#include "cli/unopened.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

class Checker {
 public:
  explicit Checker(const CheckOptions& options) : options_(options), batch_(options, "") {
    run_.module = findModule();
  }

  bool checkAll() {
    return batch_.run([this](const fs::path& file, const fs::path&) { return check(file); });
  }

 private:
  bool check(const fs::path& file) {
    const PluginRun run = runPlugin(file, run_);
    if (!run.document) return say(file, "does not open: " + explainUnopened(run, file));
    const Examination found = examine(file);
    const std::string remarks = joined(found.remarks, run.notes);
    if (found.isSound()) {
      if (options_.quiet && remarks.empty()) return true;
      say(file, joined("sound", remarks));
      return true;
    }
    const std::string losses = withRescue(found.losses + found.failure, file, kindByName(file));
    return say(file, joined("opens, with losses: " + losses, remarks));
  }

  /// False, so that a file that is not sound can end with it.
  bool say(const fs::path& file, const std::string& sentence) {
    batch_.sayLine(printable(nativeName(batch_.nameOf(file)) + ": " + sentence));
    return false;
  }

  const CheckOptions& options_;
  PluginRunOptions run_;
  Batch batch_;
};

}  // namespace

ExitStatus checkFiles(const CheckOptions& options) {
  return Checker(options).checkAll() ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
