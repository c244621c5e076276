// The life of a plug-in in the host: every message from loading to unloading.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "art/document.h"
#include "embedded/host.h"
#include "embedded/journal.h"
#include "embedded/module.h"
#include "embedded/options.h"
#include "embedded/output_capture.h"
#include "hostapi/messages.h"

namespace embedded {

/// What the plug-in answered to one message.
struct MessageAnswer {
  std::string caller;
  std::string selector;
  hostapi::SPErr code = 0;
};

/// The outcome of one step of a session: the start, one file, or the end.
struct StepReport {
  std::vector<MessageAnswer> messages;     ///< those that were sent, in order
  std::vector<std::string> alerts;         ///< error alerts shown
  std::vector<std::string> misuse;         ///< "plug-in misbehaving: ..."
  std::vector<std::string> notes;          ///< such as a style library that was not read
  CapturedOutput output;                   ///< what the module printed
  std::optional<FailedCall> firstFailure;  ///< the first call that the host refused

  /// The code of the last message sent with this selector; nothing when there was none.
  std::optional<hostapi::SPErr> code(const std::string& selector) const;
  /// True when every message was answered with 0.
  bool allAnsweredZero() const;
};

/// The outcome of one file. `builderRan` and the code of "AI Go" tell whether the plug-in opened
/// it.
struct Opening : StepReport {
  bool builderRan = false;  ///< the plug-in asked for the document set-up
  art::Document document;   ///< what was drawn, even if a later call failed
  std::string problem;      ///< why no message was sent; empty when some were
};

/// Sends a module the messages that a host sends, and keeps what it drew. The module must be loaded
/// afresh for each file where the kind of one file must not affect the next.
class Session {
 public:
  explicit Session(std::unique_ptr<Module> module, Options options = {});
  /// Calls `end` unless it was called before.
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Sends "SP Access"/"Reload", "SP Interface"/"Startup" and, to each notifier registered for it,
  /// the notification that the application has started. Stops if the start-up does not answer 0.
  StepReport start();
  /// Makes a new current document, then sends "AI File Format"/"AI Check", "AI Get Parameters" and
  /// "AI Go"; stops at the first that does not answer 0. `file` is native bytes; a relative path
  /// starts from the current folder.
  Opening open(const std::string& file);
  /// Sends "SP Interface"/"Shutdown" (only after a start-up that answered 0) and
  /// "SP Access"/"Unload", then unloads the module. Suites that were not released are reported as
  /// misuse.
  StepReport end();

  /// True after a start-up that answered 0, until the end.
  bool started() const { return started_; }
  /// True when the module was no longer in memory after the end.
  bool unloaded() const { return unloaded_; }
  Host& host() { return host_; }
  const Host& host() const { return host_; }

  /// Sends one message and returns its answer. Fills in the record's common part and keeps the
  /// globals for the next message. If `record` is null, a zeroed block larger than any record is
  /// sent. An exception that leaves the plug-in is reported as misuse and gives 'CANT'.
  hostapi::SPErr send(const char* caller, const char* selector, void* record = nullptr);
  /// Sends one file-format message, with any option word, in the host's message layout.
  hostapi::SPErr sendFileFormat(const char* selector, const std::string& file,
                                std::int32_t option = hostapi::kFileFormatRead);
  /// What was printed since the last call of this, of `start`, `open` or `end`.
  CapturedOutput takeOutput();
  void* globals() const { return globals_; }

 private:
  struct Mark;
  Mark mark() const;
  void finish(StepReport& report, const Mark& since);
  hostapi::SPErr sendTo(StepReport& report, const char* caller, const char* selector, void* record);
  bool sendFormatTo(StepReport& report, const char* selector, const std::string& file);

  std::unique_ptr<Module> module_;
  Host host_;
  void* globals_ = nullptr;
  bool started_ = false;
  bool ended_ = false;
  bool unloaded_ = false;
  CapturedOutput output_;
};

}  // namespace embedded
