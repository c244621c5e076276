#include "cli/batch.h"

#include <algorithm>
#include <new>

#include "cli/file_content.h"
#include "cli/limits.h"
#include "cli/output_file.h"
#include "cli/report.h"
#include "cli/sentences.h"
#include "cli/terminal_text.h"
#include "platform/terminal.h"
#include "text/format.h"

namespace cli {

namespace fs = std::filesystem;

using platform::JobEnd;

namespace {

constexpr double kUsualTimeLimit = 60;

/// The folder for results that are recordings; empty where they are not.
fs::path folderOfRecordings(const OutputPlan& plan) {
  if (plan.output) return {};
  if (!plan.keepsEndings && !isNamedAsRecording("a." + plan.ending)) return {};
  return plan.folder.empty() ? "." : plan.folder;
}

}  // namespace

Batch::Batch(const BatchOptions& options, std::string verb)
    : options_(options),
      verb_(std::move(verb)),
      list_(listInputs(options.files, folderOfRecordings(options.outputs))),
      outputs_(options.outputs, list_.inputs),
      progress_(list_.inputs.size(), options.quiet) {}

bool Batch::run(const Work& work) {
  if (const auto problem = outputs_.prepare()) return fail(options_.outputs.folder, *problem);
  for (const FolderRemark& remark : list_.remarks)
    mention(remark.folder, remark.sentence);
  work_ = &work;
  platform::runJobs(*this, list_.inputs.size(), workers());
  progress_.clear();
  if (list_.inputs.size() > 1 && !options_.quiet && !verb_.empty()) sumUp();
  return tally_.allDone();
}

platform::WorkerOptions Batch::workers() const {
  const std::size_t files = list_.inputs.size();
  platform::WorkerOptions workers;
  workers.processes =
      std::min(files, options_.jobs == 0 ? platform::countProcessors() : options_.jobs);
  workers.timeLimit = options_.timeLimit.value_or(kUsualTimeLimit);
  workers.keepsStreams = files == 1;
  if (files == 1 && !options_.timeLimit) workers.processes = 0;
  return workers;
}

std::string Batch::carryOut(std::size_t job) {
  FileReport report;
  report_ = &report;
  report.outcome = doOne(job);
  report_ = nullptr;
  input_.reset();
  return toBytes(report);
}

Outcome Batch::doOne(std::size_t index) {
  const Input& input = list_.inputs[index];
  const auto outcomeOf = [](bool done) { return done ? Outcome::done : Outcome::failed; };
  if (input.problem) return outcomeOf(fail(input.file, *input.problem));
  const Place place = outputs_.placeFor(index);
  if (place.isKept) return keep(input.file, place.target);
  return outcomeOf(begin(input, place) && doWork(input_->path(), place.target));
}

Outcome Batch::keep(const fs::path& file, const fs::path& target) {
  if (!options_.quiet) {
    const std::string line = nativeName(file) + ": " + nativeName(target) +
                             " already exists and is kept; --force replaces it";
    // Where no line sums up, the lines on standard output are data.
    say(verb_.empty() ? Message::Kind::remark : Message::Kind::result, printable(line) + "\n");
  }
  return Outcome::kept;
}

bool Batch::doWork(const fs::path& file, const fs::path& target) {
  try {
    return (*work_)(file, target);
  } catch (const std::bad_alloc&) {
    // What the file took is free again; a smaller one may still be done.
    return fail(file, kNotEnoughMemory);
  }
}

bool Batch::begin(const Input& input, const Place& place) {
  if (const auto refusal = refusalToOpenFiles()) return fail(input.file, *refusal);
  if (place.refusal) {
    // "open drawing.svg" would write to drawing.svg, but that is not what is wrong with it.
    const auto foreign =
        isOneFile(input.file, place.target) ? describeContent(input.file) : std::nullopt;
    return foreign ? fail(input.file, *foreign) : fail(place.target, *place.refusal);
  }
  input_.emplace(input.file, options_.kind ? options_.kind : input.kind);
  return !input_->problem() || fail(input.file, *input_->problem());
}

void Batch::begun(std::size_t job) {
  progress_.begin(nativeName(list_.inputs[job].file.filename()));
}

void Batch::ended(std::size_t job, const JobEnd& end) {
  ready_.emplace(job, reportOf(job, end));
  progress_.end();
  printInOrder();
  progress_.show();
}

void Batch::wait() {
  progress_.show();
}

void Batch::interrupted() {
  progress_.clear();
}

FileReport Batch::reportOf(std::size_t index, const JobEnd& end) const {
  if (end.kind == JobEnd::Kind::answered) {
    if (auto report = reportFromBytes(end.text)) return std::move(*report);
  }
  return {Outcome::failed,
          {{Message::Kind::error, errorLine(list_.inputs[index].file, explainEnd(end))}},
          {}};
}

std::string Batch::explainEnd(const JobEnd& end) const {
  switch (end.kind) {
    case JobEnd::Kind::outOfTime:
      return text::format(
          "it took more than %g s of processor time and was ended; --time-limit gives it more",
          options_.timeLimit.value_or(kUsualTimeLimit));
    case JobEnd::Kind::killed:
      return "the system ended the work on it (" + end.text +
             "), perhaps for lack of memory; try it alone";
    case JobEnd::Kind::notBegun:
      return "no process could be started for it (" + end.text + "); try it alone";
    default:
      return "the work on it crashed (" + end.text +
             ") and nothing was written; please report this with the file";
  }
}

void Batch::printInOrder() {
  for (auto next = ready_.find(printed_); next != ready_.end(); next = ready_.find(++printed_)) {
    FileReport report = std::move(next->second);
    ready_.erase(next);
    if (!report.messages.empty()) progress_.clear();
    std::ranges::for_each(report.messages, print);
    tally_.add(report);
    reports_.push_back(std::move(report));
  }
}

void Batch::sumUp() {
  if (const auto screen = platform::terminalOf(stderr)) {
    std::ranges::for_each(tally_.errorsBeyond(screen->rows), print);
  }
  const bool isResultThere = options_.outputs.output && isStandardOutput(*options_.outputs.output);
  print({isResultThere ? Message::Kind::remark : Message::Kind::result,
         tally_.sentence(verb_) + "\n"});
}

const fs::path& Batch::nameOf(const fs::path& file) const {
  return input_ && file == input_->path() ? input_->name() : file;
}

void Batch::say(Message::Kind kind, std::string lines) {
  Message message{kind, std::move(lines)};
  if (report_ == nullptr) return print(message);
  report_->messages.push_back(std::move(message));
}

void Batch::give(std::string product) {
  report_->product = std::move(product);
}

bool Batch::fail(const fs::path& file, const std::string& sentence) {
  say(Message::Kind::error, errorLine(nameOf(file), sentence));
  return false;
}

void Batch::warn(const fs::path& file, const std::string& sentence) {
  say(Message::Kind::remark, warningLine(nameOf(file), sentence));
}

void Batch::mention(const fs::path& file, const std::string& sentence) {
  if (!options_.quiet && !sentence.empty()) warn(file, sentence);
}

void Batch::mentionAll(const fs::path& file, const std::vector<std::string>& sentences) {
  for (const std::string& sentence : sentences)
    mention(file, sentence);
}

bool Batch::write(const fs::path& target, const std::string& bytes) {
  outputs_.makeFoldersFor(target);
  const auto problem = writeOutput(target, bytes);
  return !problem || fail(target, *problem);
}

void Batch::sayDone(const fs::path& file, const fs::path& target, const std::string& summary) {
  if (options_.quiet) return;
  const bool toStandardOutput = isStandardOutput(target);
  const bool isNamed = !toStandardOutput && !target.empty();
  const std::string line =
      nativeName(nameOf(file)) + ": " + summary + (isNamed ? " -> " + nativeName(target) : "");
  say(toStandardOutput ? Message::Kind::remark : Message::Kind::result, printable(line) + "\n");
}

void Batch::sayLine(const std::string& line) {
  say(Message::Kind::result, line + "\n");
}

void Batch::note(const fs::path& file, const std::string& sentence) {
  say(Message::Kind::remark, noteLine(nameOf(file), sentence));
}

void Batch::show(const fs::path& file, const std::string& heading, const std::string& text) {
  const std::string first = nativeName(nameOf(file)) + ": " + heading;
  say(Message::Kind::remark, printable(first) + "\n" + printableLines(text));
}

}  // namespace cli
