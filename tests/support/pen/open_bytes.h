// Bytes as an open file.
#pragma once

#include <cstdio>
#include <span>

#include "platform/file.h"
#include "tests/support/pen/temporary_file.h"

namespace pentest {

/// An open file, at its start, that holds the bytes; it is deleted when it is closed. Null
/// where it cannot be made.
inline platform::File openBytes(std::span<const unsigned char> bytes) {
  platform::File file = temporaryFile();
  if (!file) return file;
  if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
    return nullptr;
  std::rewind(file.get());
  return file;
}

}  // namespace pentest
