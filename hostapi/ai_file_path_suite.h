// AI File Path suite, version 3.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIFilePathSuite {
  static constexpr SuiteId kId{"AI File Path Suite", 3};

  AIErr (*NewFilePath)(FilePathBody* path);
  /// Frees the inside; the path is empty afterwards.
  AIErr (*DeleteFilePath)(FilePathBody* path);
  AIErr (*Copy)(const FilePathBody* source, FilePathBody* destination);
  ReservedSlot reserved3[12];
  AIErr (*Set)(const UnicodeStringBody* text, AIBool8 expandShortNames, FilePathBody* path);
  ReservedSlot reserved16[3];
  /// Without the dot.
  AIErr (*GetFileExtension)(const FilePathBody* path, UnicodeStringBody* extension);
  /// With displayName false: the system's path, with its drive and separators.
  AIErr (*GetFullPath)(const FilePathBody* path, AIBool8 displayName, UnicodeStringBody* text);
  ReservedSlot reserved21[8];
};
HOSTAPI_SLOT(AIFilePathSuite, NewFilePath, 0);
HOSTAPI_SLOT(AIFilePathSuite, DeleteFilePath, 1);
HOSTAPI_SLOT(AIFilePathSuite, Copy, 2);
HOSTAPI_SLOT(AIFilePathSuite, Set, 15);
HOSTAPI_SLOT(AIFilePathSuite, GetFileExtension, 19);
HOSTAPI_SLOT(AIFilePathSuite, GetFullPath, 20);
HOSTAPI_SLOT_COUNT(AIFilePathSuite, 29);

}  // namespace hostapi
