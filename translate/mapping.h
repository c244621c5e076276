// Canvas transforms: from the values of a trace to those of the canvas.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "translate/contexts.h"
#include "translate/ink_tree.h"
#include "translate/trace_format.h"

namespace translate {

/// One coordinate as a sum of the values of a point.
struct LinearSum {
  std::vector<double> factors;  ///< For each channel of the format.
  double offset = 0;

  /// NaN where a value that counts is missing.
  double of(std::span<const double> values) const;
};

struct CanvasTransform {
  std::optional<LinearSum> x;  ///< Nothing: x is what the channel X says.
  std::optional<LinearSum> y;
  std::string otherType;  ///< Of a mapping that cannot be applied; empty if there is none.
};

/// The first mapping of a canvas transform (the second would be its inverse); kNone has none.
CanvasTransform transformOf(const InkTree& tree, InkTree::Index transform,
                            const TraceFormat& format, Contexts& contexts);

}  // namespace translate
