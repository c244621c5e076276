// Translates InkML of any program into the subset that the plug-in reads.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "inkml/definitions.h"
#include "model/document.h"
#include "translate/remarks.h"

namespace translate {

struct Options {
  /// How long a unit is where the document does not say it; more than 0. Without it, such a drawing
  /// becomes 150 mm long.
  std::optional<double> millimetresPerUnit;
};

/// A document in the subset, ready for `Orvo::DocumentSerializer`, with nothing that its reader
/// would change: x and y are whole numbers of 0.1 mm, pressure is 0 to 1023, tilt in whole degrees,
/// time in ms below 2^31. Each stroke ends with its last point twice, because the plug-in draws up
/// to the last point but one.
struct Translation {
  std::unique_ptr<Orvo::Document> document;  ///< Never null; complete unless there is a problem.

  /// Never null: the document's brushes, its contexts, the trace format of the result, and the
  /// context "default-context", to which every trace refers.
  std::unique_ptr<Orvo::InkMLDefinitions> definitions;

  /// The brush of each stroke, layer by layer; null where none is declared. They belong to
  /// `definitions`.
  std::vector<const Orvo::Brush*> brushes;

  std::uint64_t groups = 0;  ///< Layers of the result.
  std::uint64_t traces = 0;  ///< Strokes of the result.
  std::uint64_t points =
      0;  ///< Points that are drawn: those of the result without the doubled ones.
  std::vector<Remark> remarks;

  std::string
      problem;   ///< Why it is refused, for a person, without a full stop; empty if it is not.
  int line = 0;  ///< Where, from 1; 0 where no line is to blame.
};

/// Takes any bytes: XML in UTF-8, UTF-16, Latin-1 or Windows-1252, or such a document in gzip.
/// Nothing is fetched, printed or logged. Throws nothing but `std::bad_alloc`.
Translation translateInk(std::string_view bytes, const Options& options = {});

}  // namespace translate
