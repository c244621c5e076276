#include "platform/folders.h"

#ifdef _WIN32
#include <windows.h>
// The folder call needs the declarations above.
#include <array>
#include <shlobj.h>
#else
#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

#include "platform/paths.h"
#endif

namespace platform {

#ifdef _WIN32

std::optional<std::wstring> localAppDataFolder() {
  constexpr int localAppData = 28;
  std::array<wchar_t, MAX_PATH> folder{};
  const HRESULT result = SHGetFolderPathW(nullptr, localAppData, nullptr, 0, folder.data());
  if (result != S_OK) return std::nullopt;
  return std::wstring(folder.data());
}

#else

namespace {

std::optional<std::string> homeFolder() {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here changes the environment.
  const char* home = std::getenv("HOME");
  if (home != nullptr && *home != '\0') return home;

  std::array<char, 4096> text{};
  passwd entry{};
  passwd* found = nullptr;
  const int error = getpwuid_r(getuid(), &entry, text.data(), text.size(), &found);
  if (error != 0 || found == nullptr || found->pw_dir == nullptr) return std::nullopt;
  return found->pw_dir;
}

}  // namespace

std::optional<std::wstring> localAppDataFolder() {
  const std::optional<std::string> home = homeFolder();
  if (!home) return std::nullopt;
  return nativePathToWide(*home + "/.local/share");
}

#endif

}  // namespace platform
