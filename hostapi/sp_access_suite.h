// SP Access suite, version 3: keeps a module in memory.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct SPAccessSuite {
  static constexpr SuiteId kId{"SP Access Suite", 3};

  /// Counts one more use of the plug-in's module, which stays in memory until `access` is released.
  SPErr (*AcquirePlugin)(SPPluginRef plugin, SPAccessRef* access);
  /// Releases one use; `access` must not be used afterwards.
  SPErr (*ReleasePlugin)(SPAccessRef access);
  ReservedSlot reserved2[10];
};
HOSTAPI_SLOT(SPAccessSuite, AcquirePlugin, 0);
HOSTAPI_SLOT(SPAccessSuite, ReleasePlugin, 1);
HOSTAPI_SLOT_COUNT(SPAccessSuite, 12);

}  // namespace hostapi
