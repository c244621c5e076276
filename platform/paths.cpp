#include "platform/paths.h"

#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <algorithm>
#include <windows.h>
#else
#include "text/utf8.h"
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

constexpr char32_t kRawByteBase = 0xDC00;

bool isRawByte(char32_t character) {
  return character >= 0xDC80 && character <= 0xDCFF;
}

}  // namespace

std::string wideToNativePath(std::wstring_view wide) {
  std::string native;
  native.reserve(wide.size());
  for (const wchar_t unit : wide) {
    const auto character = static_cast<char32_t>(unit);
    if (isRawByte(character)) {
      native.push_back(static_cast<char>(character - kRawByteBase));
    } else {
      text::appendUtf8(native, character);
    }
  }
  return native;
}

std::wstring nativePathToWide(std::string_view native) {
  std::wstring wide;
  wide.reserve(native.size());
  while (!native.empty()) {
    text::Utf8Character next = text::firstCharacter(native);
    if (!next) next = {kRawByteBase + static_cast<unsigned char>(native.front()), 1};
    wide.push_back(static_cast<wchar_t>(next.code));
    native.remove_prefix(next.length);
  }
  return wide;
}

#endif

std::string absoluteNativePath(const std::string& native) {
  std::error_code error;
#ifdef _WIN32
  const std::filesystem::path given(nativePathToWide(native));
  const std::filesystem::path full = std::filesystem::absolute(given, error);
  return error ? native : wideToNativePath(full.wstring());
#else
  const std::filesystem::path full = std::filesystem::absolute(native, error);
  return error ? native : full.native();
#endif
}

}  // namespace platform
