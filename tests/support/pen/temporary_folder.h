// A test's own folder.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <string>

namespace pentest {

/// A folder for one test, removed when this is destroyed.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_(std::filesystem::temp_directory_path() / freshName()) {
    std::filesystem::create_directories(path_);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  static std::string freshName() {
    static std::atomic<int> count = 0;
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    return "penwick-" + std::to_string(now) + "-" + std::to_string(++count);
  }

  std::filesystem::path path_;
};

/// Makes a folder the current one for as long as it lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::filesystem::path& folder)
      : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder);
  }
  ~CurrentFolder() {
    std::error_code ignored;
    std::filesystem::current_path(before_, ignored);
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  std::filesystem::path before_;
};

}  // namespace pentest
