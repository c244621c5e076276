// What is done to ink before it is written as an ink document, so that it comes back as it was.
#pragma once

#include <cstddef>
#include <cstdint>

#include "inkml/definitions.h"
#include "model/document.h"

namespace cli {

/// Rounds x, y and z of every point to whole units, halves up: the reader would cut off the
/// decimals.
void roundCoordinates(Orvo::Document& document);

/// Cleans annotations, ids and brush texts with `xmlCharacters`; gives the number of texts that
/// changed. Annotations whose types become the same stay apart by a number after the type.
std::size_t replaceForbiddenCharacters(Orvo::Document& document,
                                       Orvo::InkMLDefinitions& definitions);

/// Undoes the crossing of two flags on brushes that were read, before they are written: the reader
/// keeps "ignorePressure" as `antialiased`, and the writer takes it from `ignorePressure`.
void uncrossBrushFlags(Orvo::InkMLDefinitions& definitions);

/// Makes sure that the definitions hold what every written trace refers to: the context
/// "default-context", before all others, with a plain brush where it has none of its own. Its
/// trace format gets the seven channels of a point, as the reader keeps none; that of the time
/// reaches to the end of the pen's 24-bit clock, or to `lastTime` where that is later, but no
/// further than 2147483647.
void declareDefaultContext(Orvo::InkMLDefinitions& definitions, std::uint32_t lastTime);

/// The latest time of all points; 0 where there are none.
std::uint32_t lastTime(const Orvo::Document& document);

}  // namespace cli
