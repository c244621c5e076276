// Numbers and names as they are written in pictures, the same in every locale.
#pragma once

#include <string>
#include <string_view>

#include "art/style.h"

namespace render {

/// Long enough for every number that `putHundredths` writes.
inline constexpr int kLongestNumber = 12;

/// Writes hundredths as a decimal with at most two decimals, no trailing zeros, no zero before the
/// point, no negative zero: 1234 -> 12.34, -50 -> -.5. Gives the end of the text; `to` must have
/// space for `kLongestNumber`.
char* putHundredths(char* to, int hundredths);

void appendHundredths(std::string& text, int hundredths);

/// UTF-8 without control characters and marks of direction: each of these becomes a space. Each
/// byte that is not part of a character, and each character that XML does not allow, becomes
/// U+FFFD.
std::string plainText(std::string_view name);

/// Appends the text escaped for a quoted attribute.
void appendEscaped(std::string& text, std::string_view plain);

/// #rgb or #rrggbb.
void appendColor(std::string& text, const art::Color& color);

/// 0 to 255.
int byteOf(double share);

}  // namespace render
