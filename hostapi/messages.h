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
static_assert(sizeof(SPMessageData) == 32 && offsetof(SPMessageData, self) == 8 &&
              offsetof(SPMessageData, globals) == 16 && offsetof(SPMessageData, basic) == 24);

/// "SP Interface": "Startup", "Shutdown", "About".
struct SPInterfaceMessage {
  SPMessageData d;
};
static_assert(sizeof(SPInterfaceMessage) == 32);

/// "SP Access": "Reload", "Unload".
struct SPAccessMessage {
  SPMessageData d;
  std::int32_t when;  ///< start-up 0, run time 1, shut-down 2, terminal 3
};
static_assert(sizeof(SPAccessMessage) == 40 && offsetof(SPAccessMessage, when) == 32);

/// "AI Notifier": "AI Notify".
struct AINotifierMessage {
  SPMessageData d;
  AINotifierHandle notifier;
  const char* type;  ///< kApplicationStarted, ...
  void* notifyData;
};
static_assert(sizeof(AINotifierMessage) == 56 && offsetof(AINotifierMessage, notifier) == 32 &&
              offsetof(AINotifierMessage, type) == 40 &&
              offsetof(AINotifierMessage, notifyData) == 48);

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
static_assert(sizeof(AIFileFormatMessage) == 88 &&
              offsetof(AIFileFormatMessage, fileFormat) == 32 &&
              offsetof(AIFileFormatMessage, option) == 40 &&
              offsetof(AIFileFormatMessage, extendedData) == 48 &&
              offsetof(AIFileFormatMessage, actionParm) == 56 &&
              offsetof(AIFileFormatMessage, filePath) == 64 &&
              offsetof(AIFileFormatMessage, operationOptions) == 72 &&
              offsetof(AIFileFormatMessage, rangeHandle) == 80);

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
static_assert(offsetof(AIFileFormatMessageWithFileRecord, fileRecord) == 40 &&
              offsetof(AIFileFormatMessageWithFileRecord, option) == 340 &&
              offsetof(AIFileFormatMessageWithFileRecord, extendedData) == 344 &&
              offsetof(AIFileFormatMessageWithFileRecord, actionParm) == 352 &&
              offsetof(AIFileFormatMessageWithFileRecord, filePath) == 360);

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
