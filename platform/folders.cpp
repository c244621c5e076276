#include "platform/folders.h"

#ifdef _WIN32
#include <windows.h>
// shlobj.h needs the declarations above.
#include <array>
#include <shlobj.h>
#else
#include <array>
#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/paths.h"
#endif

namespace platform {

#ifdef _WIN32

std::optional<std::wstring> localAppDataFolder() {
  constexpr int kLocalAppData = 28;
  std::array<wchar_t, MAX_PATH> folder{};
  const HRESULT result = SHGetFolderPathW(nullptr, kLocalAppData, nullptr, 0, folder.data());
  if (result != S_OK) return std::nullopt;
  return std::wstring(folder.data());
}

std::optional<std::filesystem::path> stateFolder() {
  const std::optional<std::wstring> folder = localAppDataFolder();
  if (!folder) return std::nullopt;
  return std::filesystem::path(*folder) / "Penwick";
}

std::optional<std::filesystem::path> cacheFolder() {
  const std::optional<std::filesystem::path> folder = stateFolder();
  if (!folder) return std::nullopt;
  return *folder / "Pages";
}

std::error_code makePrivateFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  return error;
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

// "penwick" in the folder that a variable names by an absolute path, or else in one below the home
// folder.
std::optional<std::filesystem::path> ownFolder(const char* variable, const char* belowHome) {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here changes the environment.
  const char* named = std::getenv(variable);
  if (named != nullptr && *named == '/') return std::filesystem::path(named) / "penwick";
  const std::optional<std::string> home = homeFolder();
  if (!home) return std::nullopt;
  return std::filesystem::path(*home) / belowHome / "penwick";
}

}  // namespace

std::optional<std::wstring> localAppDataFolder() {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here changes the environment.
  const char* data = std::getenv("XDG_DATA_HOME");
  // A relative path is to be ignored.
  if (data != nullptr && *data == '/') return nativePathToWide(data);
  const std::optional<std::string> home = homeFolder();
  if (!home) return std::nullopt;
  return nativePathToWide(*home + "/.local/share");
}

std::optional<std::filesystem::path> stateFolder() {
  return ownFolder("XDG_STATE_HOME", ".local/state");
}

std::optional<std::filesystem::path> cacheFolder() {
  return ownFolder("XDG_CACHE_HOME", ".cache");
}

std::error_code makePrivateFolder(const std::filesystem::path& folder) {
  std::filesystem::path made;
  for (const std::filesystem::path& part : folder) {
    made /= part;
    if (::mkdir(made.c_str(), 0700) == 0 || errno == EEXIST) continue;
    // A folder above may be on a read-only file system and exist all the same.
    const std::error_code failure(errno, std::generic_category());
    std::error_code unknown;
    if (!std::filesystem::is_directory(made, unknown)) return failure;
  }
  std::error_code error;
  if (std::filesystem::is_directory(folder, error) || error) return error;
  return std::make_error_code(std::errc::not_a_directory);
}

#endif

}  // namespace platform
