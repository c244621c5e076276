#include "cli/output_words.h"

#include <algorithm>

#include "cli/output_format.h"
#include "cli/report.h"
#include "cli/terminal_text.h"

namespace cli {

namespace fs = std::filesystem;

std::vector<fs::path> pathsOf(const std::vector<std::string>& words) {
  std::vector<fs::path> paths;
  paths.reserve(words.size());
  for (const std::string& word : words)
    paths.push_back(pathOf(word));
  return paths;
}

std::optional<FileKind> kindOf(const std::string& word) {
  if (word == "pen") return FileKind::pen;
  if (word == "inkml") return FileKind::inkml;
  return {};
}

OutputPlan planOf(const OutputWords& words) {
  OutputPlan plan;
  if (!words.output.empty()) plan.output = pathOf(words.output);
  plan.folder = pathOf(words.folder);
  plan.replaceExisting = words.force;
  return plan;
}

std::string wrongOutputs(const OutputWords& words) {
  if (words.output.empty()) {
    const bool isUnnamed = std::ranges::find(words.files, "-") != words.files.end();
    return isUnnamed ? "a result of standard input cannot be named after it; use -o" : "";
  }
  if (words.files.size() > 1) return "-o takes one FILE; use --out-dir for several";
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
