#include "cli/terminal_text.h"

#include <algorithm>

#include "embedded/text.h"

namespace cli {

namespace {

bool isHarmful(char32_t character) {
  const auto isBetween = [character](char32_t first, char32_t last) {
    return first <= character && character <= last;
  };
  const bool isControl = character < 0x20 || isBetween(0x7F, 0x9F);
  const bool isDirection = character == 0x061C || isBetween(0x200E, 0x200F) ||
                           isBetween(0x202A, 0x202E) || isBetween(0x2066, 0x2069);
  const bool isSeparator = isBetween(0x2028, 0x2029);
  const bool isNoCharacter = isBetween(0xD800, 0xDFFF);
  return isControl || isDirection || isSeparator || isNoCharacter || character == 0xFEFF;
}

template <class IsKept>
std::string withoutHarm(std::string_view text, IsKept isKept) {
  std::u32string characters = embedded::fromNativePath(text);
  std::ranges::replace_if(
      characters, [&](char32_t character) { return isHarmful(character) && !isKept(character); },
      U'?');
  return embedded::encodeUtf8(characters);
}

}  // namespace

std::string printable(std::string_view text) {
  return withoutHarm(text, [](char32_t) { return false; });
}

std::string printableLines(std::string_view text) {
  return withoutHarm(text,
                     [](char32_t character) { return character == U'\n' || character == U'\t'; });
}

std::string shortened(std::string_view text) {
  constexpr std::size_t kMost = 80;
  const std::u32string characters = embedded::fromNativePath(text);
  if (characters.size() <= kMost) return std::string(text);
  return embedded::toNativePath(std::u32string_view(characters).substr(0, kMost)) + "...";
}

std::string lowerCased(std::string_view text) {
  std::string lower(text);
  for (char& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

std::string inQuotes(std::string_view word) {
  return "'" + shortened(word) + "'";
}

}  // namespace cli
