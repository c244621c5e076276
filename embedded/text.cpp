#include "embedded/text.h"

#include "platform/paths.h"
#include "text/utf8.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace embedded {

namespace {

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

}  // namespace

std::optional<std::u32string> decodeUtf8(std::string_view bytes) {
  std::u32string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const text::Utf8Character character = text::firstCharacter(bytes);
    if (!character) return std::nullopt;
    text += character.code;
    bytes.remove_prefix(character.length);
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
  for (const char32_t character : text)
    text::appendUtf8(out, character);
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
