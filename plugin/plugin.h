// The frame of a plug-in: start-up and shut-down, message dispatch, error alerts.
#pragma once

#include <memory>
#include <string_view>

#include "hostapi/messages.h"
#include "hostapi/sp_access_suite.h"
#include "plugin/suites.h"

/// A handler answers 0 or a host code; '!MSG' means that it does not handle the message. Whatever a
/// handler throws is caught by `guarded`.
class Plugin {
 public:
  explicit Plugin(hostapi::SPPluginRef self);
  virtual ~Plugin() = default;
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  /// Compares caller and selector byte for byte and runs the operation for them; gives 0 when there
  /// is none.
  virtual hostapi::SPErr message(std::string_view caller, std::string_view selector, void* record);

  /// Acquires the suites, subscribes to "application started" and keeps the module in memory.
  virtual hostapi::SPErr startupPlugin(hostapi::SPInterfaceMessage* record);
  /// Undoes what start-up did, including what a failed start-up had done so far.
  virtual hostapi::SPErr shutdownPlugin(hostapi::SPInterfaceMessage* record);

  /// Runs an operation of the plug-in and turns its outcome into a code for the host: ai::Error
  /// gives its code, any other exception 'CANT', '!MSG' becomes 0. A code other than 0 is reported.
  template <class Operation>
  hostapi::SPErr guarded(std::string_view caller, std::string_view selector, Operation operation);

  /// Shows the host's error alert for a code, unless the code means nothing to the user or was the
  /// last one shown, less than `duplicateTimeout` seconds ago.
  void reportError(hostapi::AIErr code, std::string_view caller, std::string_view selector);

  /// Shows the alert, whatever was shown before.
  static void showErrorAlert(hostapi::AIErr code);

  /// Seconds since the epoch; tests replace it to try the suppression of duplicates.
  static std::int64_t (*clock)();

 protected:
  virtual hostapi::SPErr goFileFormat(void* record);
  virtual hostapi::SPErr goMenuItem(void* record);
  virtual hostapi::SPErr notify(void* record);
  hostapi::SPErr answerNothing(void* record);  ///< 0
  hostapi::SPErr notHandled(void* record);     ///< '!MSG'

  void setName(const char* name);

  hostapi::SPPluginRef self;
  char name[256] = "Plugin";
  std::unique_ptr<SuitesHolder> suitesHolder;  ///< only while start-up runs
  std::int32_t lockCount = 0;
  hostapi::SPAccessRef access = nullptr;
  hostapi::AIErr lastError = 0;
  std::int32_t duplicateTimeout = 5;  ///< seconds
  std::int32_t suppressDuplicates = 1;
  std::int64_t lastReportTime = 0;
  hostapi::AINotifierHandle applicationStartedNotifier = nullptr;

 private:
  struct MessageRow;
  static const MessageRow kMessages[];

  hostapi::SPErr setUp();
  hostapi::SPErr subscribeToApplicationStarted();
  hostapi::SPErr lockModule();
  hostapi::SPErr unlockModule();
  void takeNameFromHost();
};
