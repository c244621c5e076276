#include "platform/paths.h"

#include <algorithm>
#include <array>
#include <cstdint>

#ifdef _WIN32
#include <windows.h>
#endif

namespace platform {

#ifdef _WIN32

std::string wideToNativePath(std::wstring_view wide) {
  const auto count = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), count, nullptr, 0, nullptr, nullptr);
  std::string native(static_cast<std::size_t>(std::max(size, 0)), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), count, native.data(), size, nullptr, nullptr);
  return native;
}

std::wstring nativePathToWide(std::string_view native) {
  const auto count = static_cast<int>(native.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, native.data(), count, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(std::max(size, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, native.data(), count, wide.data(), size);
  return wide;
}

#else

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t rawByteBase = 0xDC00;

struct Decoded {
  char32_t character;
  std::size_t length;
};

bool isSurrogate(char32_t character) {
  return character >= 0xD800 && character <= 0xDFFF;
}

bool isRawByte(char32_t character) {
  return character >= 0xDC80 && character <= 0xDCFF;
}

void appendUtf8(std::string& out, char32_t character) {
  const auto tail = [&](unsigned shift) {
    out.push_back(static_cast<char>(0x80U | ((character >> shift) & 0x3FU)));
  };
  if (character < 0x80) {
    out.push_back(static_cast<char>(character));
  } else if (character < 0x800) {
    out.push_back(static_cast<char>(0xC0U | (character >> 6U)));
    tail(0);
  } else if (character < 0x10000) {
    out.push_back(static_cast<char>(0xE0U | (character >> 12U)));
    tail(6);
    tail(0);
  } else {
    out.push_back(static_cast<char>(0xF0U | (character >> 18U)));
    tail(12);
    tail(6);
    tail(0);
  }
}

std::size_t sequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  if (lead >= 0xF0 && lead < 0xF5) return 4;
  return 0;
}

// The first character of `text`; a byte that starts no valid sequence stands for itself.
Decoded decodeFirst(std::string_view text) {
  constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
  constexpr std::array<unsigned, 5> leadMask{0, 0x7F, 0x1F, 0x0F, 0x07};
  const auto lead = static_cast<unsigned char>(text.front());
  const Decoded raw{rawByteBase + lead, 1};
  const std::size_t length = sequenceLength(lead);
  if (length == 0 || length > text.size()) return raw;

  char32_t character = lead & leadMask[length];
  for (const char next : text.substr(1, length - 1)) {
    const auto byte = static_cast<unsigned char>(next);
    if ((byte & 0xC0U) != 0x80U) return raw;
    character = (character << 6U) | (byte & 0x3FU);
  }
  if (character < smallest[length] || character > 0x10FFFF || isSurrogate(character)) return raw;
  return {character, length};
}

}  // namespace

std::string wideToNativePath(std::wstring_view wide) {
  std::string native;
  native.reserve(wide.size());
  for (const wchar_t unit : wide) {
    const auto character = static_cast<char32_t>(unit);
    if (isRawByte(character)) {
      native.push_back(static_cast<char>(character - rawByteBase));
    } else if (isSurrogate(character) || character > 0x10FFFF) {
      appendUtf8(native, replacement);
    } else {
      appendUtf8(native, character);
    }
  }
  return native;
}

std::wstring nativePathToWide(std::string_view native) {
  std::wstring wide;
  wide.reserve(native.size());
  while (!native.empty()) {
    const Decoded next = decodeFirst(native);
    wide.push_back(static_cast<wchar_t>(next.character));
    native.remove_prefix(next.length);
  }
  return wide;
}

#endif

}  // namespace platform
