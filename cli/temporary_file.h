#pragma once

#include <filesystem>
#include <string>

namespace cli {

/// A name for a file in the system's temporary folder; the file goes with the object.
class TemporaryFile {
 public:
  TemporaryFile();
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// What the file holds; empty when there is none.
  std::string bytes() const;

 private:
  std::filesystem::path folder_;  // of its own, so that nobody else's file is met
  std::filesystem::path path_;
};

}  // namespace cli
