#include "platform/terminal.h"

#ifdef _WIN32
#include <windows.h>
// io.h needs the declarations above.
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace platform {

#ifdef _WIN32

std::optional<TerminalSize> terminalOf(std::FILE* stream) {
  if (_isatty(_fileno(stream)) == 0) return {};
  CONSOLE_SCREEN_BUFFER_INFO info{};
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  if (GetConsoleScreenBufferInfo(handle, &info) == 0) return TerminalSize();
  return TerminalSize{static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1),
                      static_cast<std::size_t>(info.srWindow.Bottom - info.srWindow.Top + 1)};
}

#else

std::optional<TerminalSize> terminalOf(std::FILE* stream) {
  const int descriptor = ::fileno(stream);
  if (::isatty(descriptor) == 0) return {};
  winsize size{};
  if (::ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
    return TerminalSize();
  }
  return TerminalSize{size.ws_col, size.ws_row};
}

#endif

}  // namespace platform
