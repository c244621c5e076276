// AI Runtime suite, version 11.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIRuntimeSuite {
  static constexpr SuiteId kId{"AI Runtime Suite", 11};

  ReservedSlot reserved0[11];
  /// Returns the host's release, 16; it is not an error code.
  std::int32_t (*GetAppMajorVersion)();
  /// Returns the release's second number; it is not an error code.
  std::int32_t (*GetAppMinorVersion)();
  ReservedSlot reserved13[11];
};
HOSTAPI_SLOT(AIRuntimeSuite, GetAppMajorVersion, 11);
HOSTAPI_SLOT(AIRuntimeSuite, GetAppMinorVersion, 12);
HOSTAPI_SLOT_COUNT(AIRuntimeSuite, 24);

}  // namespace hostapi
