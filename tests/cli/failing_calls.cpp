// Preloaded, this makes a call on the system fail: PENWICK_FAILING_CALL names the kind of the call,
// and which one in its process, such as "write 3". The number 0 fails none. The file that
// PENWICK_CALLS_MADE names holds two numbers of 32 bits: how many calls of the kind a process has
// made at most, and how many have failed.
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

struct Made {
  std::atomic<std::uint32_t> most;
  std::atomic<std::uint32_t> failed;
};

struct Wanted {
  char kind[16] = "";
  unsigned number = 0;
  Made* made = nullptr;
};

template <class Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

Wanted readWanted() {
  Wanted wanted;
  const char* call = std::getenv("PENWICK_FAILING_CALL");
  const char* place = std::getenv("PENWICK_CALLS_MADE");
  if (call == nullptr || place == nullptr) return wanted;
  const std::size_t length = std::strcspn(call, " ");
  if (length >= sizeof wanted.kind) return wanted;
  std::memcpy(wanted.kind, call, length);
  wanted.number = static_cast<unsigned>(std::strtoul(call + length, nullptr, 10));
  const int file = next<int(const char*, int, ...)>("open")(place, O_RDWR | O_CLOEXEC);
  void* memory = ::mmap(nullptr, sizeof(Made), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  next<int(int)>("close")(file);
  if (memory != MAP_FAILED) wanted.made = static_cast<Made*>(memory);
  return wanted;
}

// Whether this call is the one that fails.
bool fails(const char* kind, int code) {
  static const Wanted wanted = readWanted();
  static std::atomic<std::uint32_t> count = 0;
  if (wanted.made == nullptr || std::strcmp(kind, wanted.kind) != 0) return false;
  const std::uint32_t number = ++count;
  std::uint32_t most = wanted.made->most;
  while (most < number && !wanted.made->most.compare_exchange_weak(most, number)) {
  }
  if (number != wanted.number) return false;
  ++wanted.made->failed;
  errno = code;
  return true;
}

// Marks the error as the C library does.
void mark(std::FILE* file) {
  file->_flags |= 0x20;
}

bool isWritten(int flags) {
  return (flags & (O_WRONLY | O_RDWR)) != 0;
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

ssize_t read(int file, void* bytes, size_t size) {
  if (fails("interrupt", EINTR) || fails("read", EIO)) return -1;
  return next<ssize_t(int, void*, size_t)>("read")(file, bytes, size);
}

ssize_t write(int file, const void* bytes, size_t size) {
  if (fails("interrupt", EINTR) || fails("write", ENOSPC)) return -1;
  const bool isShort = size > 1 && fails("short", 0);
  return next<ssize_t(int, const void*, size_t)>("write")(file, bytes, isShort ? size / 2 : size);
}

ssize_t recv(int file, void* bytes, size_t size, int flags) {
  if (fails("interrupt", EINTR) || fails("read", EIO)) return -1;
  return next<ssize_t(int, void*, size_t, int)>("recv")(file, bytes, size, flags);
}

ssize_t send(int file, const void* bytes, size_t size, int flags) {
  if (fails("interrupt", EINTR) || fails("write", ENOSPC)) return -1;
  const bool isShort = size > 1 && fails("short", 0);
  return next<ssize_t(int, const void*, size_t, int)>("send")(file, bytes,
                                                              isShort ? size / 2 : size, flags);
}

int open(const char* path, int flags, ...) {
  if (fails("open", isWritten(flags) ? EACCES : EIO)) return -1;
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return next<int(const char*, int, ...)>("open")(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  if (fails("open", isWritten(flags) ? EACCES : EIO)) return -1;
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return next<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
}

// The system closes the file all the same.
int close(int file) {
  const int result = next<int(int)>("close")(file);
  return fails("close", EIO) ? -1 : result;
}

int renameat(int from, const char* name, int to, const char* newName) {
  if (fails("rename", EIO)) return -1;
  return next<int(int, const char*, int, const char*)>("renameat")(from, name, to, newName);
}

std::FILE* fopen(const char* path, const char* mode) {
  if (fails("open", EIO)) return nullptr;
  return next<std::FILE*(const char*, const char*)>("fopen")(path, mode);
}

size_t fread(void* bytes, size_t size, size_t count, std::FILE* file) {
  if (fails("read", EIO)) return mark(file), 0;
  return next<size_t(void*, size_t, size_t, std::FILE*)>("fread")(bytes, size, count, file);
}

int __uflow(std::FILE* file) {
  if (fails("read", EIO)) return mark(file), EOF;
  return next<int(std::FILE*)>("__uflow")(file);
}

size_t fwrite(const void* bytes, size_t size, size_t count, std::FILE* file) {
  if (fails("write", ENOSPC)) return mark(file), 0;
  return next<size_t(const void*, size_t, size_t, std::FILE*)>("fwrite")(bytes, size, count, file);
}

int fputs(const char* text, std::FILE* file) {
  if (fails("write", ENOSPC)) return mark(file), EOF;
  return next<int(const char*, std::FILE*)>("fputs")(text, file);
}

int fflush(std::FILE* file) {
  if (file != nullptr && fails("write", ENOSPC)) return mark(file), EOF;
  return next<int(std::FILE*)>("fflush")(file);
}

int fclose(std::FILE* file) {
  const int result = next<int(std::FILE*)>("fclose")(file);
  return fails("close", EIO) ? EOF : result;
}

}  // extern "C"
#pragma GCC visibility pop
