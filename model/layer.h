#pragma once

#include "model/stroke.h"

namespace Orvo {

/// Strokes that lie on one sheet.
class Layer final : public AnnotatedRegion<Stroke> {
 public:
  void prepend(const Stroke& stroke) override { pushFront(stroke); }
  void extendBounds(const Stroke& stroke) override { extendBox(bounds(), stroke.bounds()); }
};

}  // namespace Orvo
