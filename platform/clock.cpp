#include "platform/clock.h"

namespace platform {

std::tm localTime(std::int64_t secondsSinceEpoch) {
  const auto seconds = static_cast<std::time_t>(secondsSinceEpoch);
  std::tm parts{};
#ifdef _WIN32
  const bool known = localtime_s(&parts, &seconds) == 0;
#else
  const bool known = localtime_r(&seconds, &parts) != nullptr;
#endif
  return known ? parts : std::tm{};
}

}  // namespace platform
