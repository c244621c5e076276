#include "web/win_ansi.h"

#include <algorithm>
#include <array>

#include "text/utf8.h"

namespace web {

namespace {

// The characters of the bytes 80 to 9F; 0 where there is none.
constexpr std::array<char32_t, 32> kSpecial{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The byte of a character; 0 where it has none.
unsigned char byteOf(char32_t code) {
  if ((code >= 0x20 && code < 0x7F) || (code >= 0xA0 && code <= 0xFF)) {
    return static_cast<unsigned char>(code);
  }
  if (text::isControl(code)) return ' ';
  const auto* const place = std::ranges::find(kSpecial, code);
  return place == kSpecial.end() ? 0
                                 : static_cast<unsigned char>(0x80 + (place - kSpecial.begin()));
}

}  // namespace

WinAnsi toWinAnsi(std::string_view utf8) {
  WinAnsi result;
  while (!utf8.empty()) {
    const text::Utf8Character character = text::firstCharacter(utf8);
    const unsigned char byte = character ? byteOf(character.code) : 0;
    result.bytes += byte == 0 ? '?' : static_cast<char>(byte);
    result.hasGaps = result.hasGaps || byte == 0;
    utf8.remove_prefix(character ? character.length : 1);
  }
  return result;
}

}  // namespace web
