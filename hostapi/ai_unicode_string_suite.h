// AI Unicode String suite, version 7. Positions and counts are in code points.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

/// Slots 0 to 10 are the same in versions 6 and 8. Version 6 has 36 slots in all, version 8 has 38
/// (two more at 11); which of the two version 7 has is not known, so the plug-in calls none of the
/// later ones.
struct AIUnicodeStringSuite {
  static constexpr SuiteId kId{"AI Unicode String Suite", 7};

  /// Makes a string from `byteLength` bytes. The string must be empty; its owner destroys it.
  AIErr (*Initialize)(UnicodeStringBody* string, const char* text, std::int64_t byteLength,
                      AICharacterEncoding encoding);
  /// The same from `count` UTF-16 units; kNpos takes all up to the terminating zero.
  AIErr (*InitializeUTF16)(UnicodeStringBody* string, const ASUnicode* text, std::size_t count);
  /// The same from one code point, `count` times.
  AIErr (*InitializeUTF32Char)(UnicodeStringBody* string, std::size_t count,
                               UTF32TextChar character);
  /// Frees the inside; the string is empty afterwards. Destroying an empty one is allowed.
  AIErr (*Destroy)(UnicodeStringBody* string);
  /// Appends `other` to `string`, which may be empty.
  AIErr (*Append)(UnicodeStringBody* string, const UnicodeStringBody* other);
  /// The same with `count` code points of `other` from `start` on; kNpos takes all to its end.
  AIErr (*AppendSubString)(UnicodeStringBody* string, const UnicodeStringBody* other,
                           std::size_t start, std::size_t count);
  /// Replaces what `string`, which may be empty, holds with a copy of `other`.
  AIErr (*Assign)(UnicodeStringBody* string, const UnicodeStringBody* other);
  /// Copies `source` into an empty destination; its owner destroys it.
  AIErr (*Copy)(UnicodeStringBody* destination, const UnicodeStringBody* source);
  /// Gives the code point at `index`, from 0; 'US!I' past the end.
  AIErr (*GetChar)(const UnicodeStringBody* string, std::size_t index, UTF32TextChar* character);
  /// Removes all characters; has no result.
  void (*Clear)(UnicodeStringBody* string);
  /// Compares two parts: below 0, 0 or above 0; it is not an error code. kNpos as a count means to
  /// the end. A string that was never initialised equals an empty one.
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

/// Where the two layouts have functions that the plug-in does not call.
using UnicodeStringLength = std::size_t (*)(const UnicodeStringBody* string);
using UnicodeStringUTF16 = std::size_t (*)(const UnicodeStringBody* string, const ASUnicode** text);
inline constexpr std::size_t kLengthSlot36 = 14;
inline constexpr std::size_t kLengthSlot38 = 16;
inline constexpr std::size_t kUTF16Slot36 = 32;
inline constexpr std::size_t kUTF16Slot38 = 34;

}  // namespace hostapi
