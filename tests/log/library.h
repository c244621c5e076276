// Loading a shared library.
#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace logtest {

/// A shared library, loaded from `path` for as long as this lives.
class Library {
 public:
#ifdef _WIN32
  explicit Library(const char* path) : handle_(LoadLibraryA(path)) {}
  ~Library() {
    if (isLoaded()) FreeLibrary(handle_);
  }
#else
  explicit Library(const char* path) : handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {}
  ~Library() {
    if (isLoaded()) dlclose(handle_);
  }
#endif
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  bool isLoaded() const {
    return handle_ != nullptr;
  }

 private:
#ifdef _WIN32
  HMODULE handle_;
#else
  void* handle_;
#endif
};

}  // namespace logtest
