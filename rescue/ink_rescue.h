// Saves what can be saved of a damaged ink document.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "rescue/ink_encoding.h"
#include "rescue/rescued.h"

namespace rescue {

/// What could be saved of an ink document. One is sound where the plug-in reads it whole and leaves
/// nothing out. Blanks alone do not count as left out.
struct InkRescue : Rescued {
  /// Another program wrote it, in a form of InkML that the plug-in does not read; it is not saved.
  bool isOtherForm = false;
  std::optional<InkEncoding> encoding;  ///< The one that it was converted from, to UTF-8.
  std::size_t furtherDocuments = 0;     ///< Documents behind the first, which became layers.
  std::size_t pointsRounded = 0;        ///< Points with fractions, which the plug-in would cut off.
  std::size_t definitionsPutIn = 0;     ///< Contexts, brushes and trace formats that were missing.
  std::size_t definitionsMended = 0;    ///< Those that were damaged.
  /// Those of further documents whose ids were taken, which got new ones.
  std::size_t definitionsRenamed = 0;
};

/// Mends an ink document, damaged or not. Takes any bytes; the time grows with their number, the
/// memory too (some fifteen times the document). Whole traces are kept byte for byte and in order.
/// A sound document comes back as it came, except where `mend` is `doubtful`: then runs that stand
/// there twice, leaps, and times that run backwards are taken for damage. Throws nothing but
/// `std::bad_alloc`.
InkRescue rescueInkDocument(std::string_view document, Mend mend = Mend::damaged);

/// Whether the plug-in reads the document whole, without a warning.
bool isSoundInkDocument(std::string_view document);

}  // namespace rescue
