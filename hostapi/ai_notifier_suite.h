// AI Notifier suite, version 3.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AINotifierSuite {
  static constexpr SuiteId kId{"AI Notifier Suite", 3};

  /// Subscribes to the notifications of a type; the host copies both texts. notifier may be null.
  AIErr (*AddNotifier)(SPPluginRef self, const char* name, const char* type,
                       AINotifierHandle* notifier);
  ReservedSlot reserved1[8];
};
HOSTAPI_SLOT(AINotifierSuite, AddNotifier, 0);
HOSTAPI_SLOT_COUNT(AINotifierSuite, 9);

}  // namespace hostapi
