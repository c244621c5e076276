#include "cli/check_command.h"

#include "cli/batch.h"
#include "cli/examination.h"
#include "cli/module_place.h"
#include "cli/plugin_run.h"
#include "cli/prepared_input.h"
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
    const PreparedInput input(file, options_.ink);
    if (input.problem()) return say(file, "does not open: " + *input.problem());
    const PluginRun run = runPlugin(input.path(), run_);
    if (!run.document) return say(file, "does not open: " + explainUnopened(run, input.path()));
    const Examination found = examine(input.path());
    const std::string remarks = joined(found.remarks, run.notes);
    if (!input.summary().empty() && found.isSound()) {
      say(file, joined(describeOpening(input), remarks));
      return true;
    }
    if (found.isSound()) {
      if (options_.quiet && remarks.empty()) return true;
      say(file, joined("sound", remarks));
      return true;
    }
    const std::string losses =
        withRescue(found.losses + found.failure, input.path(), kindByName(file));
    return say(file, joined("opens, with losses: " + losses, remarks));
  }

  static std::string describeOpening(const PreparedInput& input) {
    if (!input.translation()) return "opens " + input.summary() + "; penwick rescue writes it";
    std::string sentence = "opens by translation: " + describe(*input.translation());
    for (const std::string& remark : input.translation()->remarks)
      addPart(sentence, remark);
    return sentence;
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
