// Keeps aside what is printed while a module works.
#pragma once

#include <cstdio>
#include <string>

namespace embedded {

/// What came out, byte for byte.
struct CapturedOutput {
  std::string standardOutput;
  std::string standardError;

  bool empty() const { return standardOutput.empty() && standardError.empty(); }
  CapturedOutput& operator+=(const CapturedOutput& more);
};

/// From its making until `finish` the process's standard output and standard error, as descriptors,
/// go to temporary files; then they are as before. Where no temporary file can be had the output
/// goes nowhere and `finish` says so in place of the standard error. Not to be nested.
class OutputCapture {
 public:
  OutputCapture();
  /// Finishes, if that was not done.
  ~OutputCapture();
  OutputCapture(const OutputCapture&) = delete;
  OutputCapture& operator=(const OutputCapture&) = delete;

  /// Gives back the descriptors and what was printed. Empty the second time.
  CapturedOutput finish();

 private:
  struct Stream {
    std::FILE* stream = nullptr;    ///< the C library's
    std::FILE* captured = nullptr;  ///< null: not kept
    int saved = -1;                 ///< the descriptor's own file
  };
  static Stream redirect(std::FILE* stream);
  static std::string restore(Stream& stream);

  bool active_ = true;
  Stream output_;
  Stream error_;
};

}  // namespace embedded
