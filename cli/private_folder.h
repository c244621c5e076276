// A temporary folder for one file, which nobody else can enter.
#pragma once

#include <filesystem>
#include <string>

namespace cli {

/// A folder that only this user can enter, for one file. Both are removed with the object; natively
/// also when a signal ends the program, for up to four folders at a time.
class PrivateFolder {
 public:
  /// Creates the folder, in the system's temporary folder, but not the file.
  explicit PrivateFolder(const std::string& fileName);
  ~PrivateFolder();
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;

  /// The path for the file; empty where no folder could be created.
  const std::filesystem::path& file() const { return file_; }

 private:
  std::filesystem::path file_;
};

}  // namespace cli
