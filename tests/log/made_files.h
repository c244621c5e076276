// Files and folders that a test made.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "platform/file.h"

namespace pentest {

/// The names in a folder, in no particular order.
inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  return names;
}

/// Writes a file that holds `text`.
inline void writeText(const std::filesystem::path& path, const std::string& text) {
  const platform::File file = platform::openFile(path.wstring().c_str(), "wb");
  ASSERT_TRUE(file);
  EXPECT_GE(std::fputs(text.c_str(), file.get()), 0);
}

#ifndef _WIN32
/// The permission bits of a file or folder.
inline mode_t permissionsOf(const std::filesystem::path& path) {
  struct stat found {};
  EXPECT_EQ(::stat(path.c_str(), &found), 0);
  return found.st_mode & 07777;
}
#endif

}  // namespace pentest
