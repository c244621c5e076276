#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

namespace text {

/// What `std::snprintf` makes of `pattern` and `values`, cut after 255 bytes; empty where it fails.
template <class... Values>
std::string format(const char* pattern, Values... values) {
  std::array<char, 256> bytes{};
  const int length = std::snprintf(bytes.data(), bytes.size(), pattern, values...);
  return length < 0 ? std::string() : std::string(bytes.data());
}

}  // namespace text
