// The diagnostics log.
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
/// the reporting code, without parentheses. Errors never reach the caller; any thread may call it.
///
///     [2012.05.31 14:07:09] [5412] SEVERE invalid file descriptor<tab>PnxParser::parse()<newline>
void logMessage(const char* className, const char* methodName, const char* message, LogLevel level);

/// The log of the process: "orvo.log" in the current working directory, opened and closed again for
/// each line. After a line that brings it to 10,485,760 bytes or more, the next line empties it
/// first.
///
/// Its state is created by the first message, even that of a static object, and destroyed when the
/// module is unloaded or the program ends; a static object that logs even later creates it again.
class Logger {
 public:
  /// The size in bytes from which on the next line empties the file first.
  static constexpr std::int64_t kSizeLimit = 10'485'760;

  /// Turns the whole log off (no file, no debugger output), or on again. Only the plug-in writes
  /// the log; a program that links the readers just to explain a file calls this first.
  static void silence(bool silent = true);

 private:
  friend void logMessage(const char*, const char*, const char*, LogLevel);

  static Logger& instance();
  static void tearDown();

  void append(const std::string& line);

  // Both are initialised before the constructor of any static object runs.
  static constinit std::atomic<Logger*> instance_;
  static constinit std::atomic<bool> silent_;

  const std::wstring fileName_ = L"orvo.log";
  platform::CriticalSection lock_;
  bool truncateNextOpen_ = false;
};

}  // namespace Orvo
