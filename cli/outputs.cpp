#include "cli/outputs.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "cli/input_file.h"
#include "cli/output_file.h"
#include "cli/report.h"
#include "cli/result_names.h"
#include "cli/terminal_text.h"

namespace cli {

namespace fs = std::filesystem;

fs::path canonicalName(const fs::path& file) {
  std::error_code error;
  const fs::path full = fs::absolute(file, error);
  const fs::path canonical = fs::weakly_canonical(error ? file : full, error);
  return error ? file : canonical;
}

bool isOneFile(const fs::path& one, const fs::path& other) {
  if (isStandardOutput(one) || isStandardOutput(other)) return one == other;
  std::error_code error;
  return canonicalName(one) == canonicalName(other) || fs::equivalent(one, other, error);
}

namespace {

// Standard input may be a file that the shell opened.
fs::path openName(const fs::path& file) {
  return isStandardInput(file) ? "/dev/stdin" : file;
}

}  // namespace

bool isNamedAsRecording(const fs::path& file) {
  constexpr std::array kEndings{".pnx", ".eli", ".kvo", ".inkml"};
  return std::ranges::find(kEndings, lowerCased(nativeName(file.extension()))) != kEndings.end();
}

std::optional<std::string> refusalToOverwrite(const fs::path& file, const fs::path& target,
                                              bool force) {
  if (isStandardOutput(target)) return {};
  if (isOneFile(openName(file), target)) return "is the recording itself; choose another output";
  std::error_code error;
  if (force || !fs::exists(target, error)) return {};
  if (!isNamedAsRecording(target) && !isNamedAsRecording(behindLinks(target))) return {};
  return "is another recording; use --force to overwrite it";
}

Outputs::Outputs(OutputPlan plan, const std::vector<Input>& inputs) : plan_(std::move(plan)) {
  const bool isWritten = plan_.keepsEndings || !plan_.ending.empty();
  if (!plan_.output && isWritten) targets_ = nameResults(inputs, endsOfNames(inputs));
  for (fs::path& target : targets_)
    planned_.insert(target = plan_.folder / target);
  for (const Input& input : inputs) {
    files_.push_back(input.file);
    inputs_.insert(canonicalName(input.file));
  }
}

// What comes behind the names of the results.
std::vector<fs::path> Outputs::endsOfNames(const std::vector<Input>& inputs) const {
  std::vector<fs::path> ends;
  for (const Input& input : inputs) {
    fs::path end = plan_.mark;
    end += plan_.keepsEndings ? input.file.extension() : fs::path("." + plan_.ending);
    ends.push_back(std::move(end));
  }
  return ends;
}

std::optional<std::string> Outputs::prepare() const {
  if (plan_.output || plan_.folder.empty()) return {};
  std::error_code error;
  fs::create_directories(plan_.folder, error);
  if (!error) return {};
  return "the folder cannot be made: " + error.message();
}

void Outputs::makeFoldersFor(const fs::path& target) const {
  if (plan_.output || !target.has_parent_path()) return;
  // Where this fails, the writing fails and says so.
  std::error_code ignored;
  fs::create_directories(target.parent_path(), ignored);
}

fs::path Outputs::numbered(const fs::path& target) const {
  for (int number = 2;; ++number) {
    fs::path name = target.parent_path() / target.stem();
    name += "-" + std::to_string(number);
    name += target.extension();
    std::error_code error;
    if (!planned_.contains(name) && !fs::exists(fs::symlink_status(name, error))) return name;
  }
}

Place Outputs::placeFor(std::size_t input) const {
  if (!plan_.output && targets_.empty()) return {};
  const fs::path& file = files_[input];
  const fs::path& target = plan_.output ? *plan_.output : targets_[input];
  std::error_code error;
  if (isStandardOutput(target) || !fs::exists(target, error)) return {target};
  // A folder, a pipe or a device in the place is for the writing to deal with.
  const bool isFile = fs::is_regular_file(target, error);
  if (isFile && plan_.onConflict == OnConflict::number) return {numbered(target)};
  const bool isItself = isOneFile(openName(file), target);
  if (!isItself && inputs_.contains(canonicalName(target))) {
    return {target, false, "is one of the recordings to be read; choose another output"};
  }
  const OnConflict rule =
      plan_.onConflict.value_or(plan_.output ? OnConflict::replace : OnConflict::keep);
  if (isFile && !isItself && rule == OnConflict::keep) return {target, true};
  return {target, false, refusalToOverwrite(file, target, plan_.onConflict.has_value())};
}

}  // namespace cli
