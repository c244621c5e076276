#include "stylelib/library.h"

#include <array>
#include <cstdio>

#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/regular_file.h"
#include "stylelib/limits.h"

namespace stylelib {

/// packaging/brush_pressure.ai, byte for byte.
extern const std::span<const unsigned char> builtInLibraryFile;

namespace {

using platform::OpenFailure;

platform::RegularFile openLibrary(const std::string& path) {
  return platform::openRegularFile(platform::nativePathToWide(path).c_str());
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
  return openLibrary(path).failure != OpenFailure::missing;
}

NativeLibrary readLibraryFile(const std::string& path) {
  const auto [file, failure] = openLibrary(path);
  if (failure == OpenFailure::notRegular) return {{}, "it is not a regular file"};
  if (!file) return {{}, "it cannot be opened"};
  std::vector<unsigned char> bytes;
  std::array<unsigned char, 65536> buffer;
  // Reading just beyond the limit is enough to see that the file is too large.
  while (bytes.size() <= kMostFileBytes) {
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get());
    if (count == 0) break;
    bytes.insert(bytes.end(), buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
  }
  if (std::ferror(file.get()) != 0) return {{}, "it cannot be read"};
  return readNativeLibrary(bytes);
}

}  // namespace stylelib
