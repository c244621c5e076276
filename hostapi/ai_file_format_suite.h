// AI File Format suite, version 12.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

/// How a format is presented, in the Windows form. The host copies every text during the call.
struct PlatformAddFileFormatData {
  std::int32_t type;     ///< file type code, unused on Windows: 0
  unsigned char* title;  ///< the host's own text for it is length-prefixed: see AddFileFormat
  std::int32_t titleOrder;
  char* extension;  ///< comma-separated, without dots; at most 31 characters, 5 for each
};
static_assert(sizeof(PlatformAddFileFormatData) == 4 * kPointerSize &&
              offsetof(PlatformAddFileFormatData, title) == kPointerSize &&
              offsetof(PlatformAddFileFormatData, titleOrder) == 2 * kPointerSize &&
              offsetof(PlatformAddFileFormatData, extension) == 3 * kPointerSize);

struct AIFileFormatSuite {
  static constexpr SuiteId kId{"AI File Format Suite", 12};

  /// Registers a format, once, at "Startup". `options` are option bits such as kFileFormatRead;
  /// `extendedOptions` is 0. The name must be unique ('NAM2' if it is in use) and is not shown. A
  /// host that reads the title as length-prefixed takes a leading blank for the length 32, so the
  /// title's buffer must be readable and zero-filled for at least 33 bytes.
  AIErr (*AddFileFormat)(SPPluginRef self, const char* name, const PlatformAddFileFormatData* data,
                         std::int32_t options, AIFileFormatHandle* format,
                         std::int32_t extendedOptions);
  ReservedSlot reserved1[22];
};
HOSTAPI_SLOT(AIFileFormatSuite, AddFileFormat, 0);
HOSTAPI_SLOT_COUNT(AIFileFormatSuite, 23);

}  // namespace hostapi
