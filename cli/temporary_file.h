// A temporary file that leaves nothing behind.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#if defined(_WIN32) || defined(__EMSCRIPTEN__)
#include "cli/private_folder.h"
#else
#include "platform/file.h"
#endif

namespace cli {

/// A file that is removed with the object. Natively it is kept in memory, or without a name in the
/// system's temporary folder, so that nothing is left behind even if the program is killed.
class TemporaryFile {
 public:
  TemporaryFile();
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// The name by which the file can be opened; empty where none could be created.
  const std::filesystem::path& path() const { return path_; }
  /// Makes the file hold `bytes`, and nothing else. False where that fails.
  bool write(std::string_view bytes) const;
  /// What the file holds; empty where there is no file.
  std::string bytes() const;

 private:
#if defined(_WIN32) || defined(__EMSCRIPTEN__)
  PrivateFolder folder_{"file"};
#else
  platform::File held_;
#endif
  std::filesystem::path path_;
};

}  // namespace cli
