#pragma once

#include <filesystem>
#include <string>

#include "platform/file.h"

namespace cli {

/// A file in the system's temporary folder that goes with the object. Natively it has no entry in
/// that folder, so that nothing is left where the program is ended meanwhile.
class TemporaryFile {
 public:
  TemporaryFile();
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// By this name the file can be opened; empty when none can be made.
  const std::filesystem::path& path() const { return path_; }
  /// What the file holds; empty when there is none.
  std::string bytes() const;

 private:
#ifndef _WIN32
  platform::File held_;
#endif
  std::filesystem::path path_;
};

}  // namespace cli
