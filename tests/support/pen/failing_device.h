// A device that fails while it is read.
#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <functional>

#include "platform/file.h"
#include "tests/support/pen/pen_file_builder.h"

namespace pentest {

/// A device that delivers its bytes one by one until it fails. It must outlive the files that it
/// opens.
struct FailingDevice {
  Bytes bytes;
  std::size_t failsFrom = bytes.size();  ///< Every read at this position or after it is an error.
  bool canBePositioned = true;
  std::function<void()> onRead = [] {};

  platform::File open() {
    return platform::File(fopencookie(this, "rb", {&read, nullptr, &seek, nullptr}));
  }

  std::size_t position = 0;

 private:
  static ssize_t read(void* cookie, char* buffer, std::size_t size) {
    auto& device = *static_cast<FailingDevice*>(cookie);
    device.onRead();
    if (device.position >= std::min(device.failsFrom, device.bytes.size())) {
      errno = EIO;
      return -1;
    }
    if (size == 0) return 0;
    *buffer = static_cast<char>(device.bytes[device.position++]);
    return 1;
  }

  static int seek(void* cookie, off64_t* offset, int origin) {
    auto& device = *static_cast<FailingDevice*>(cookie);
    if (!device.canBePositioned) {
      errno = ESPIPE;
      return -1;
    }
    const std::size_t base = origin == SEEK_SET   ? 0
                             : origin == SEEK_CUR ? device.position
                                                  : device.bytes.size();
    *offset += static_cast<off64_t>(base);
    device.position = static_cast<std::size_t>(*offset);
    return 0;
  }
};

}  // namespace pentest
