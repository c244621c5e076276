#include "cli/output_words.h"

#include <algorithm>
#include <system_error>

#include "cli/output_format.h"
#include "cli/report.h"
#include "cli/terminal_text.h"
#include "platform/worker_processes.h"

namespace cli {

namespace fs = std::filesystem;

std::vector<fs::path> pathsOf(const std::vector<std::string>& words) {
  std::vector<fs::path> paths;
  paths.reserve(words.size());
  for (const std::string& word : words)
    paths.push_back(pathOf(word));
  return paths;
}

namespace {

constexpr char kSubset[] = "inkml-subset";

InkView viewOf(const InputWords& words) {
  if (words.kind == kSubset) return InkView::asSubset;
  return words.translate ? InkView::translated : InkView::byContent;
}

}  // namespace

std::optional<FileKind> kindOf(const std::string& word) {
  if (word == "pen") return FileKind::pen;
  if (word == "inkml" || word == kSubset) return FileKind::inkml;
  return {};
}

namespace {

std::optional<OnConflict> ruleOf(const OutputWords& words) {
  if (words.onConflict == "keep") return OnConflict::keep;
  if (words.onConflict == "number") return OnConflict::number;
  if (words.force || words.onConflict == "replace") return OnConflict::replace;
  return {};
}

}  // namespace

bool isFolder(const std::string& word) {
  std::error_code error;
  return fs::is_directory(pathOf(word), error);
}

void take(const InputWords& words, BatchOptions& options) {
  options.files = pathsOf(words.files);
  options.kind = kindOf(words.kind);
  options.ink = {.view = viewOf(words), .millimetresPerUnit = words.unit};
  options.jobs = words.jobs;
  options.timeLimit = words.timeLimit;
  options.quiet = words.quiet;
}

std::string wrongInputs(const InputWords& words) {
  const bool isNeverTranslated = words.kind == "pen" || words.kind == kSubset;
  if (isNeverTranslated && (words.translate || words.unit)) {
    return std::string(words.translate ? "--translate" : "--unit") +
           " is for ink documents that are translated; leave it out with --as " + words.kind;
  }
  if (platform::kHasWorkers || (words.jobs == 0 && !words.timeLimit)) return {};
  return "--jobs and --time-limit do not work on this system; leave them out";
}

void take(const OutputWords& words, BatchOptions& options) {
  take(static_cast<const InputWords&>(words), options);
  if (!words.output.empty()) options.outputs.output = pathOf(words.output);
  options.outputs.folder = pathOf(words.folder);
  options.outputs.onConflict = ruleOf(words);
}

std::string wrongOutputs(const OutputWords& words) {
  if (words.force && !words.onConflict.empty()) return "give --force or --on-conflict, not both";
  if (std::string wrong = wrongInputs(words); !wrong.empty()) return wrong;
  if (words.output.empty()) {
    const bool isUnnamed = std::ranges::find(words.files, "-") != words.files.end();
    return isUnnamed ? "a result of standard input cannot be named after it; use -o" : "";
  }
  if (words.files.size() > 1) return "-o takes one FILE; use --out-dir for several";
  if (isFolder(words.files.front())) return "-o takes one FILE; use --out-dir for a folder";
  return words.folder.empty() ? "" : "give -o or --out-dir, not both";
}

std::string formatOf(const std::string& asked, const OutputWords& words, const char* usual) {
  if (!asked.empty()) return asked;
  return words.output.empty() || words.output == "-" ? usual : endingOf(pathOf(words.output));
}

std::string wrongEnding(const std::string& output, const std::string& content) {
  const fs::path path = pathOf(output);
  const std::optional<OutputFormat> named = parseOutputFormat(endingOf(path));
  const bool contradicts = named ? *named != OutputFormat::json : isNamedAsRecording(path);
  if (!contradicts) return {};
  return inQuotes(output) + " is not a name for " + content + "; give it another ending";
}

}  // namespace cli
