#include "platform/file.h"

#include <algorithm>
#include <cerrno>

#ifdef _WIN32
#include <io.h>
#include <string>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/descriptor.h"
#endif

#include "platform/paths.h"

namespace platform {

#ifdef _WIN32

File openFile(const wchar_t* path, const char* mode) {
  return File(_wfopen(path, nativePathToWide(mode).c_str()));
}

File openLogFile(const wchar_t* path, bool emptyFirst) {
  return openFile(path, emptyFirst ? "w" : "a");
}

std::ptrdiff_t readAtHand(std::FILE* file, char* bytes, std::size_t size) {
  constexpr std::size_t kMost = std::size_t{1} << 30U;
  return _read(_fileno(file), bytes, static_cast<unsigned>(std::min(size, kMost)));
}

bool seekTo(std::FILE* file, std::int64_t offset) {
  return _fseeki64(file, offset, SEEK_SET) == 0;
}

bool seekToEnd(std::FILE* file) {
  return _fseeki64(file, 0, SEEK_END) == 0;
}

std::int64_t tell(std::FILE* file) {
  return _ftelli64(file);
}

#else

File openFile(const wchar_t* path, const char* mode) {
  return File(std::fopen(wideToNativePath(path).c_str(), mode));
}

File openLogFile(const wchar_t* path, bool emptyFirst) {
  constexpr int kFlags =
      O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  Descriptor log(::open(wideToNativePath(path).c_str(), kFlags, 0666));
  struct stat found {};
  if (!log || ::fstat(log.number(), &found) != 0) return nullptr;
  if (!S_ISREG(found.st_mode) || found.st_nlink != 1) return nullptr;
  if (emptyFirst && ::ftruncate(log.number(), 0) != 0) return nullptr;
  File file(::fdopen(log.number(), "a"));
  if (file) log.release();
  return file;
}

std::ptrdiff_t readAtHand(std::FILE* file, char* bytes, std::size_t size) {
  while (true) {
    const ssize_t count = ::read(::fileno(file), bytes, size);
    if (count >= 0 || errno != EINTR) return count;
  }
}

bool seekTo(std::FILE* file, std::int64_t offset) {
  return fseeko(file, offset, SEEK_SET) == 0;
}

bool seekToEnd(std::FILE* file) {
  return fseeko(file, 0, SEEK_END) == 0;
}

std::int64_t tell(std::FILE* file) {
  return ftello(file);
}

#endif

}  // namespace platform
