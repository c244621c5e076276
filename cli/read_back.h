// Compares an ink document that was written with what was to be written.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "inkml/definitions.h"
#include "inkml/ink_reading.h"
#include "model/document.h"

namespace cli {

/// How an ink document that was read back differs from what was to be written.
struct ReadBackDifferences {
  std::uint64_t layers = 0;        ///< Missing or added.
  std::uint64_t emptyStrokes = 0;  ///< Strokes without points, which are lost.
  std::uint64_t strokes = 0;    ///< Other strokes: missing, added, or of another number of points.
  std::uint64_t fractions = 0;  ///< Points that lost only a fraction.
  std::uint64_t points = 0;     ///< Other points with another value.
  std::uint64_t annotations = 0;  ///< Missing, added, or of another text.
  std::uint64_t definitions = 0;  ///< Trace formats, brushes and contexts, likewise.
};

ReadBackDifferences compareReadBack(const Orvo::Document& meant,
                                    const Orvo::InkMLDefinitions& meantDefinitions,
                                    const Orvo::InkReading& found);

/// The differences in one sentence, part by part; empty where there are none.
std::string describe(const ReadBackDifferences& differences);

/// Why an ink document that was just written is of no use: it does not open again. Nothing for one
/// that opens.
std::optional<std::string> explainUnusable(const Orvo::InkReport& report);

}  // namespace cli
