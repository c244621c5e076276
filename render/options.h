// What a picture may be told.
#pragma once

#include <optional>

#include "art/style.h"

namespace render {

/// How large a bitmap is at most, in pixels; 0 does not bound that side.
struct PixelBox {
  int width = 0;
  int height = 0;
};

/// Every writer takes these; the last two are for bitmaps only.
struct Options {
  /// 0 to 1: stands in for the pressure of every path that has none (see `hasPressure`). The
  /// document is not touched.
  std::optional<double> pressure = std::nullopt;
  /// Plain open lines of one width instead of what the brush covers.
  bool centreLines = false;
  /// Nothing: a transparent picture.
  std::optional<art::Color> background = std::nullopt;
  double dpi = 150;
  /// Takes the place of `dpi`: the largest picture of the drawing's shape that fits.
  std::optional<PixelBox> size = std::nullopt;
};

}  // namespace render
