// Puts an ink document together from what could be made out of a damaged one.
#pragma once

#include <span>
#include <string_view>

#include "rescue/ink_definitions.h"
#include "rescue/ink_layout.h"
#include "rescue/ink_points.h"
#include "rescue/ink_rescue.h"
#include "rescue/ink_strokes.h"

namespace rescue {

/// What was made out.
struct InkFindings {
  std::string_view bytes;
  std::span<const InkPiece> pieces;
  InkDefinitions& definitions;  ///< Completed by the writer.
  const InkLayout& layout;
  std::span<const InkPoint> points;
  std::span<const PointFate> fates;
  PointForm form;
};

/// Writes the document to `result.bytes` and adds what was done. `result.leftOut` counts bytes of
/// the findings.
void writeInk(const InkFindings& findings, InkRescue& result);

}  // namespace rescue
