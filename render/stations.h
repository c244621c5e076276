// The discs that an outline goes around.
#pragma once

#include <vector>

namespace render {

/// A disc of the brush; between one and the next, place and radius change linearly.
struct Station {
  double x = 0;
  double y = 0;
  double radius = 0;
};

/// Removes stations that the line between their neighbours passes within `tolerance`, in place and
/// in radius. The first and the last station stay, and so do turns and jumps.
void thin(std::vector<Station>& stations, double tolerance);

}  // namespace render
