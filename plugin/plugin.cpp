#include "plugin/plugin.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <iterator>
#include <new>
#include <optional>
#include <string>

#include "hostapi/ai_notifier_suite.h"
#include "hostapi/ai_unicode_string_suite.h"
#include "hostapi/ai_user_suite.h"
#include "hostapi/codes.h"
#include "hostapi/sp_plugins_suite.h"

using namespace hostapi;

// Codes that control the host and mean nothing to the user.
static constexpr AIErr kNeverShown[] = {
    fourCC("FMT?"),
    fourCC("RFSE"),
    fourCC("AFTR"),
    fourCC("VALD"),
    fourCC("MOOT"),
    fourCC("TRSH"),
    fourCC("CHEK"),
    fourCC("CHIT"),
    fourCC("TLTK"),
    fourCC("pFls"),
    fourCC("S!Fd"),
    fourCC("!Acq"),
    fourCC("dsRP"),
    fourCC("skpE"),
    fourCC("DONE"),
    fourCC("STOP"),
    361,
};

struct Plugin::MessageRow {
  std::string_view caller;
  std::string_view selector;
  SPErr (Plugin::*operation)(void* record);
};

// Every message of the host's protocol but "Startup" and "Shutdown", which create and delete the
// object.
const Plugin::MessageRow Plugin::kMessages[] = {
    {caller::kAccess, selector::kReload, &Plugin::answerNothing},
    {caller::kAccess, selector::kUnload, &Plugin::answerNothing},
    {caller::kInterface, selector::kAbout, &Plugin::answerNothing},
    {caller::kCache, selector::kPurge, &Plugin::answerNothing},
    {caller::kProperties, selector::kAcquire, &Plugin::notHandled},
    {caller::kProperties, selector::kRelease, &Plugin::notHandled},
    {caller::kNotifier, selector::kNotify, &Plugin::notify},
    {caller::kActionManager, selector::kDoAction, &Plugin::answerNothing},
    {caller::kMenu, selector::kGo, &Plugin::goMenuItem},
    {caller::kMenu, selector::kUpdate, &Plugin::notHandled},
    {caller::kFilter, selector::kGetParameters, &Plugin::notHandled},
    {caller::kFilter, selector::kGo, &Plugin::notHandled},
    {caller::kPluginGroup, selector::kNotifyEdits, &Plugin::notHandled},
    {caller::kPluginGroup, selector::kUpdate, &Plugin::notHandled},
    {caller::kFileFormat, selector::kGetParameters, &Plugin::notHandled},
    {caller::kFileFormat, selector::kGo, &Plugin::goFileFormat},
    {caller::kFileFormat, selector::kCheck, &Plugin::notHandled},
    {caller::kFileFormat, selector::kUpdateFileFormat, &Plugin::notHandled},
    {caller::kFileFormat, selector::kDoAction, &Plugin::notHandled},
    {caller::kTool, selector::kEditOptions, &Plugin::notHandled},
    {caller::kTool, selector::kTrackCursor, &Plugin::notHandled},
    {caller::kTool, selector::kMouseDown, &Plugin::notHandled},
    {caller::kTool, selector::kMouseDrag, &Plugin::notHandled},
    {caller::kTool, selector::kMouseUp, &Plugin::notHandled},
    {caller::kTool, selector::kSelect, &Plugin::notHandled},
    {caller::kTool, selector::kDeselect, &Plugin::notHandled},
    {caller::kTool, selector::kReselect, &Plugin::answerNothing},
    {caller::kTool, selector::kDecreaseDiameter, &Plugin::answerNothing},
    {caller::kTool, selector::kIncreaseDiameter, &Plugin::answerNothing},
    {caller::kLiveEffect, selector::kEffectEditParameters, &Plugin::notHandled},
    {caller::kLiveEffect, selector::kEffectGo, &Plugin::notHandled},
    {caller::kLiveEffect, selector::kEffectInterpolate, &Plugin::notHandled},
    {caller::kLiveEffect, selector::kEffectInputType, &Plugin::notHandled},
    {caller::kLiveEffect, selector::kEffectScale, &Plugin::notHandled},
    {caller::kLiveEffect, selector::kEffectConvertColor, &Plugin::notHandled},
    {caller::kLiveEffect, selector::kEffectAdjustColors, &Plugin::notHandled},
    {caller::kLiveEffect, selector::kEffectHandleMerge, &Plugin::notHandled},
    {caller::kTimer, selector::kGo, &Plugin::notHandled},
    {caller::kClipboard, selector::kGo, &Plugin::notHandled},
    {caller::kClipboard, selector::kCanCopy, &Plugin::notHandled},
    {caller::kClipboard, selector::kClone, &Plugin::notHandled},
    {caller::kClipboard, selector::kDispose, &Plugin::notHandled},
};

