// AI TabletData suite, version 2.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AITabletProfile {
  AIReal offset;  ///< position along the path, 0 to 1
  AIReal value;   ///< for pressure 0 to 1
};
static_assert(sizeof(AITabletProfile) == 8 && offsetof(AITabletProfile, value) == 4);

struct AITabletDataSuite {
  static constexpr SuiteId kId{"AI TabletData Suite", 2};

  ReservedSlot reserved0;
  /// Attaches `count` profiles of one type to a path, in the order of their offsets, replacing any
  /// of that type; '!spc' when there is no room for them.
  AIErr (*SetTabletData)(AIArtHandle path, const AITabletProfile* profiles, std::int32_t count,
                         AITabletDataType type);
  ReservedSlot reserved2[5];
};
HOSTAPI_SLOT(AITabletDataSuite, SetTabletData, 1);
HOSTAPI_SLOT_COUNT(AITabletDataSuite, 7);

}  // namespace hostapi
