#include "platform/executable.h"

#include <system_error>

#ifdef _WIN32
#include <string>
#include <windows.h>
#endif

namespace platform {

#ifdef _WIN32

std::filesystem::path executablePath() {
  std::wstring name(32768, L'\0');
  const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
  name.resize(length < name.size() ? length : 0);
  return name;
}

#else

std::filesystem::path executablePath() {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::filesystem::path() : path;
}

#endif

}  // namespace platform
