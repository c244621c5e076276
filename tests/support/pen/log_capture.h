// Capturing the log.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/pen/temporary_folder.h"
#include "tests/support/pen/text_file.h"

namespace pentest {

/// Gives a test its own current folder, and the log that is written there.
class LogCapture {
 public:
  /// The lines that `work` logs, without time and thread; the debugger output is not shown.
  template <class Work>
  std::vector<std::string> linesOfWork(Work work) const {
    std::filesystem::remove(file());
    testing::internal::CaptureStderr();
    work();
    testing::internal::GetCapturedStderr();
    std::vector<std::string> lines = linesOf(readText(file()));
    for (std::string& line : lines)
      line = withoutTimeAndThread(line);
    return lines;
  }

  std::filesystem::path file() const { return folder_ / "orvo.log"; }

 private:
  TemporaryFolder folder_;
  CurrentFolder current_{folder_.path()};
};

}  // namespace pentest
