// The folder in which a fuzz target keeps its files.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "fuzz/input.h"

namespace fuzz {

/// A folder that this process has made and only it may enter, used as its current one; removed at
/// the end.
class OwnFolder {
 public:
  OwnFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "penwick-fuzz-XXXXXX").string();
    check(::mkdtemp(name.data()) != nullptr);
    path_ = name;
    std::filesystem::current_path(path_);
  }
  ~OwnFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  OwnFolder(const OwnFolder&) = delete;
  OwnFolder& operator=(const OwnFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// The path of `name` in one folder for the whole run.
inline std::string fileNamed(const std::string& name) {
  static const OwnFolder folder;
  return (folder.path() / name).string();
}

}  // namespace fuzz
