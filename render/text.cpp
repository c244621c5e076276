#include "render/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace render {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

unsigned byteAt(std::string_view text, std::size_t index) {
  return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
}

struct Character {
  char32_t code = 0;
  std::size_t length = 0;  // 0: not UTF-8
};

Character characterAt(std::string_view text, std::size_t index) {
  const unsigned lead = byteAt(text, index);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4) return {};
  char32_t code = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned next = byteAt(text, index + i);
    if ((next & 0xC0U) != 0x80U) return {};
    code = (code << 6U) | (next & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kLeast.at(length) || surrogate || code > 0x10FFFF) return {};
  return {code, length};
}

}  // namespace

char* putHundredths(char* to, int hundredths) {
  auto rest = static_cast<unsigned>(hundredths);
  if (hundredths < 0) {
    *to++ = '-';
    rest = 0U - rest;
  }
  const unsigned whole = rest / 100;
  rest %= 100;
  if (whole != 0 || rest == 0) to = std::to_chars(to, to + kLongestNumber, whole).ptr;
  if (rest == 0) return to;
  *to++ = '.';
  *to++ = static_cast<char>('0' + rest / 10);
  if (rest % 10 != 0) *to++ = static_cast<char>('0' + rest % 10);
  return to;
}

void appendHundredths(std::string& text, int hundredths) {
  std::array<char, kLongestNumber> digits;
  text.append(digits.data(), putHundredths(digits.data(), hundredths));
}

std::string plainText(std::string_view name) {
  std::string text;
  for (std::size_t i = 0; i < name.size();) {
    const Character character = characterAt(name, i);
    const bool control = character.code < 0x20 || (character.code >= 0x7F && character.code < 0xA0);
    if (character.length == 0 || (character.code & 0xFFFEU) == 0xFFFEU) {
      text += kReplacement;
    } else if (control) {
      text += ' ';
    } else {
      text += name.substr(i, character.length);
    }
    i += std::max<std::size_t>(character.length, 1);
  }
  return text;
}

void appendEscaped(std::string& text, std::string_view plain) {
  for (const char character : plain) {
    switch (character) {
      case '&':
        text += "&amp;";
        break;
      case '<':
        text += "&lt;";
        break;
      case '>':
        text += "&gt;";
        break;
      case '"':
        text += "&quot;";
        break;
      default:
        text += character;
    }
  }
}

int byteOf(double share) {
  if (std::isnan(share)) return 0;
  return static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * 255));
}

void appendColor(std::string& text, const art::Color& color) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::array<unsigned, 3> parts{static_cast<unsigned>(byteOf(color.red)),
                                      static_cast<unsigned>(byteOf(color.green)),
                                      static_cast<unsigned>(byteOf(color.blue))};
  const bool isShort =
      std::ranges::all_of(parts, [](unsigned part) { return part / 16 == part % 16; });
  text += '#';
  for (const unsigned part : parts) {
    text += kDigits[part / 16];
    if (!isShort) text += kDigits[part % 16];
  }
}

}  // namespace render
