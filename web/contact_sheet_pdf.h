// A contact sheet as the pages of a PDF.
#pragma once

#include <cstddef>
#include <string>

#include "web/contact_sheet.h"

namespace web {

struct SheetPages {
  std::string bytes;    ///< Empty where something went wrong.
  std::string problem;  ///< What went wrong.
  /// Cards whose texts have characters that the font lacks; each of these became a "?".
  std::size_t cardsWithGaps = 0;
};

/// Pages of A4, five rows of four cards on each. Long names are cut off after two lines. The
/// pictures must be opaque PNG files without interlacing. A build without PDF has always a problem.
SheetPages contactSheetPdf(const std::vector<Card>& cards, const std::string& title);

}  // namespace web
