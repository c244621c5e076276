#include "render/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

#include "text/utf8.h"

namespace render {

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
  std::string plain;
  for (std::size_t i = 0; i < name.size();) {
    const text::Utf8Character character = text::firstCharacter(name.substr(i));
    if (!character || (character.code & 0xFFFEU) == 0xFFFEU) {
      plain += text::kReplacement;
    } else if (text::isHarmful(character.code)) {
      plain += ' ';
    } else {
      plain += name.substr(i, character.length);
    }
    i += std::max<std::size_t>(character.length, 1);
  }
  return plain;
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
