#include "cli/xml_characters.h"

#include <algorithm>

#include "embedded/text.h"

namespace cli {

namespace {

bool isAllowed(char32_t character) {
  if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
  return character != 0xFFFE && character != 0xFFFF;
}

// The bytes of one character, or a single byte that belongs to none.
struct Piece {
  std::size_t length;
  bool allowed;
};

Piece firstPiece(std::string_view text) {
  const auto byte = static_cast<unsigned char>(text.front());
  if (byte < 0x80) return {1, isAllowed(byte)};
  constexpr std::size_t kLongest = 4;
  for (std::size_t length = 2; length <= std::min(kLongest, text.size()); ++length) {
    const auto decoded = embedded::decodeUtf8(text.substr(0, length));
    if (decoded) return {length, isAllowed(decoded->front())};
  }
  return {1, false};
}

}  // namespace

std::string xmlCharacters(std::string_view text) {
  std::string allowed;
  allowed.reserve(text.size());
  while (!text.empty()) {
    const Piece piece = firstPiece(text);
    allowed += piece.allowed ? text.substr(0, piece.length) : kReplacementCharacter;
    text.remove_prefix(piece.length);
  }
  return allowed;
}

}  // namespace cli
