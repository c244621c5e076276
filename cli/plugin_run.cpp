#include "cli/plugin_run.h"

#include <memory>
#include <new>

#include "cli/module_place.h"
#include "cli/report.h"
#include "embedded/session.h"
#include "hostapi/codes.h"
#include "platform/paths.h"
#include "platform/working_folder.h"
#include "stylelib/library.h"

namespace cli {

namespace {

using embedded::Opening;
using embedded::StepReport;

std::string join(const std::vector<std::string>& sentences) {
  std::string text;
  for (const std::string& sentence : sentences) {
    if (!text.empty()) text += "; ";
    text += sentence;
  }
  return text;
}

/// Why a step did not succeed: the call that the host refused, or else the plug-in's own answer.
std::string refusalOf(const StepReport& report, hostapi::SPErr answer) {
  std::string sentence = "the plug-in gave up with '" + hostapi::codeText(answer) + "'";
  if (!report.firstFailure) return sentence;
  sentence += ": " + report.firstFailure->sentence();
  if (report.firstFailure->path) {
    sentence += ", at stroke " + std::to_string(*report.firstFailure->path) + " of those drawn";
  }
  return sentence;
}

/// The answer of the first message that was not answered with 0; 0 when all were.
hostapi::SPErr firstAnswer(const StepReport& report) {
  for (const embedded::MessageAnswer& message : report.messages) {
    if (message.code != 0) return message.code;
  }
  return 0;
}

void takeStep(PluginRun& run, const StepReport& report) {
  run.printed += report.output;
  std::vector<std::string> said = report.notes;
  said.insert(said.end(), report.misuse.begin(), report.misuse.end());
  if (said.empty()) return;
  if (!run.notes.empty()) run.notes += "; ";
  run.notes += join(said);
}

/// What to do where a stroke has more points than a path, or the failed call was the import of a
/// style library that is not there.
std::string adviceFor(const Opening& opening, const PluginRunOptions& options) {
  if (!opening.firstFailure) return {};
  if (opening.firstFailure->code == hostapi::kTooManySegmentsErr) {
    return "; a path has at most 32000 points, penwick convert and penwick ink keep longer strokes";
  }
  if (options.builtInLibrary) return {};
  const std::string library = stylelib::defaultLibraryPath();
  if (opening.firstFailure->function != "ImportStyles" || stylelib::libraryFileExists(library)) {
    return {};
  }
  return "; there is no brush style library at " + library +
         ", put one there or leave out --no-built-in-library";
}

void judge(PluginRun& run, Opening&& opening, const PluginRunOptions& options) {
  if (!opening.problem.empty()) {
    run.refusal = opening.problem;
  } else if (const hostapi::SPErr answer = firstAnswer(opening); answer != 0) {
    run.refusal = refusalOf(opening, answer) + adviceFor(opening, options);
  } else if (!opening.builderRan) {
    run.readNothing = true;
  } else {
    run.document = std::move(opening.document);
  }
}

/// Notices any allocation that fails during its lifetime. Natively the module allocates through
/// this program, and its answer does not distinguish lack of memory from other causes.
class MemoryWatch {
 public:
  MemoryWatch() : before_(std::set_new_handler(&fail)) { ranOut_ = false; }
  ~MemoryWatch() { std::set_new_handler(before_); }
  MemoryWatch(const MemoryWatch&) = delete;
  MemoryWatch& operator=(const MemoryWatch&) = delete;

  static bool ranOut() { return ranOut_; }

 private:
  [[noreturn]] static void fail() {
    ranOut_ = true;
    throw std::bad_alloc();
  }

  static inline bool ranOut_ = false;
  std::new_handler before_;
};

/// From the first message to the last.
void runSession(PluginRun& run, embedded::Session& session, const std::string& file,
                const PluginRunOptions& options) {
  const StepReport start = session.start();
  takeStep(run, start);
  if (session.started()) {
    Opening opening = session.open(file);
    takeStep(run, opening);
    judge(run, std::move(opening), options);
  } else {
    run.refusal = "the plug-in did not start; " + refusalOf(start, firstAnswer(start));
  }
  takeStep(run, session.end());
}

}  // namespace

PluginRun runPlugin(const std::filesystem::path& file, const PluginRunOptions& options) {
  PluginRun run;
  std::string problem;
  std::unique_ptr<embedded::Module> module = loadModule(options.module, problem);
  if (!module) {
    run.refusal = problem;
    return run;
  }

  embedded::Options host;
  host.builtInLibrary = options.builtInLibrary;
  host.journalChecksums = options.journal;
  embedded::Session session(std::move(module), host);
  const MemoryWatch memory;
  const std::string recording = platform::absoluteNativePath(nativeName(file));
  platform::runInFolder(options.logFolder, [&] { runSession(run, session, recording, options); });
  if (!run.document && MemoryWatch::ranOut()) throw std::bad_alloc();
  if (options.journal) run.journal = session.host().journal().jsonLines();
  return run;
}

}  // namespace cli
