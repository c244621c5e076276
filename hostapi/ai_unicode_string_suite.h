// AI Unicode String suite, version 7. Positions and counts are in code points.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

/// Slots 0 to 10 are the same in versions 6 and 8. After them version 6 has 36 slots and version 8
/// has 38 (two more at 11); which one version 7 has is not known, so the plug-in calls none of
/// them.
struct AIUnicodeStringSuite {
  static constexpr SuiteId kId{"AI Unicode String Suite", 7};

  AIErr (*Initialize)(UnicodeStringBody* string, const char* text, std::int64_t byteLength,
                      AICharacterEncoding encoding);
  /// count in UTF-16 units; kNpos: up to the zero.
  AIErr (*InitializeUTF16)(UnicodeStringBody* string, const ASUnicode* text, std::size_t count);
  AIErr (*InitializeUTF32Char)(UnicodeStringBody* string, std::size_t count,
                               UTF32TextChar character);
  AIErr (*Destroy)(UnicodeStringBody* string);
  AIErr (*Append)(UnicodeStringBody* string, const UnicodeStringBody* other);
  AIErr (*AppendSubString)(UnicodeStringBody* string, const UnicodeStringBody* other,
                           std::size_t start, std::size_t count);
  AIErr (*Assign)(UnicodeStringBody* string, const UnicodeStringBody* other);
  AIErr (*Copy)(UnicodeStringBody* destination, const UnicodeStringBody* source);
  /// 'US!I' past the end.
  AIErr (*GetChar)(const UnicodeStringBody* string, std::size_t index, UTF32TextChar* character);
  void (*Clear)(UnicodeStringBody* string);
  /// Below 0, 0 or above 0; kNpos as a count means to the end. An uninitialised string equals an
  /// empty one.
  std::int32_t (*Compare)(const UnicodeStringBody* a, std::size_t position, std::size_t count,
                          const UnicodeStringBody* b, std::size_t start, std::size_t otherCount);
  ReservedSlot reserved11[27];
};
HOSTAPI_SLOT(AIUnicodeStringSuite, Initialize, 0);
HOSTAPI_SLOT(AIUnicodeStringSuite, InitializeUTF16, 1);
HOSTAPI_SLOT(AIUnicodeStringSuite, InitializeUTF32Char, 2);
HOSTAPI_SLOT(AIUnicodeStringSuite, Destroy, 3);
HOSTAPI_SLOT(AIUnicodeStringSuite, Append, 4);
HOSTAPI_SLOT(AIUnicodeStringSuite, AppendSubString, 5);
HOSTAPI_SLOT(AIUnicodeStringSuite, Assign, 6);
HOSTAPI_SLOT(AIUnicodeStringSuite, Copy, 7);
HOSTAPI_SLOT(AIUnicodeStringSuite, GetChar, 8);
HOSTAPI_SLOT(AIUnicodeStringSuite, Clear, 9);
HOSTAPI_SLOT(AIUnicodeStringSuite, Compare, 10);
HOSTAPI_SLOT_COUNT(AIUnicodeStringSuite, 38);

/// Where the two layouts put the functions that the plug-in leaves alone.
using UnicodeStringLength = std::size_t (*)(const UnicodeStringBody* string);
using UnicodeStringUTF16 = std::size_t (*)(const UnicodeStringBody* string, const ASUnicode** text);
inline constexpr std::size_t kLengthSlot36 = 14;
inline constexpr std::size_t kLengthSlot38 = 16;
inline constexpr std::size_t kUTF16Slot36 = 32;
inline constexpr std::size_t kUTF16Slot38 = 34;

}  // namespace hostapi
