#include "platform/file.h"

#ifdef _WIN32
#include <string>
#else
#include <sys/types.h>
#endif

#include "platform/paths.h"

namespace platform {

#ifdef _WIN32

File openFile(const wchar_t* path, const char* mode) {
  return File(_wfopen(path, nativePathToWide(mode).c_str()));
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
