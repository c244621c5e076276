// AI File Path suite, version 3.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIFilePathSuite {
  static constexpr SuiteId kId{"AI File Path Suite", 3};

  /// Makes an empty path, which the caller deletes.
  AIErr (*NewFilePath)(FilePathBody* path);
  /// Frees the inside; the path is empty afterwards. Not for the path in a message, which belongs
  /// to the host.
  AIErr (*DeleteFilePath)(FilePathBody* path);
  /// Replaces what the destination holds with a copy of the source.
  AIErr (*Copy)(const FilePathBody* source, FilePathBody* destination);
  ReservedSlot reserved3[12];
  /// Replaces what the path holds with the system path `text`, with its short names expanded when
  /// expandShortNames is 1.
  AIErr (*Set)(const UnicodeStringBody* text, AIBool8 expandShortNames, FilePathBody* path);
  ReservedSlot reserved16[3];
  /// Gives the extension without its dot, empty when there is none. The caller destroys the string.
  AIErr (*GetFileExtension)(const FilePathBody* path, UnicodeStringBody* extension);
  /// Gives the path as the system writes it, with drive and separators, when displayName is 0;
  /// otherwise as the user reads it. The caller destroys the string.
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
