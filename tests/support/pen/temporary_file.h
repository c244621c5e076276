// Files that are deleted when they are closed.
#pragma once

#include <cstdio>

#ifdef _WIN32
#include <atomic>
#include <filesystem>
#include <process.h>
#include <string>
#endif

#include "platform/file.h"

namespace pentest {

/// An empty file, open for reading and writing, that is deleted when it is closed; null when none
/// can be made.
inline platform::File temporaryFile() {
#ifdef _WIN32
  // The C library's own temporary files go to the drive's root and run out after some ten thousand.
  static std::atomic<unsigned> count = 0;
  static const std::filesystem::path folder = std::filesystem::temp_directory_path();
  const std::wstring name =
      L"penwick-" + std::to_wstring(_getpid()) + L"-" + std::to_wstring(++count);
  return platform::File(_wfopen((folder / name).c_str(), L"w+bTD"));
#else
  return platform::File(std::tmpfile());
#endif
}

}  // namespace pentest
