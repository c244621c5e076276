// AI Path suite, version 10. Counts are signed 16-bit; the host refuses negative ones.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIPathSegment {
  AIRealPoint p;
  AIRealPoint in;   ///< control point towards the segment before
  AIRealPoint out;  ///< control point towards the segment after
  AIBoolean corner;
};
static_assert(sizeof(AIPathSegment) == 28 && offsetof(AIPathSegment, in) == 8 &&
              offsetof(AIPathSegment, out) == 16 && offsetof(AIPathSegment, corner) == 24);

struct AIPathSuite {
  static constexpr SuiteId kId{"AI Path Suite", 10};

  ReservedSlot reserved0;
  /// Adds empty segments at the path's end or removes some there; 'SEGM' for more than the host
  /// allows.
  AIErr (*SetPathSegmentCount)(AIArtHandle path, std::int16_t count);
  ReservedSlot reserved2;
  /// Sets `count` segments from index `first` on, counted from 0; they must exist already.
  AIErr (*SetPathSegments)(AIArtHandle path, std::int16_t first, std::int16_t count,
                           const AIPathSegment* segments);
  ReservedSlot reserved4[3];
  /// Joins the path's end to its beginning with 1, leaves it open with 0.
  AIErr (*SetPathClosed)(AIArtHandle path, AIBoolean closed);
  ReservedSlot reserved8[20];
};
HOSTAPI_SLOT(AIPathSuite, SetPathSegmentCount, 1);
HOSTAPI_SLOT(AIPathSuite, SetPathSegments, 3);
HOSTAPI_SLOT(AIPathSuite, SetPathClosed, 7);
HOSTAPI_SLOT_COUNT(AIPathSuite, 28);

}  // namespace hostapi
