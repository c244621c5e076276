// The options for drawing a picture.
#pragma once

#include <optional>

#include "art/style.h"

namespace render {

/// The largest size of a bitmap in pixels; 0 leaves that side unlimited.
struct PixelBox {
  int width = 0;
  int height = 0;
};

/// Every format takes these; the last two are for bitmaps only.
struct Options {
  /// 0 to 1: replaces the pressure of every path that has none (see `hasPressure`). The
  /// document is not touched.
  std::optional<double> pressure = std::nullopt;
  /// Plain open lines of one width instead of what the brush covers.
  bool centreLines = false;
  /// Without one the picture is transparent.
  std::optional<art::Color> background = std::nullopt;
  double dpi = 150;
  /// Replaces `dpi`: the largest picture of the drawing's proportions that fits.
  std::optional<PixelBox> size = std::nullopt;
};

}  // namespace render
