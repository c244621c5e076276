// The edge of the area that a moving brush covers.
#pragma once

#include <vector>

#include "render/contours.h"
#include "render/nib.h"
#include "render/spine.h"
#include "render/stations.h"

namespace render {

/// A disc that goes from station to station. No contour lies further than `tolerance` from the
/// edge.
void sweepDiscs(const std::vector<Station>& stations, double tolerance, Contours& contours);

/// A brush whose shape changes on the way: a contour for each short step.
void sweepEllipses(const std::vector<Vertex>& vertices, const Nib& nib, double tolerance,
                   Contours& contours);

}  // namespace render