std::int64_t (*Plugin::clock)() = [] { return static_cast<std::int64_t>(std::time(nullptr)); };

Plugin::Plugin(SPPluginRef ownReference) : self(ownReference) {}

SPErr Plugin::message(std::string_view caller, std::string_view selector, void* record) {
  for (const MessageRow& row : kMessages) {
    if (row.caller == caller && row.selector == selector) return (this->*row.operation)(record);
  }
  return kNoErr;
}

SPErr Plugin::startupPlugin(SPInterfaceMessage*) {
  suitesHolder.reset(new (std::nothrow) SuitesHolder);
  if (!suitesHolder) return kOutOfMemoryErr;
  const SPErr result = setUp();
  suitesHolder.reset();
  return result;
}

SPErr Plugin::setUp() {
  takeNameFromHost();
  if (const SPErr result = subscribeToApplicationStarted(); result != kNoErr) return result;
  return lockModule();
}

SPErr Plugin::shutdownPlugin(SPInterfaceMessage*) {
  const SPErr result = unlockModule();
  SuitesHolder::release();
  return result;
}

void Plugin::setName(const char* text) {
  std::strncpy(name, text, sizeof name - 1);
  name[sizeof name - 1] = '\0';
}

// The host gives the name in the module's property list; otherwise the plug-in keeps its own.
void Plugin::takeNameFromHost() {
  const char* text = nullptr;
  if (call(&SPPluginsSuite::GetPluginName, self, &text) == kNoErr && text != nullptr) setName(text);
}

SPErr Plugin::subscribeToApplicationStarted() {
  const std::string title = std::string(name) + " App Started Notifier";
  return call(&AINotifierSuite::AddNotifier, self, title.c_str(), kApplicationStarted,
              &applicationStartedNotifier);
}

SPErr Plugin::lockModule() {
  if (++lockCount > 1) return kNoErr;
  const SPErr result = call(&SPAccessSuite::AcquirePlugin, self, &access);
  if (result != kNoErr) --lockCount;
  return result;
}

SPErr Plugin::unlockModule() {
  if (lockCount == 0 || --lockCount > 0) return kNoErr;
  const SPAccessRef held = access;
  access = nullptr;
  return call(&SPAccessSuite::ReleasePlugin, held);
}

void Plugin::reportError(AIErr code, std::string_view, std::string_view) {
  if (std::find(std::begin(kNeverShown), std::end(kNeverShown), code) != std::end(kNeverShown)) {
    return;
  }
  const std::int64_t now = clock();
  if (suppressDuplicates != 0 && code == lastError && now - lastReportTime < duplicateTimeout) {
    return;
  }
  lastError = code;
  lastReportTime = now;
  showErrorAlert(code);
}

// The text is made without the wrapper class: nothing may be thrown while an error is reported.
void Plugin::showErrorAlert(AIErr code) {
  const BorrowedSuite<AIUserSuite> user;
  std::optional<BorrowedSuite<AIUnicodeStringSuite>> strings;
  if (heldSuite<AIUnicodeStringSuite> == nullptr) strings.emplace();
  const std::string text = codeText(code);
  UnicodeStringBody body;
  if (call(&AIUnicodeStringSuite::Initialize, &body, text.data(),
           static_cast<std::int64_t>(text.size()), kAIPlatformCharacterEncoding) != kNoErr) {
    return;
  }
  call(&AIUserSuite::ErrorAlert, &body);
  call(&AIUnicodeStringSuite::Destroy, &body);
}

SPErr Plugin::goFileFormat(void* record) {
  return notHandled(record);
}

SPErr Plugin::goMenuItem(void* record) {
  return answerNothing(record);
}

SPErr Plugin::notify(void* record) {
  return answerNothing(record);
}

SPErr Plugin::answerNothing(void*) {
  return kNoErr;
}

SPErr Plugin::notHandled(void*) {
  return kUnhandledMsgErr;
}
