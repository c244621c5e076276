// The bytes of a file or pipe, as they come.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>
#include <vector>

#include "platform/file.h"

namespace cli {

/// Reads a file, a pipe or standard input from its start, part by part. It waits for bytes only
/// where none are at hand.
class ByteStream {
 public:
  /// Opens the file; `isOpen` tells whether that succeeded. "-" is standard input.
  explicit ByteStream(const std::filesystem::path& name);

  bool isOpen() const { return stream_ != nullptr; }

  /// The next bytes; none at the end or after an error. They stay until the next call.
  std::string_view next();

  /// The system's number of the error that ended the reading, or 0.
  int error() const { return error_; }

 private:
  platform::File file_;
  std::FILE* stream_;
  std::vector<char> buffer_;
  int error_ = 0;
};

}  // namespace cli
