// A layer of a drawing.
#pragma once

#include "model/stroke.h"

namespace Orvo {

/// The strokes of one layer.
class Layer final : public AnnotatedRegion<Stroke> {
 public:
  void prepend(const Stroke& stroke) override { pushFront(stroke); }
  void extendBounds(const Stroke& stroke) override { extendBox(bounds(), stroke.bounds()); }
};

}  // namespace Orvo
