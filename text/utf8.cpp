#include "text/utf8.h"

#include <array>

namespace text {

namespace {

unsigned byteAt(std::string_view bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}

// The number of bytes in a character that begins with `lead`; 0 if none does. 0xC0 and 0xC1 begin
// only overlong forms, bytes above 0xF4 only codes beyond the last character.
std::size_t lengthByLead(unsigned lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

}  // namespace

Utf8Character firstCharacter(std::string_view bytes) {
  if (bytes.empty()) return {};
  const unsigned lead = byteAt(bytes, 0);
  const std::size_t length = lengthByLead(lead);
  if (length == 1) return {lead, 1};
  if (length == 0 || length > bytes.size()) return {};

  char32_t code = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned byte = byteAt(bytes, i);
    if ((byte & 0xC0U) != 0x80U) return {};
    code = code << 6U | (byte & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
  if (code < kSmallest.at(length) || isSurrogate(code) || code > kLastCharacter) return {};
  return {code, length};
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const Utf8Character character = firstCharacter(bytes);
    if (!character) return false;
    bytes.remove_prefix(character.length);
  }
  return true;
}

void appendUtf8(std::string& out, char32_t code) {
  const auto appendTail = [&](unsigned shift) {
    out += static_cast<char>(0x80U | (code >> shift & 0x3FU));
  };
  if (isSurrogate(code) || code > kLastCharacter) {
    out += kReplacement;
  } else if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xC0U | code >> 6U);
    appendTail(0);
  } else if (code < 0x10000) {
    out += static_cast<char>(0xE0U | code >> 12U);
    appendTail(6);
    appendTail(0);
  } else {
    out += static_cast<char>(0xF0U | code >> 18U);
    appendTail(12);
    appendTail(6);
    appendTail(0);
  }
}

}  // namespace text
