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

/// An empty file, open for reading and writing, that vanishes when it is closed; null when there is
/// none to be had.
inline platform::File temporaryFile() {
#ifdef _WIN32
  // The C library's own come into the drive's root and end after some ten thousand.
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
