// Saves what can be saved of a damaged ink document.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "rescue/stretch.h"

namespace rescue {

/// What could be saved of an ink document.
struct InkRescue {
  /// The document was sound: the plug-in reads it whole and nothing is left out. `bytes` is the
  /// document as it came.
  bool sound = false;
  /// Something was saved, or the document was sound. Otherwise `bytes` is empty: it holds no ink
  /// document.
  bool saved = false;
  /// An ink document that the plug-in reads whole, without a warning.
  std::string bytes;

  /// In order of their place, not touching one another unless the reasons differ. Blanks alone are
  /// not counted.
  std::vector<Stretch> leftOut;
  /// Points in `bytes`.
  std::size_t pointsKept = 0;
  /// Those and an estimate of the lost ones, by the length of what was left out.
  std::size_t pointsAbout = 0;

  /// Another program wrote it, in a form of InkML that the plug-in does not read; it is not saved.
  bool isOtherForm = false;
  std::size_t furtherDocuments = 0;   ///< Documents behind the first, which became layers.
  std::size_t pointsDropped = 0;      ///< Points left out since damage had made them up.
  std::size_t pointsRounded = 0;      ///< Points with fractions, which the plug-in would cut off.
  std::size_t strokesBroken = 0;      ///< Places where bytes are missing and a trace was divided.
  std::size_t definitionsPutIn = 0;   ///< Contexts, brushes and trace formats that were missing.
  std::size_t definitionsMended = 0;  ///< Those that were damaged.
};

/// Mends an ink document, damaged or not. Takes any bytes; the time grows with their number, the
/// memory too (some fifteen times the document). Whole traces are kept byte for byte and in order.
/// Throws nothing but `std::bad_alloc`.
InkRescue rescueInkDocument(std::string_view document);

/// Whether the plug-in reads the document whole, without a warning.
bool isSoundInkDocument(std::string_view document);

}  // namespace rescue
