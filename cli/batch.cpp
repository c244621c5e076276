#include "cli/batch.h"

#include <cstdio>
#include <new>

#include "cli/file_content.h"
#include "cli/limits.h"
#include "cli/output_file.h"
#include "cli/report.h"
#include "cli/sentences.h"
#include "cli/terminal_text.h"

namespace cli {

namespace fs = std::filesystem;

Batch::Batch(std::vector<fs::path> files, const OutputPlan& plan, bool quiet,
             std::optional<FileKind> kind)
    : files_(std::move(files)),
      outputs_(plan, files_),
      folder_(plan.folder),
      quiet_(quiet),
      kind_(kind),
      progress_(files_.size(), quiet) {}

bool Batch::run(const Work& work) {
  if (const auto problem = outputs_.prepare()) return fail(folder_, *problem);
  bool allDone = true;
  for (std::size_t i = 0; i < files_.size(); ++i) {
    const fs::path& file = files_[i];
    progress_.begin(i, nativeName(file.filename()));
    const fs::path target = outputs_.targetFor(file);
    if (!begin(file, target) || !doWork(work, input_->path(), target)) allDone = false;
    input_.reset();
  }
  return allDone;
}

bool Batch::doWork(const Work& work, const fs::path& file, const fs::path& target) {
  try {
    return work(file, target);
  } catch (const std::bad_alloc&) {
    // What the file took is free again; a smaller one may still be done.
    return fail(file, kNotEnoughMemory);
  }
}

bool Batch::begin(const fs::path& file, const fs::path& target) {
  if (const auto refusal = refusalToOpenFiles()) return fail(file, *refusal);
  if (const auto refusal = outputs_.refusal(file, target)) {
    // "open drawing.svg" would write to drawing.svg, but that is not what is wrong with it.
    const auto foreign = isOneFile(file, target) ? describeContent(file) : std::nullopt;
    return foreign ? fail(file, *foreign) : fail(target, *refusal);
  }
  input_.emplace(file, kind_);
  return !input_->problem() || fail(file, *input_->problem());
}

const fs::path& Batch::nameOf(const fs::path& file) const {
  return input_ && file == input_->path() ? input_->name() : file;
}

bool Batch::fail(const fs::path& file, const std::string& sentence) {
  progress_.clear();
  reportError(nameOf(file), sentence);
  return false;
}

void Batch::warn(const fs::path& file, const std::string& sentence) {
  progress_.clear();
  reportWarning(nameOf(file), sentence);
}

void Batch::mention(const fs::path& file, const std::string& sentence) {
  if (!quiet_ && !sentence.empty()) warn(file, sentence);
}

bool Batch::write(const fs::path& target, const std::string& bytes) {
  const auto problem = writeOutput(target, bytes);
  return !problem || fail(target, *problem);
}

void Batch::sayDone(const fs::path& file, const fs::path& target, const std::string& summary) {
  if (quiet_) return;
  progress_.clear();
  const bool toStandardOutput = isStandardOutput(target);
  const std::string line = nativeName(nameOf(file)) + ": " + summary +
                           (toStandardOutput ? "" : " -> " + nativeName(target));
  std::FILE* const stream = toStandardOutput ? stderr : stdout;
  std::fprintf(stream, "%s\n", printable(line).c_str());
  std::fflush(stream);
}

void Batch::note(const fs::path& file, const std::string& sentence) {
  progress_.clear();
  reportNote(nameOf(file), sentence);
}

void Batch::show(const fs::path& file, const std::string& heading, const std::string& text) {
  progress_.clear();
  const std::string first = nativeName(nameOf(file)) + ": " + heading;
  std::fprintf(stderr, "%s\n%s", printable(first).c_str(), printableLines(text).c_str());
}

}  // namespace cli
