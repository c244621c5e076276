// Numbers as text and back, the same in every locale.
#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace text {

/// Appends the shortest decimal that reads back as the same number; a float or double must be
/// finite.
template <class Number>
void appendNumber(std::string& out, Number number) {
  // std::to_chars writes any double or 64-bit integer in at most 24 characters.
  char digits[32];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// The whole number that all of `digits` spells; nothing if it has other characters or the number
/// does not fit.
template <class Integer>
std::optional<Integer> wholeNumber(std::string_view digits, int base = 10) {
  Integer value{};
  const char* const last = digits.data() + digits.size();
  const auto [end, error] = std::from_chars(digits.data(), last, value, base);
  return error == std::errc() && end == last ? std::optional(value) : std::nullopt;
}

}  // namespace text
