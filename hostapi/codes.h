// The host's four-character codes: 32-bit values, first character in the most significant byte.
#pragma once

#include <string>

#include "hostapi/types.h"

namespace hostapi {

constexpr AIErr fourCC(const char (&text)[5]) {
  std::uint32_t code = 0;
  for (int i = 0; i < 4; ++i)
    code = code << 8 | static_cast<unsigned char>(text[i]);
  return static_cast<AIErr>(code);
}

inline constexpr AIErr kNoErr = 0;
inline constexpr AIErr kCantHappenErr = fourCC("CANT");
inline constexpr AIErr kOutOfMemoryErr = fourCC("!MEM");
inline constexpr AIErr kUnhandledMsgErr = fourCC("!MSG");
inline constexpr AIErr kBadParameterErr = fourCC("PARM");
inline constexpr AIErr kNotImplementedErr = fourCC("!IMP");
inline constexpr AIErr kNoDocumentErr = fourCC("DOC?");
inline constexpr AIErr kNameNotFoundErr = fourCC("NAM?");
inline constexpr AIErr kNameInUseErr = fourCC("NAM2");
inline constexpr AIErr kDstStyleErr = fourCC("STYD");
inline constexpr AIErr kBadStyleErr = fourCC("STYP");
inline constexpr AIErr kCantImportErr = fourCC("!Imp");
inline constexpr AIErr kUnknownArtTypeErr = fourCC("ART?");
inline constexpr AIErr kUnknownPaintOrderErr = fourCC("ORD?");
inline constexpr AIErr kUntouchableLayerErr = fourCC("NESS");
inline constexpr AIErr kTooManySegmentsErr = fourCC("SEGM");
inline constexpr AIErr kNoTabletSpaceErr = fourCC("!spc");
inline constexpr AIErr kSuiteNotFoundErr = fourCC("S!Fd");
inline constexpr AIErr kUnknownFormatErr = fourCC("FMT?");
inline constexpr AIErr kCancelledErr = fourCC("STOP");
// Specific to the Unicode String suite.
inline constexpr AIErr kStringIndexErr = fourCC("US!I");      ///< index past the end
inline constexpr AIErr kStringLengthErr = fourCC("US#L");     ///< length not allowed
inline constexpr AIErr kStringMalformedErr = fourCC("US!F");  ///< malformed text

static_assert(kCantHappenErr == 0x43414E54 && kUnhandledMsgErr == 0x214D5347);

/// A code as text: the number in decimal below 16385, the four characters otherwise.
inline std::string codeText(AIErr code) {
  if (code < 16385) return std::to_string(code);
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    text += static_cast<char>(static_cast<std::uint32_t>(code) >> shift & 0xFF);
  }
  return text;
}

}  // namespace hostapi
