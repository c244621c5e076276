#include "cli/outputs.h"

#include <system_error>

#include "cli/output_file.h"

namespace cli {

namespace fs = std::filesystem;

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
    name += "." + plan_.format;
    if (taken_.insert(name).second) return name;
  }
}

bool isOneFile(const fs::path& one, const fs::path& other) {
  if (isStandardOutput(one) || isStandardOutput(other)) return one == other;
  std::error_code error;
  return fs::weakly_canonical(fs::absolute(one), error) ==
             fs::weakly_canonical(fs::absolute(other), error) ||
         fs::equivalent(one, other, error);
}

std::optional<std::string> refusalToOverwrite(const fs::path& file, const fs::path& target) {
  if (isStandardOutput(target) || !isOneFile(file, target)) return {};
  return "is the recording itself; name another output";
}

std::optional<std::string> Outputs::refusal(const fs::path& file, const fs::path& target) const {
  std::error_code error;
  if (isStandardOutput(target) || !fs::exists(target, error)) return {};
  if (auto own = refusalToOverwrite(file, target)) return own;
  if (plan_.output || plan_.replaceExisting) return {};
  return "is there already and is kept; --force replaces it";
}

}  // namespace cli
