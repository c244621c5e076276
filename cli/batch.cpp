#include "cli/batch.h"

#include <cstdio>

#include "cli/output_file.h"
#include "cli/report.h"
#include "cli/sentences.h"

namespace cli {

namespace fs = std::filesystem;

Batch::Batch(std::vector<fs::path> files, const OutputPlan& plan, bool quiet)
    : files_(std::move(files)),
      outputs_(plan),
      folder_(plan.folder),
      quiet_(quiet),
      progress_(files_.size(), quiet) {}

bool Batch::run(const Work& work) {
  if (const auto problem = outputs_.prepare()) return fail(folder_, *problem);
  bool allDone = true;
  for (std::size_t i = 0; i < files_.size(); ++i) {
    const fs::path& file = files_[i];
    progress_.begin(i, nativeName(file.filename()));
    const fs::path target = outputs_.targetFor(file);
    if (!begin(file, target) || !work(file, target)) allDone = false;
  }
  return allDone;
}

bool Batch::begin(const fs::path& file, const fs::path& target) {
  if (const auto refusal = outputs_.refusal(file, target)) return fail(target, *refusal);
  const auto refusal = refusalToRead(file);
  return !refusal || fail(file, *refusal);
}

bool Batch::fail(const fs::path& file, const std::string& sentence) {
  progress_.clear();
  reportError(file, sentence);
  return false;
}

void Batch::warn(const fs::path& file, const std::string& sentence) {
  progress_.clear();
  reportWarning(file, sentence);
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
  const std::string line =
      nativeName(file) + ": " + summary + (toStandardOutput ? "" : " -> " + nativeName(target));
  std::FILE* const stream = toStandardOutput ? stderr : stdout;
  std::fprintf(stream, "%s\n", withoutControls(line).c_str());
  std::fflush(stream);
}

void Batch::show(const std::string& text) {
  progress_.clear();
  std::fputs(text.c_str(), stderr);
}

}  // namespace cli
