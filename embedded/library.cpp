#include "embedded/library.h"

#include <array>
#include <cstdio>
#include <optional>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/paths.h"

namespace embedded {

/// packaging/brush_pressure.ai, byte for byte.
extern const std::span<const unsigned char> builtInLibraryFile;

namespace {

// Reading stops above what any library has.
constexpr std::size_t kMostBytes = std::size_t{16} << 20;

platform::File openLibrary(const std::string& path) {
  return platform::openFile(platform::nativePathToWide(path).c_str(), "rb");
}

}  // namespace

std::string defaultLibraryPath() {
  const std::wstring folder = platform::localAppDataFolder().value_or(std::wstring());
#ifdef _WIN32
  return platform::wideToNativePath(folder + L"\\Penwick\\brush_pressure.ai");
#else
  return platform::wideToNativePath(folder + L"/Penwick/brush_pressure.ai");
#endif
}

NativeLibrary builtInLibrary() {
  return readNativeLibrary(builtInLibraryFile);
}

bool libraryFileExists(const std::string& path) {
  return openLibrary(path) != nullptr;
}

NativeLibrary readLibraryFile(const std::string& path) {
  const platform::File file = openLibrary(path);
  if (!file) return {{}, "it cannot be opened"};
  std::vector<unsigned char> bytes;
  std::array<unsigned char, 65536> buffer;
  while (bytes.size() <= kMostBytes) {
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get());
    if (count == 0) break;
    bytes.insert(bytes.end(), buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
  }
  if (std::ferror(file.get()) != 0) return {{}, "it cannot be read"};
  return readNativeLibrary(bytes);
}

}  // namespace embedded
