#include "log/logger.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <mutex>

#include "platform/clock.h"
#include "platform/debug_output.h"
#include "platform/file.h"

namespace Orvo {
namespace {

std::string formatLine(const char* className, const char* methodName, const char* message,
                       LogLevel level) {
  std::string line = formatLogTime(std::time(nullptr));
  line.append(" [").append(std::to_string(platform::currentThreadId())).append("] ");
  line.append(levelName(level)).append(" ").append(message).append("\t");
  line.append(className).append("::").append(methodName).append("()\n");
  return line;
}

}  // namespace

Logger Logger::instance_;

const char* levelName(LogLevel level) {
  constexpr std::array names{"SEVERE", "WARNING", "INFO", "FINE", "FINER", "FINEST"};
  const auto index = static_cast<std::size_t>(level);
  return index < names.size() ? names[index] : "";
}

std::string formatLogTime(std::int64_t secondsSinceEpoch) {
  const std::tm time = platform::localTime(secondsSinceEpoch);
  std::array<char, 254> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "[%Y.%m.%d %H:%M:%S]", &time);
  return {text.data(), length};
}

void logMessage(const char* className, const char* methodName, const char* message,
                LogLevel level) {
  if (level > LogLevel::warning || Logger::instance_.silent_) return;
  try {
    const std::string line = formatLine(className, methodName, message, level);
    platform::debugOutput(line.c_str());
    Logger::instance_.append(line);
  } catch (...) {
    // Without memory for the line there is nothing to write; the caller is never disturbed.
    return;
  }
}

void Logger::silence(bool silent) {
  instance_.silent_ = silent;
}

void Logger::append(const std::string& line) {
  platform::File file;  // Closed after the lock is given back.
  const std::lock_guard guard(lock_);
  file = platform::openFile(fileName_.c_str(), truncateNextOpen_ ? "w" : "a");
  truncateNextOpen_ = false;
  if (!file) return;
  std::fputs(line.c_str(), file.get());
  std::fflush(file.get());
  if (platform::tell(file.get()) >= sizeLimit) truncateNextOpen_ = true;
}

}  // namespace Orvo
