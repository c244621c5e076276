// SP Plug-ins suite, version 4.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct SPPluginsSuite {
  static constexpr SuiteId kId{"SP Plug-ins Suite", 4};

  ReservedSlot reserved0[22];
  /// Gives the plug-in's name as zero-terminated text, which belongs to the host: copy it. Unless
  /// it was changed, it is the one in the module's property list. May give null.
  SPErr (*GetPluginName)(SPPluginRef plugin, const char** name);
  ReservedSlot reserved23[5];
};
HOSTAPI_SLOT(SPPluginsSuite, GetPluginName, 22);
HOSTAPI_SLOT_COUNT(SPPluginsSuite, 28);

}  // namespace hostapi
