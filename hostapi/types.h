// The basic types of the host's binary interface, release 16, 64-bit.
//
// The browser has 32-bit pointers and no host but the embedded one. There the fields lie as far
// apart as pointers are wide, and everything else is the same.
//
// Structures have natural alignment, functions are plain C functions, and references are passed as
// pointers. The widths below are those of the 64-bit Windows host, so nothing here is a `long`.
//
// What holds for every function of every suite, unless its own comment says otherwise:
// - It is called on the host's main thread, while the plug-in handles a message. The suites whose
//   names begin with "SP " work in every message, the others from "Startup" to "Shutdown".
// - A result of type AIErr or SPErr is 0 on success. What a failed call leaves in its out
//   parameters is not known: initialise them.
// - Handles belong to the host and stay valid until the object or its document is deleted.
// - The host copies the texts, points and records that it is given before the call returns.
// - No exception crosses the interface in either direction.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace hostapi {

inline constexpr std::size_t kPointerSize = sizeof(void*);
#ifdef __EMSCRIPTEN__
static_assert(kPointerSize == 4, "the browser's host has 32-bit pointers");
#else
static_assert(kPointerSize == 8, "the interface is that of the 64-bit host");
#endif

// ---- numbers ----

using AIErr = std::int32_t;  ///< 0, or a four-character code
using SPErr = AIErr;
using AIBoolean = std::int32_t;  ///< 0 or 1
using SPBoolean = AIBoolean;
using AIBool8 = std::uint8_t;
using AIReal = float;
using ASUnicode = char16_t;  ///< one UTF-16 unit
using UTF32TextChar = std::uint32_t;

/// "To the end" as a count of characters, "none" as a position.
inline constexpr std::size_t kNpos = static_cast<std::size_t>(-1);

struct AIRealPoint {  ///< in points; v grows upward
  AIReal h;
  AIReal v;
};
static_assert(sizeof(AIRealPoint) == 8 && offsetof(AIRealPoint, v) == 4);

struct AIRealRect {
  AIReal left;
  AIReal top;
  AIReal right;
  AIReal bottom;
};
static_assert(sizeof(AIRealRect) == 16 && offsetof(AIRealRect, top) == 4 &&
              offsetof(AIRealRect, right) == 8 && offsetof(AIRealRect, bottom) == 12);

// ---- handles: opaque, null means "none" ----

using AIArtHandle = struct ArtObject*;
using AILayerHandle = struct LayerOpaque*;
using AIDocumentHandle = struct DocumentOpaque*;
using AIArtStyleHandle = struct ArtStyleOpaque*;
using AIArtSet = struct ArtSetOpaque*;
using AIFileFormatHandle = struct FileFormatOpaque*;
using AINotifierHandle = struct NotifierOpaque*;
using SPPluginRef = struct SPPlugin*;
using SPAccessRef = struct SPAccess*;

/// One of the handles above.
template <class T>
concept Handle = std::is_same_v<T, AIArtHandle> || std::is_same_v<T, AILayerHandle> ||
    std::is_same_v<T, AIDocumentHandle> || std::is_same_v<T, AIArtStyleHandle> ||
    std::is_same_v<T, AIArtSet> || std::is_same_v<T, AIFileFormatHandle> ||
    std::is_same_v<T, AINotifierHandle> || std::is_same_v<T, SPPluginRef> ||
    std::is_same_v<T, SPAccessRef>;

/// The bodies of a Unicode string and of a file path as the interface has them: one pointer, null
/// when empty, to an inside that the host allocates, owns and frees. Always passed by address.
struct UnicodeStringBody {
  void* inside = nullptr;
};
struct FilePathBody {
  void* inside = nullptr;
};
static_assert(sizeof(UnicodeStringBody) == kPointerSize && sizeof(FilePathBody) == kPointerSize);

// ---- enumeration values ----

enum ArtType : std::int16_t {
  kAnyArt = -1,
  kUnknownArt = 0,
  kGroupArt = 1,
  kPathArt = 2,
  kCompoundPathArt = 3,
};

enum AIPaintOrder : std::int16_t {
  kPlaceDefault = 0,
  kPlaceAbove = 1,
  kPlaceBelow = 2,
  kPlaceInsideOnTop = 3,
  kPlaceInsideOnBottom = 4,
  kPlaceAboveAll = 5,
  kPlaceBelowAll = 6,
};

enum AITabletDataType : std::int32_t {
  kTabletPressure = 0,
  kTabletStylusWheel = 1,
  kTabletTilt = 2,
  kTabletBearing = 3,
  kTabletRotation = 4,
};

enum AICharacterEncoding : std::int32_t {
  kAIPlatformCharacterEncoding = 0,  ///< on Windows the system's ANSI code page
  kAIUTF8CharacterEncoding = 1,
  kAIUTF16CharacterEncoding = 2,
  kAIRomanCharacterEncoding = 0x10,
};

/// Option bits of a file format, at registration and in a message.
inline constexpr std::int32_t kFileFormatRead = 1 << 0;

// ---- suites ----

/// What identifies a suite: an exact, case-sensitive name and a version.
struct SuiteId {
  const char* name;
  std::int32_t version;
};

/// A slot of a suite that the plug-in does not call.
using ReservedSlot = void (*)();

}  // namespace hostapi

/// Slot n of a suite lies at byte 8 * n, in the browser at 4 * n.
#define HOSTAPI_SLOT(Suite, function, slot)                                         \
  static_assert(offsetof(Suite, function) == hostapi::kPointerSize * (slot), #Suite \
                ":"                                                                 \
                ":" #function)
#define HOSTAPI_SLOT_COUNT(Suite, count) \
  static_assert(sizeof(Suite) == hostapi::kPointerSize * (count), #Suite)
