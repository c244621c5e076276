#include "embedded/text.h"

#include <cstdint>

#include "platform/paths.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace embedded {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCharacter = 0x10FFFF;
constexpr char32_t kFirstBeyondUnit = 0x10000;

bool isHigh(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLow(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}
bool isRawByte(char32_t unit) {
  return unit >= 0xDC80 && unit <= 0xDCFF;
}

char32_t joined(char32_t high, char32_t low) {
  return kFirstBeyondUnit + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

// The lead byte's own bits and the bytes that have to follow; nothing for what leads no character.
struct Lead {
  char32_t bits;
  std::size_t following;
  char32_t smallest;
};

std::optional<Lead> leadOf(unsigned char byte) {
  if (byte < 0x80) return Lead{byte, 0, 0};
  if (byte >= 0xC2 && byte < 0xE0) return Lead{byte & 0x1FU, 1, 0x80};
  if (byte >= 0xE0 && byte < 0xF0) return Lead{byte & 0x0FU, 2, 0x800};
  if (byte >= 0xF0 && byte < 0xF5) return Lead{byte & 0x07U, 3, kFirstBeyondUnit};
  return std::nullopt;
}

void appendUtf8(std::string& out, char32_t character) {
  const auto tail = [&](unsigned shift) {
    out += static_cast<char>(0x80U | (character >> shift & 0x3FU));
  };
  if (character < 0x80) {
    out += static_cast<char>(character);
  } else if (character < 0x800) {
    out += static_cast<char>(0xC0U | character >> 6U);
    tail(0);
  } else if (character < kFirstBeyondUnit) {
    out += static_cast<char>(0xE0U | character >> 12U);
    tail(6);
    tail(0);
  } else {
    out += static_cast<char>(0xF0U | character >> 18U);
    tail(12);
    tail(6);
    tail(0);
  }
}

}  // namespace

std::optional<std::u32string> decodeUtf8(std::string_view bytes) {
  std::u32string text;
  text.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size();) {
    const std::optional<Lead> lead = leadOf(static_cast<unsigned char>(bytes[i++]));
    if (!lead || bytes.size() - i < lead->following) return std::nullopt;
    char32_t character = lead->bits;
    for (std::size_t k = 0; k < lead->following; ++k) {
      const auto byte = static_cast<unsigned char>(bytes[i++]);
      if ((byte & 0xC0U) != 0x80U) return std::nullopt;
      character = character << 6U | (byte & 0x3FU);
    }
    if (character < lead->smallest || character > kLastCharacter) return std::nullopt;
    if (isHigh(character) || isLow(character)) return std::nullopt;
    text += character;
  }
  return text;
}

#ifdef _WIN32

std::optional<std::u32string> decodePlatform(std::string_view bytes) {
  if (bytes.empty()) return std::u32string();
  const auto size = static_cast<int>(bytes.size());
  const int units =
      MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0);
  if (units <= 0) return std::nullopt;
  std::u16string wide(static_cast<std::size_t>(units), u'\0');
  MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, bytes.data(), size,
                      reinterpret_cast<wchar_t*>(wide.data()), units);
  return decodeUtf16(wide);
}

#else

std::optional<std::u32string> decodePlatform(std::string_view bytes) {
  return decodeUtf8(bytes);
}

#endif

std::optional<std::u32string> decodeUtf16(std::u16string_view units) {
  std::u32string text;
  text.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char32_t unit = units[i];
    if (isHigh(unit)) {
      if (i + 1 == units.size() || !isLow(units[i + 1])) return std::nullopt;
      text += joined(unit, units[++i]);
    } else if (isLow(unit) && !isRawByte(unit)) {
      return std::nullopt;
    } else {
      text += unit;
    }
  }
  return text;
}

std::string encodeUtf8(std::u32string_view text) {
  std::string out;
  out.reserve(text.size());
  for (const char32_t character : text) {
    const bool none = isHigh(character) || isLow(character) || character > kLastCharacter;
    appendUtf8(out, none ? kReplacement : character);
  }
  return out;
}

std::u16string encodeUtf16(std::u32string_view text) {
  std::u16string units;
  units.reserve(text.size());
  for (const char32_t character : text) {
    if (character < kFirstBeyondUnit) {
      units += static_cast<char16_t>(character);
    } else {
      const char32_t rest = character - kFirstBeyondUnit;
      units += static_cast<char16_t>(0xD800 + (rest >> 10U));
      units += static_cast<char16_t>(0xDC00 + (rest & 0x3FFU));
    }
  }
  return units;
}

// A wide character is a code point natively and a UTF-16 unit on Windows; there a file name may
// hold surrogates that have no partner, which stay as they are.
std::u32string fromNativePath(std::string_view native) {
  const std::wstring wide = platform::nativePathToWide(native);
  std::u32string text;
  text.reserve(wide.size());
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const auto unit = static_cast<char32_t>(wide[i]);
    const bool pair =
        isHigh(unit) && i + 1 < wide.size() && isLow(static_cast<char32_t>(wide[i + 1]));
    text += pair ? joined(unit, static_cast<char32_t>(wide[++i])) : unit;
  }
  return text;
}

std::string toNativePath(std::u32string_view text) {
  std::wstring wide;
  if constexpr (sizeof(wchar_t) == sizeof(char32_t)) {
    wide.assign(text.begin(), text.end());
  } else {
    const std::u16string units = encodeUtf16(text);
    wide.assign(units.begin(), units.end());
  }
  return platform::wideToNativePath(wide);
}

}  // namespace embedded
