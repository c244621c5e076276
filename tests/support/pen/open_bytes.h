#pragma once

#include <cstdio>
#include <span>

#include "tests/support/pen/temporary_file.h"

namespace pentest {

/// An open file, at its start, that holds the bytes; it vanishes when it is closed.
inline std::FILE* openBytes(std::span<const unsigned char> bytes) {
  std::FILE* file = temporaryFile();
  if (file == nullptr) return nullptr;
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::rewind(file);
  return file;
}

}  // namespace pentest
