// File names as wide text and as bytes.
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// A wide file name as the bytes that the system's narrow calls take.
///
/// Natively UTF-32 becomes UTF-8, and a lone surrogate U+DC80 to U+DCFF becomes the single byte
/// 0x80 to 0xFF, so that every file name survives the conversion to wide text and back; anything
/// else that is not a character becomes U+FFFD. On Windows UTF-16 becomes UTF-8.
std::string wideToNativePath(std::wstring_view wide);

/// The inverse: UTF-8 becomes wide text. Natively each byte that is not part of valid UTF-8 becomes
/// U+DC00 plus the byte.
std::wstring nativePathToWide(std::string_view native);

/// The absolute path of a file, taken relative to the current folder; unchanged where there is no
/// current folder any more. Both paths are bytes, as above.
std::string absoluteNativePath(const std::string& native);

}  // namespace platform
