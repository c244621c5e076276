#include "cli/result_names.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <system_error>
#include <tuple>

namespace cli {

namespace {

namespace fs = std::filesystem;

/// One result, whose name can be made longer.
class ResultName {
 public:
  explicit ResultName(const Input& input) : stem_(input.file.stem()) {
    std::error_code error;
    const fs::path full = fs::absolute(input.file, error);
    parent_ = (error ? input.file : full).lexically_normal().parent_path();
    folders_.assign(parent_.begin(), parent_.end());
    taken_ = static_cast<std::size_t>(std::distance(input.below.begin(), input.below.end()));
  }

  const fs::path& parent() const { return parent_; }
  const std::vector<fs::path>& folders() const { return folders_; }
  const fs::path& stem() const { return stem_; }
  void keepEnding(const Input& input) { stem_ = input.file.filename(); }

  /// Takes in all folders but the first `count`; false where it has them.
  bool takeFoldersFrom(std::size_t count) {
    const std::size_t wanted = folders_.size() - count;
    if (wanted <= taken_) return false;
    taken_ = wanted;
    return true;
  }

  fs::path path() const {
    fs::path name;
    for (std::size_t i = folders_.size() - taken_; i < folders_.size(); ++i)
      name /= folders_[i];
    return name / stem_;
  }

 private:
  fs::path stem_;
  fs::path parent_;
  std::vector<fs::path> folders_;  ///< Those of `parent_`, from the root.
  std::size_t taken_ = 0;          ///< How many of them, the last ones, are part of the name.
};

void tellEndingsApart(std::vector<ResultName>& names, const std::vector<Input>& inputs,
                      const std::vector<fs::path>& ends) {
  const auto keyOf = [&](std::size_t i) {
    return std::tuple(names[i].parent(), names[i].stem(), ends[i]);
  };
  std::map<std::tuple<fs::path, fs::path, fs::path>, std::size_t> uses;
  for (std::size_t i = 0; i < names.size(); ++i)
    ++uses[keyOf(i)];
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (uses[keyOf(i)] > 1) names[i].keepEnding(inputs[i]);
  }
}

/// How many folders from the root all of these have in common.
std::size_t countCommon(const std::vector<ResultName*>& names) {
  std::size_t common = names.front()->folders().size();
  for (const ResultName* name : names) {
    const auto [mine, other] = std::ranges::mismatch(name->folders(), names.front()->folders());
    common = std::min(common, static_cast<std::size_t>(mine - name->folders().begin()));
  }
  return common;
}

/// One step; false where no name gets any longer by it.
bool tellFoldersApart(std::vector<ResultName>& names) {
  std::map<fs::path, std::vector<ResultName*>> byPath;
  for (ResultName& name : names)
    byPath[name.path()].push_back(&name);
  bool changed = false;
  for (const auto& [path, equal] : byPath) {
    if (equal.size() < 2) continue;
    const std::size_t common = countCommon(equal);
    for (ResultName* name : equal)
      changed = name->takeFoldersFrom(common) || changed;
  }
  return changed;
}

fs::path withNumber(const fs::path& path, int number, const fs::path& end) {
  fs::path name = path;
  if (number > 1) name += "-" + std::to_string(number);
  name += end;
  return name;
}

}  // namespace

std::vector<fs::path> nameResults(const std::vector<Input>& inputs,
                                  const std::vector<fs::path>& ends) {
  std::vector<ResultName> names(inputs.begin(), inputs.end());
  tellEndingsApart(names, inputs, ends);
  while (tellFoldersApart(names)) {
  }

  // Those of "a.pnx", "a.eli" and "a.pnx.kvo" in one folder are still equal.
  std::vector<fs::path> paths;
  std::set<fs::path> taken;
  for (std::size_t i = 0; i < names.size(); ++i) {
    int number = 1;
    while (!taken.insert(withNumber(names[i].path(), number, ends[i])).second)
      ++number;
    paths.push_back(withNumber(names[i].path(), number, ends[i]));
  }
  return paths;
}

}  // namespace cli
