// Numbers and names as pictures write them, the same in every locale.
#pragma once

#include <string>
#include <string_view>

#include "art/style.h"

namespace render {

/// Enough for every number that `putHundredths` writes.
inline constexpr int kLongestNumber = 12;

/// Writes hundredths as a decimal with at most two decimals, no trailing zeros, no zero before the
/// point, no negative zero: 1234 -> 12.34, -50 -> -.5. Gives the place behind it; `to` must have
/// room for `kLongestNumber`.
char* putHundredths(char* to, int hundredths);

void appendHundredths(std::string& text, int hundredths);

/// UTF-8 without control characters: a blank stands for each of these, U+FFFD for each byte that
/// is not part of a character and for characters that XML knows not.
std::string plainText(std::string_view name);

/// Within an attribute in quotation marks.
void appendEscaped(std::string& text, std::string_view plain);

/// #rgb or #rrggbb.
void appendColor(std::string& text, const art::Color& color);

/// 0 to 255.
int byteOf(double share);

}  // namespace render
