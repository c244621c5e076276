// AI User suite, version 10: alerts.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIUserSuite {
  static constexpr SuiteId kId{"AI User Suite", 10};

  ReservedSlot reserved0[43];
  /// Shows the text and returns when the user has closed the alert; has no result. Whichever alert
  /// release 16 has in this slot, it takes one text.
  void (*ErrorAlert)(const UnicodeStringBody* text);
  ReservedSlot reserved44[9];
};
HOSTAPI_SLOT(AIUserSuite, ErrorAlert, 43);
HOSTAPI_SLOT_COUNT(AIUserSuite, 53);

}  // namespace hostapi
