// UTF-8, character by character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

/// U+FFFD, which replaces what is not a character.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;
inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

inline constexpr char32_t kLastCharacter = 0x10FFFF;

/// One half of a UTF-16 pair, U+D800 to U+DFFF, which UTF-8 does not encode.
constexpr bool isSurrogate(char32_t code) {
  return code >= 0xD800 && code <= 0xDFFF;
}

/// U+0000 to U+001F and U+007F to U+009F: what a terminal may take for a command.
constexpr bool isControl(char32_t code) {
  return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

/// What must not reach a reader unseen: controls, marks that change the direction of writing, line
/// and paragraph separators, and the byte-order mark. With these a name could pass for another one.
constexpr bool isHarmful(char32_t code) {
  const auto isBetween = [code](char32_t first, char32_t last) {
    return first <= code && code <= last;
  };
  return isControl(code) || code == 0x061C || isBetween(0x200E, 0x200F) ||
         isBetween(0x2028, 0x202E) || isBetween(0x2066, 0x2069) || code == 0xFEFF;
}

struct Utf8Character {
  char32_t code = 0;
  std::size_t length = 0;  ///< in bytes, 1 to 4; 0 where there is no valid character

  explicit operator bool() const { return length != 0; }
};

/// The character at the start of `bytes`; none for no bytes, overlong forms, surrogates, codes
/// beyond U+10FFFF and characters that are cut short.
Utf8Character firstCharacter(std::string_view bytes);

/// Whether all of `bytes` is valid UTF-8.
bool isUtf8(std::string_view bytes);

/// Appends a character; U+FFFD for surrogates and codes beyond U+10FFFF.
void appendUtf8(std::string& out, char32_t code);

}  // namespace text
