// AI Path Style suite, version 12.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIPathStyleSuite {
  static constexpr SuiteId kId{"AI Path Style Suite", 12};

  ReservedSlot reserved0[4];
  /// Opens the file without showing it and gives a document that holds its styles; '!Imp' when that
  /// fails. The host may send the plug-in messages meanwhile. The document is never closed: it
  /// stays in memory until the host quits.
  AIErr (*ImportStyles)(const FilePathBody* file, AIDocumentHandle* document);
  ReservedSlot reserved5[22];
};
HOSTAPI_SLOT(AIPathStyleSuite, ImportStyles, 4);
HOSTAPI_SLOT_COUNT(AIPathStyleSuite, 27);

}  // namespace hostapi
