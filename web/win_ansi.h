// Text in the encoding that the standard fonts of a PDF have.
#pragma once

#include <string>
#include <string_view>

namespace web {

struct WinAnsi {
  std::string bytes;
  bool hasGaps = false;  ///< A character that the encoding lacks became a "?".
};

/// UTF-8 in WinAnsiEncoding (PDF 32000-1, annex D.2). Control characters become blanks.
WinAnsi toWinAnsi(std::string_view utf8);

}  // namespace web
