// What all fuzz targets share.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "platform/file.h"

namespace fuzz {

/// Ends the run if a condition does not hold; the fuzzer keeps the bytes.
inline void check(bool holds) {
  if (!holds) std::abort();
}

/// The fuzzer's bytes as a file that can be positioned beyond its end, as real files can.
class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  /// The file may be used for as long as the input lives.
  platform::File open() {
    return platform::File(fopencookie(this, "rb", {&Input::read, nullptr, &Input::seek, nullptr}));
  }

 private:
  static ssize_t read(void* cookie, char* buffer, std::size_t size) {
    auto* input = static_cast<Input*>(cookie);
    const std::size_t start = std::min(input->position_, input->bytes_.size());
    const std::size_t count = std::min(size, input->bytes_.size() - start);
    std::copy_n(input->bytes_.begin() + static_cast<std::ptrdiff_t>(start), count, buffer);
    input->position_ += count;
    return static_cast<ssize_t>(count);
  }

  static int seek(void* cookie, off64_t* offset, int origin) {
    auto* input = static_cast<Input*>(cookie);
    const auto size = static_cast<off64_t>(input->bytes_.size());
    const auto here = static_cast<off64_t>(input->position_);
    const off64_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? here : size;
    if (base + *offset < 0) return -1;
    *offset += base;
    input->position_ = static_cast<std::size_t>(*offset);
    return 0;
  }

  std::span<const std::uint8_t> bytes_;
  std::size_t position_ = 0;
};

}  // namespace fuzz
