#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "platform/thread.h"

namespace Orvo {

/// How serious a message is. Only `severe`, `warning` and values below 0 are written.
enum class LogLevel : std::int32_t { severe, warning, info, fine, finer, finest };

/// "SEVERE", "WARNING", "INFO", "FINE", "FINER" or "FINEST"; empty for any other value.
const char* levelName(LogLevel level);

/// The moment in local time, such as "[2012.05.31 14:07:09]".
std::string formatLogTime(std::int64_t secondsSinceEpoch);

/// Writes one line to the debugger output and to the log file. `className` and `methodName` name
/// the reporting code, without parentheses. Never fails towards the caller; any thread may call it.
///
///     [2012.05.31 14:07:09] [5412] SEVERE invalid file descriptor<tab>PnxParser::parse()<newline>
void logMessage(const char* className, const char* methodName, const char* message, LogLevel level);

/// The log of the process: "orvo.log" in the current working directory, opened for each line and
/// closed again, started afresh by the line after the one that brought it to 10,485,760 bytes.
class Logger {
 public:
  /// The size in bytes at which the next line starts the file afresh.
  static constexpr std::int64_t sizeLimit = 10'485'760;

  /// Turns the whole log off (no file, no debugger output), or on again. The plug-in alone writes
  /// the log; a program that links the readers only to explain a file calls this first.
  static void silence(bool silent = true);

 private:
  friend void logMessage(const char*, const char*, const char*, LogLevel);

  void append(const std::string& line);

  static Logger instance_;

  const std::wstring fileName_ = L"orvo.log";
  platform::CriticalSection lock_;
  bool truncateNextOpen_ = false;
  std::atomic<bool> silent_ = false;
};

}  // namespace Orvo
