// From ink units to host points.
#pragma once

#include "hostapi/ai_document_suite.h"
#include "model/bounding_box.h"

/// Constants in single precision, widened where the computation is in double.
inline constexpr float kInkToPoints = 0.2834F;  ///< one ink unit, about 0.1 mm
inline constexpr float kPageCentreH = 297.57F;  ///< the centre of an A4 page
inline constexpr float kPageCentreV = 420.849F;
inline constexpr float kPageHeight = 841.698F;
inline constexpr double kPressureScale = 1.0 / 1024.0;  ///< pen pressure to tablet value

/// Maps the drawing's left edge to kPageCentreH - width / 2 and its top edge (smallest y) to
/// kPageCentreV + height / 2: centred on an A4 page's centre, whatever the page's size. Ink y grows
/// downward, host v upward. Computed in double, in one fixed order, stored in single precision: the
/// art is the same bit for bit everywhere.
class PageMap {
 public:
  PageMap(const Orvo::BoundingBox& ink, const hostapi::AIDocumentSetup& page)
      : left_(kPageCentreH - ink.minCorner.value.x.value * kInkToPoints -
              static_cast<double>(page.width * 0.5F)),
        rise_(ink.minCorner.value.y.value * kInkToPoints - kPageCentreV +
              static_cast<double>(page.height * 0.5F)) {}

  hostapi::AIRealPoint operator()(const Orvo::Point& point) const {
    return {static_cast<float>(left_ + point.x.value * kInkToPoints),
            static_cast<float>((kPageHeight - point.y.value * kInkToPoints) + rise_)};
  }

 private:
  double left_;
  double rise_;
};
