// Bytes as a pipe.
#pragma once

#include <cstdio>
#include <span>
#include <unistd.h>
#include <utility>

#include "platform/file.h"

namespace pentest {

/// The reading end of a pipe that holds the bytes, a few thousand at most, and then ends; null when
/// none can be made. Like every pipe it can be neither positioned nor measured.
inline platform::File openPipe(std::span<const unsigned char> bytes) {
  int ends[2];
  if (::pipe(ends) != 0) return nullptr;
  const ssize_t written = ::write(ends[1], bytes.data(), bytes.size());
  ::close(ends[1]);
  platform::File file(::fdopen(ends[0], "rb"));
  if (!file) ::close(ends[0]);
  return written == static_cast<ssize_t>(bytes.size()) ? std::move(file) : nullptr;
}

}  // namespace pentest
