#include "cli/input_list.h"

#include <algorithm>
#include <set>
#include <system_error>

#include "cli/input_file.h"
#include "cli/outputs.h"
#include "cli/report.h"
#include "cli/sentences.h"
#include "cli/terminal_text.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

std::string explainFolder(const std::error_code& error) {
  if (error == std::errc::permission_denied) {
    return "permission to read the folder is denied; check its permissions";
  }
  return "the folder cannot be read: " + error.message();
}

// A name that has the ending in lower case.
fs::path nameInLowerCase(const fs::path& ending) {
  return "a" + lowerCased(nativeName(ending));
}

/// Collects what is in one folder that was named.
class Walk {
 public:
  Walk(fs::path top, fs::path resultsFolder)
      : top_(std::move(top)), resultsFolder_(std::move(resultsFolder)) {}

  void run(InputList& list) {
    if (isResultsFolder(top_)) {
      list.inputs.push_back(
          {top_,
           {},
           {},
           "the results would go among the recordings; name another folder with --out-dir"});
      return;
    }
    read(top_, {});
    if (inputs_.empty()) {
      inputs_.push_back(
          {top_, {}, {}, "there are no recordings (.pnx, .eli, .kvo, .inkml) in this folder"});
    }
    std::ranges::stable_sort(inputs_, {}, &Input::file);
    list.inputs.insert(list.inputs.end(), inputs_.begin(), inputs_.end());
    list.remarks.insert(list.remarks.end(), remarks_.begin(), remarks_.end());
    if (links_ == 0) return;
    list.remarks.push_back(
        {top_, counted(links_, "link in this folder is", "links in this folder are") +
                   " not followed; name what they lead to"});
  }

 private:
  void read(const fs::path& folder, const fs::path& below) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
      take(*entry, below);
    if (error) inputs_.push_back({folder, below, {}, explainFolder(error)});
  }

  void take(const fs::directory_entry& entry, const fs::path& below) {
    const fs::path& path = entry.path();
    std::error_code error;
    if (nativeName(path.filename()).starts_with('.')) return;
    if (entry.is_symlink(error)) {
      if (isNamedAsRecording(path) || entry.is_directory(error)) ++links_;
    } else if (entry.is_directory(error)) {
      if (isResultsFolder(path)) {
        remarks_.push_back({path, "this folder is left out, since the results go there"});
      } else {
        read(path, below / path.filename());
      }
    } else if (entry.is_regular_file(error) && isNamedAsRecording(path)) {
      inputs_.push_back({path, below, kindByName(nameInLowerCase(path.extension()))});
    }
  }

  bool isResultsFolder(const fs::path& folder) const {
    std::error_code error;
    return !resultsFolder_.empty() && fs::equivalent(folder, resultsFolder_, error);
  }

  fs::path top_;
  fs::path resultsFolder_;
  std::vector<Input> inputs_;
  std::vector<FolderRemark> remarks_;
  std::size_t links_ = 0;
};

}  // namespace

InputList listInputs(const std::vector<fs::path>& names, const fs::path& resultsFolder) {
  InputList list;
  for (const fs::path& name : names) {
    std::error_code error;
    if (!isStandardInput(name) && fs::is_directory(name, error)) {
      Walk(name, resultsFolder).run(list);
    } else {
      list.inputs.push_back({name});
    }
  }
  std::set<fs::path> seen;
  std::erase_if(list.inputs, [&seen](const Input& input) {
    std::error_code error;
    const fs::path full = fs::absolute(input.file, error);
    return !seen.insert((error ? input.file : full).lexically_normal()).second;
  });
  return list;
}

}  // namespace cli
