#include "platform/debug_output.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <string_view>
#include <unistd.h>

#include "platform/paths.h"
#endif

namespace platform {

#ifdef _WIN32

void debugOutput(const char* text) {
  OutputDebugStringA(text);
}

void debugOutput(const wchar_t* text) {
  OutputDebugStringW(text);
}

#else

void debugOutput(const char* text) {
  std::string_view rest(text);
  while (!rest.empty()) {
    const ssize_t written = ::write(STDERR_FILENO, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

void debugOutput(const wchar_t* text) {
  debugOutput(wideToNativePath(text).c_str());
}

#endif

}  // namespace platform
