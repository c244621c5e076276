// Captures what is printed while a module runs.
#pragma once

#include <cstdio>
#include <string>

namespace embedded {

/// What was printed, byte for byte.
struct CapturedOutput {
  std::string standardOutput;
  std::string standardError;

  bool empty() const { return standardOutput.empty() && standardError.empty(); }
  CapturedOutput& operator+=(const CapturedOutput& more);
};

/// From construction until `finish`, the descriptors of standard output and standard error refer to
/// temporary files; then they are restored. If no temporary file can be created, the output is lost
/// and `finish` says so at the end of the standard error.
class OutputCapture {
 public:
  OutputCapture();
  /// Calls `finish` unless it was called before.
  ~OutputCapture();
  OutputCapture(const OutputCapture&) = delete;
  OutputCapture& operator=(const OutputCapture&) = delete;

  /// Restores the descriptors and returns what was printed; empty the second time.
  CapturedOutput finish();

 private:
  struct Stream {
    std::FILE* stream = nullptr;    ///< of the C library
    std::FILE* captured = nullptr;  ///< null: the output is lost
    int saved = -1;                 ///< a duplicate of the original descriptor; -1: it was closed
  };
  static Stream redirect(std::FILE* stream);
  static std::string restore(Stream& stream);

  bool active_ = true;
  Stream output_;
  Stream error_;
};

}  // namespace embedded
