// AI Notifier suite, version 3.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AINotifierSuite {
  static constexpr SuiteId kId{"AI Notifier Suite", 3};

  /// Subscribes to the notifications of `type`, such as kApplicationStarted, which then arrive as
  /// messages until the plug-in shuts down. `notifier` may be null.
  AIErr (*AddNotifier)(SPPluginRef self, const char* name, const char* type,
                       AINotifierHandle* notifier);
  ReservedSlot reserved1[8];
};
HOSTAPI_SLOT(AINotifierSuite, AddNotifier, 0);
HOSTAPI_SLOT_COUNT(AINotifierSuite, 9);

}  // namespace hostapi
