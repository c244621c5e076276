// What the host sends to PluginMain(caller, selector, message).
#pragma once

#include "hostapi/sp_basic_suite.h"
#include "hostapi/types.h"

namespace hostapi {

/// The module's one exported function, "PluginMain", C linkage.
using PluginMainFunction = SPErr (*)(const char* caller, const char* selector, void* message);

inline constexpr char kPluginMainName[] = "PluginMain";
inline constexpr std::int32_t kSPCheck = 0x5350436B;  ///< 'SPCk'

/// The beginning of every message.
struct SPMessageData {
  std::int32_t SPCheck;  ///< kSPCheck when valid
  SPPluginRef self;      ///< the plug-in's own reference
  void* globals;         ///< the plug-in's own; the host keeps it from one message to the next
  const SPBasicSuite* basic;
};
static_assert(sizeof(SPMessageData) == 4 * kPointerSize &&
              offsetof(SPMessageData, self) == kPointerSize &&
              offsetof(SPMessageData, globals) == 2 * kPointerSize &&
              offsetof(SPMessageData, basic) == 3 * kPointerSize);

/// "SP Interface": "Startup", "Shutdown", "About".
struct SPInterfaceMessage {
  SPMessageData d;
};
static_assert(sizeof(SPInterfaceMessage) == 4 * kPointerSize);

/// "SP Access": "Reload", "Unload".
struct SPAccessMessage {
  SPMessageData d;
  std::int32_t when;  ///< start-up 0, run time 1, shut-down 2, terminal 3
};
static_assert(sizeof(SPAccessMessage) == 5 * kPointerSize &&
              offsetof(SPAccessMessage, when) == 4 * kPointerSize);

/// "AI Notifier": "AI Notify".
struct AINotifierMessage {
  SPMessageData d;
  AINotifierHandle notifier;
  const char* type;  ///< kApplicationStarted, ...
  void* notifyData;
};
static_assert(sizeof(AINotifierMessage) == 7 * kPointerSize &&
              offsetof(AINotifierMessage, notifier) == 4 * kPointerSize &&
              offsetof(AINotifierMessage, type) == 5 * kPointerSize &&
              offsetof(AINotifierMessage, notifyData) == 6 * kPointerSize);

/// "AI File Format": the record of file format suite 12, as releases 14 to 19.2 have it.
struct AIFileFormatMessage {
  SPMessageData d;
  AIFileFormatHandle fileFormat;
  std::int32_t option;  ///< option bits: kFileFormatRead, ...
  void* extendedData;
  void* actionParm;
  FilePathBody filePath;  ///< belongs to the host: copy it, never destroy it
  std::int32_t operationOptions;
  void* rangeHandle;
};
static_assert(sizeof(AIFileFormatMessage) == 11 * kPointerSize &&
              offsetof(AIFileFormatMessage, fileFormat) == 4 * kPointerSize &&
              offsetof(AIFileFormatMessage, option) == 5 * kPointerSize &&
              offsetof(AIFileFormatMessage, extendedData) == 6 * kPointerSize &&
              offsetof(AIFileFormatMessage, actionParm) == 7 * kPointerSize &&
              offsetof(AIFileFormatMessage, filePath) == 8 * kPointerSize &&
              offsetof(AIFileFormatMessage, operationOptions) == 9 * kPointerSize &&
              offsetof(AIFileFormatMessage, rangeHandle) == 10 * kPointerSize);

/// The same record as release 13 had it, with a file record of 300 bytes in the middle. The bytes
/// at 40 and 41 show which of the two a host uses: a letter and ':' or two backslashes begin a file
/// record, anything else is a small option number.
struct AIFileFormatMessageWithFileRecord {
  SPMessageData d;
  AIFileFormatHandle fileFormat;
  char fileRecord[300];
  std::int32_t option;
  void* extendedData;
  void* actionParm;
  FilePathBody filePath;
};
static_assert(offsetof(AIFileFormatMessageWithFileRecord, fileRecord) == 5 * kPointerSize &&
              offsetof(AIFileFormatMessageWithFileRecord, option) == 5 * kPointerSize + 300 &&
              offsetof(AIFileFormatMessageWithFileRecord, extendedData) == 5 * kPointerSize + 304 &&
              offsetof(AIFileFormatMessageWithFileRecord, actionParm) == 6 * kPointerSize + 304 &&
              offsetof(AIFileFormatMessageWithFileRecord, filePath) == 7 * kPointerSize + 304);

// ---- callers and selectors ----

namespace caller {
inline constexpr char kAccess[] = "SP Access";
inline constexpr char kInterface[] = "SP Interface";
inline constexpr char kCache[] = "SP Cache";
inline constexpr char kProperties[] = "SP Properties";
inline constexpr char kNotifier[] = "AI Notifier";
inline constexpr char kActionManager[] = "Action Manager";
inline constexpr char kMenu[] = "AI Menu";
inline constexpr char kFilter[] = "AI Filter";
inline constexpr char kPluginGroup[] = "AI Plugin Group";
inline constexpr char kFileFormat[] = "AI File Format";
inline constexpr char kTool[] = "AI Tool";
inline constexpr char kLiveEffect[] = "AI Live Effect";
inline constexpr char kTimer[] = "AI Timer";
inline constexpr char kClipboard[] = "AI Clipboard";
}  // namespace caller

namespace selector {
inline constexpr char kReload[] = "Reload";
inline constexpr char kUnload[] = "Unload";
inline constexpr char kStartup[] = "Startup";
inline constexpr char kShutdown[] = "Shutdown";
inline constexpr char kAbout[] = "About";
inline constexpr char kPurge[] = "Plug-in Purge";
inline constexpr char kAcquire[] = "Acquire";
inline constexpr char kRelease[] = "Release";
inline constexpr char kNotify[] = "AI Notify";
inline constexpr char kDoAction[] = "Do Action";
inline constexpr char kGo[] = "AI Go";
inline constexpr char kUpdate[] = "AI Update";
inline constexpr char kGetParameters[] = "AI Get Parameters";
inline constexpr char kNotifyEdits[] = "AI Notify Edits";
inline constexpr char kCheck[] = "AI Check";
inline constexpr char kUpdateFileFormat[] = "AI Update AI140";
inline constexpr char kEditOptions[] = "AI Edit Options";
inline constexpr char kTrackCursor[] = "AI Track Cursor";
inline constexpr char kMouseDown[] = "AI Mouse Down";
inline constexpr char kMouseDrag[] = "AI Mouse Drag";
inline constexpr char kMouseUp[] = "AI Mouse Up";
inline constexpr char kSelect[] = "AI Select";
inline constexpr char kDeselect[] = "AI Deselect";
inline constexpr char kReselect[] = "AI Reselect";
inline constexpr char kDecreaseDiameter[] = "AI Decrease Diameter";
inline constexpr char kIncreaseDiameter[] = "AI Increase Diameter";
inline constexpr char kEffectEditParameters[] = "AI Live Effect Edit Parameters";
inline constexpr char kEffectGo[] = "AI Live Effect Go Live";
inline constexpr char kEffectInterpolate[] = "AI Live Effect Interpolate Parameters";
inline constexpr char kEffectInputType[] = "AI Live Effect Input Type";
inline constexpr char kEffectScale[] = "AI Live Effect Scale Parameters";
inline constexpr char kEffectConvertColor[] = "AI Live Effect Convert Color Space";
inline constexpr char kEffectAdjustColors[] = "AI Live Effect Adjust Colors";
inline constexpr char kEffectHandleMerge[] = "AI Live Effect Handle Merge";
inline constexpr char kCanCopy[] = "AI Can Copy";
inline constexpr char kClone[] = "AI Clone";
inline constexpr char kDispose[] = "AI Dispose";
}  // namespace selector

inline constexpr char kApplicationStarted[] = "AI Application Started Notifier";

}  // namespace hostapi
