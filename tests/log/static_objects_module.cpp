// A module with two static objects that log. The one that is created first and destroyed last logs
// only when it is destroyed, the other one also when it is created.
#include "log/logger.h"

namespace {

struct LogsWhenDestroyed {
  LogsWhenDestroyed() = default;
  ~LogsWhenDestroyed() {
    Orvo::logMessage("LogsWhenDestroyed", "destructor", "destroyed", Orvo::LogLevel::severe);
  }
  LogsWhenDestroyed(const LogsWhenDestroyed&) = delete;
  LogsWhenDestroyed& operator=(const LogsWhenDestroyed&) = delete;
};

struct LogsAlways : LogsWhenDestroyed {
  LogsAlways() { Orvo::logMessage("LogsAlways", "constructor", "created", Orvo::LogLevel::severe); }
};

// 101 is the first priority that is not reserved for the system.
[[gnu::init_priority(101)]] LogsWhenDestroyed firstAndSilent;
[[gnu::init_priority(102)]] LogsAlways second;

}  // namespace
