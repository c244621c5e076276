// SP Plug-ins suite, version 4.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct SPPluginsSuite {
  static constexpr SuiteId kId{"SP Plug-ins Suite", 4};

  ReservedSlot reserved0[22];
  /// The text belongs to the host; it comes from the module's property list until it is set.
  SPErr (*GetPluginName)(SPPluginRef plugin, const char** name);
  ReservedSlot reserved23[5];
};
HOSTAPI_SLOT(SPPluginsSuite, GetPluginName, 22);
HOSTAPI_SLOT_COUNT(SPPluginsSuite, 28);

}  // namespace hostapi
