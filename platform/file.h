// Files of the C library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace platform {

struct CloseFile {
  // What is written is flushed before, where a failure can still be said.
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

/// An open file of the C library, closed when its owner is destroyed; null is none.
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Opens the file at the wide, zero-terminated `path`. `mode` is what `fopen` takes, such as "rb".
/// Other processes may read and write the file meanwhile. Null when it cannot be opened.
File openFile(const wchar_t* path, const char* mode);

/// Opens a log at `path` for appending; `emptyFirst` discards what it held. A missing file is
/// created. Natively only a regular file with a single name is opened or emptied: a link is not
/// followed, a file that has another name is left alone, and a pipe is not waited for. Null when it
/// is something else or cannot be opened.
File openLogFile(const wchar_t* path, bool emptyFirst);

/// One byte (0 to 255), or `EOF` at the end or on an error, through the C library's buffer without
/// its lock: about ten times cheaper than `fread` of one byte. Only one thread may use the file.
inline int readByte(std::FILE* file) {
#ifdef _WIN32
  return _fgetc_nolock(file);
#else
  return getc_unlocked(file);
#endif
}

/// Reads up to `size` bytes, those that are at hand: it waits only where there are none. 0 at the
/// end, -1 on an error, which `errno` names. Past the C library's buffer: nothing else may read the
/// file.
std::ptrdiff_t readAtHand(std::FILE* file, char* bytes, std::size_t size);

/// Moves to `offset` bytes from the start of the file; beyond the end is allowed. Clears the
/// end-of-file mark. False when the file cannot be positioned.
bool seekTo(std::FILE* file, std::int64_t offset);

/// Moves to the end of the file. False when the file cannot be positioned.
bool seekToEnd(std::FILE* file);

/// The position in bytes from the start, or -1 when it is not known.
std::int64_t tell(std::FILE* file);

}  // namespace platform
