#include "log/logger.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <exception>
#include <memory>
#include <mutex>

#include "platform/clock.h"
#include "platform/debug_output.h"
#include "platform/file.h"
#include "platform/unload.h"

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

constinit std::atomic<Logger*> Logger::instance_ = nullptr;
constinit std::atomic<bool> Logger::silent_ = false;

const char* levelName(LogLevel level) {
  constexpr std::array kNames{"SEVERE", "WARNING", "INFO", "FINE", "FINER", "FINEST"};
  const auto index = static_cast<std::size_t>(level);
  return index < kNames.size() ? kNames[index] : "";
}

std::string formatLogTime(std::int64_t secondsSinceEpoch) {
  const std::tm time = platform::localTime(secondsSinceEpoch);
  std::array<char, 254> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "[%Y.%m.%d %H:%M:%S]", &time);
  return {text.data(), length};
}

void logMessage(const char* className, const char* methodName, const char* message,
                LogLevel level) {
  if (level > LogLevel::warning || Logger::silent_) return;
  try {
    const std::string line = formatLine(className, methodName, message, level);
    platform::debugOutput(line.c_str());
    Logger::instance().append(line);
  } catch (const std::exception&) {
    // Without memory for the line there is nothing to write, and the caller must not notice. Only
    // the cancellation of a thread passes through: caught by `...`, it would end the process.
    return;
  }
}

void Logger::silence(bool silent) {
  silent_ = silent;
}

// Not a static local, which would stay destroyed: destructors of static objects may log, too.
Logger& Logger::instance() {
  Logger* logger = instance_;
  if (logger != nullptr) return *logger;
  auto made = std::make_unique<Logger>();
  if (!instance_.compare_exchange_strong(logger, made.get())) return *logger;
  platform::atUnload(&Logger::tearDown);
  return *made.release();
}

void Logger::tearDown() {
  const std::unique_ptr<Logger> owned(instance_.exchange(nullptr));
}

void Logger::append(const std::string& line) {
  platform::File file;  // Closed after the lock is released.
  const std::lock_guard guard(lock_);
  file = platform::openLogFile(fileName_.c_str(), truncateNextOpen_);
  truncateNextOpen_ = false;
  if (!file) return;
  // What cannot be written is lost: the log has nowhere to say so.
  static_cast<void>(std::fputs(line.c_str(), file.get()));
  static_cast<void>(std::fflush(file.get()));
  if (platform::tell(file.get()) >= kSizeLimit) truncateNextOpen_ = true;
}

}  // namespace Orvo
