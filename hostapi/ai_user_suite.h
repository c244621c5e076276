// AI User suite, version 10: alerts.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIUserSuite {
  static constexpr SuiteId kId{"AI User Suite", 10};

  ReservedSlot reserved0[43];
  /// Shows the text. Whatever stands in this slot in release 16 is an alert with one text.
  void (*ErrorAlert)(const UnicodeStringBody* text);
  ReservedSlot reserved44[9];
};
HOSTAPI_SLOT(AIUserSuite, ErrorAlert, 43);
HOSTAPI_SLOT_COUNT(AIUserSuite, 53);

}  // namespace hostapi
