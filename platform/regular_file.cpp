#include "platform/regular_file.h"

#include <utility>

#ifdef _WIN32
#include <windows.h>
// io.h needs the declarations above.
#include <io.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/paths.h"
#endif

namespace platform {

#ifdef _WIN32

RegularFile openRegularFile(const wchar_t* path) {
  const DWORD attributes = GetFileAttributesW(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) return {nullptr, OpenFailure::missing};
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {nullptr, OpenFailure::notRegular};
  File file = openFile(path, "rb");
  if (!file) return {nullptr, OpenFailure::unreadable};
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file.get())));
  if (GetFileType(handle) != FILE_TYPE_DISK) return {nullptr, OpenFailure::notRegular};
  return {std::move(file), OpenFailure::none};
}

#else

RegularFile openRegularFile(const wchar_t* path) {
  const std::string native = wideToNativePath(path);
  struct stat found {};
  // Without O_NONBLOCK opening a pipe waits for somebody to write into it.
  const int descriptor = open(native.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) {
    if (stat(native.c_str(), &found) != 0) {
      const bool missing = errno == ENOENT || errno == ENOTDIR;
      return {nullptr, missing ? OpenFailure::missing : OpenFailure::unreadable};
    }
    return {nullptr, S_ISREG(found.st_mode) ? OpenFailure::unreadable : OpenFailure::notRegular};
  }
  if (fstat(descriptor, &found) != 0 || !S_ISREG(found.st_mode)) {
    close(descriptor);
    return {nullptr, OpenFailure::notRegular};
  }
  File file(fdopen(descriptor, "rb"));
  if (!file) {
    close(descriptor);
    return {nullptr, OpenFailure::unreadable};
  }
  return {std::move(file), OpenFailure::none};
}

#endif

}  // namespace platform
