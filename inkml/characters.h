// Kinds of characters, the same in every locale.
#pragma once

#include <string_view>

namespace Orvo {

inline constexpr std::string_view kBlanks = " \t\n\v\f\r";

constexpr bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace Orvo
