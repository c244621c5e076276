// Text as the host's strings hold it, code point by code point, and its encodings.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace embedded {

/// Nothing for overlong forms, surrogates, numbers beyond U+10FFFF and truncated characters.
std::optional<std::u32string> decodeUtf8(std::string_view bytes);

/// The system's 8-bit text: UTF-8 natively, the ANSI code page on Windows. Nothing when malformed.
std::optional<std::u32string> decodePlatform(std::string_view bytes);

/// Joins surrogate pairs. A lone U+DC80 to U+DCFF stays, as it stands for a byte of a file name
/// that is not UTF-8; any other lone surrogate is malformed.
std::optional<std::u32string> decodeUtf16(std::u16string_view units);

/// Whatever UTF-8 cannot encode becomes U+FFFD.
std::string encodeUtf8(std::u32string_view text);

std::u16string encodeUtf16(std::u32string_view text);

/// Between native file names and code points: bytes that are not UTF-8 become U+DC80 to U+DCFF, and
/// the other way round.
std::u32string fromNativePath(std::string_view native);
std::string toNativePath(std::u32string_view text);

}  // namespace embedded
