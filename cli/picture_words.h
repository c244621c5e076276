// Colours and sizes as they are given on the command line.
#pragma once

#include <optional>
#include <string_view>

#include "art/style.h"
#include "render/options.h"

namespace cli {

/// "white", "black", "#rgb" or "#rrggbb"; nothing for any other word.
std::optional<art::Color> parseColor(std::string_view word);

/// "800x600", "800" or "800x" (any height), "x600" (any width); nothing for any other word.
std::optional<render::PixelBox> parseSize(std::string_view word);

}  // namespace cli
