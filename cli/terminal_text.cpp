#include "cli/terminal_text.h"

#include <algorithm>

#include "embedded/text.h"
#include "text/utf8.h"

namespace cli {

namespace {

template <class IsKept>
std::string withoutHarm(std::string_view words, IsKept isKept) {
  std::u32string characters = embedded::fromNativePath(words);
  std::ranges::replace_if(
      characters,
      [&](char32_t character) {
        return (text::isHarmful(character) || text::isSurrogate(character)) && !isKept(character);
      },
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
