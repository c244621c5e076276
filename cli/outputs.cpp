#include "cli/outputs.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <system_error>

#include "cli/output_file.h"
#include "cli/report.h"

namespace cli {

namespace fs = std::filesystem;

namespace {

/// The same name for a file by whatever path it is reached.
fs::path canonicalName(const fs::path& file) {
  std::error_code error;
  const fs::path full = fs::absolute(file, error);
  const fs::path canonical = fs::weakly_canonical(error ? file : full, error);
  return error ? file : canonical;
}

}  // namespace

Outputs::Outputs(OutputPlan plan, const std::vector<fs::path>& files) : plan_(std::move(plan)) {
  for (const fs::path& file : files)
    inputs_.insert(canonicalName(file));
}

std::optional<std::string> Outputs::prepare() const {
  if (plan_.output || plan_.folder.empty()) return {};
  std::error_code error;
  fs::create_directories(plan_.folder, error);
  if (!error) return {};
  return "the folder cannot be made: " + error.message();
}

fs::path Outputs::targetFor(const fs::path& file) {
  if (plan_.output) return *plan_.output;
  for (int number = 1;; ++number) {
    fs::path name = plan_.folder / file.stem();
    if (number > 1) name += "-" + std::to_string(number);
    name += "." + plan_.ending;
    if (taken_.insert(name).second) return name;
  }
}

bool isOneFile(const fs::path& one, const fs::path& other) {
  if (isStandardOutput(one) || isStandardOutput(other)) return one == other;
  std::error_code error;
  return canonicalName(one) == canonicalName(other) || fs::equivalent(one, other, error);
}

bool isNamedAsRecording(const fs::path& file) {
  constexpr std::array kEndings{".pnx", ".eli", ".kvo", ".inkml"};
  std::string ending = nativeName(file.extension());
  std::ranges::transform(ending, ending.begin(), [](unsigned char letter) {
    return static_cast<char>(std::tolower(letter));
  });
  return std::ranges::find(kEndings, ending) != kEndings.end();
}

std::optional<std::string> refusalToOverwrite(const fs::path& file, const fs::path& target,
                                              bool force) {
  if (isStandardOutput(target)) return {};
  if (isOneFile(file, target)) return "is the recording itself; choose another output";
  std::error_code error;
  if (force || !fs::exists(target, error)) return {};
  if (!isNamedAsRecording(target) && !isNamedAsRecording(behindLinks(target))) return {};
  return "is another recording; use --force to overwrite it";
}

std::optional<std::string> Outputs::refusal(const fs::path& file, const fs::path& target) const {
  std::error_code error;
  if (isStandardOutput(target) || !fs::exists(target, error)) return {};
  if (inputs_.contains(canonicalName(target)) && !isOneFile(file, target)) {
    return "is one of the recordings to be read; choose another output";
  }
  if (auto refused = refusalToOverwrite(file, target, plan_.replaceExisting)) return refused;
  if (plan_.output || plan_.replaceExisting) return {};
  return "already exists; use --force to overwrite it";
}

}  // namespace cli
