// Text made safe for XML.
#pragma once

#include <string>
#include <string_view>

namespace cli {

inline constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";  // U+FFFD

/// The text with U+FFFD in place of everything that XML 1.0 does not allow, even as a character
/// reference: control characters except tab, line feed and carriage return, surrogates, U+FFFE and
/// U+FFFF, and each byte that is not part of a UTF-8 character.
std::string xmlCharacters(std::string_view text);

}  // namespace cli
