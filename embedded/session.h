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

/// What came of a step of the session: of the start, of one file, of the end.
struct StepReport {
  std::vector<MessageAnswer> messages;     ///< those sent, in order
  std::vector<std::string> alerts;         ///< error alerts shown
  std::vector<std::string> misuse;         ///< "plug-in misbehaving: ..."
  std::vector<std::string> notes;          ///< such as a style library that was not read
  CapturedOutput output;                   ///< what the module printed
  std::optional<FailedCall> firstFailure;  ///< the first call that the host refused

  /// The code of the last message sent with this selector; nothing when none was.
  std::optional<hostapi::SPErr> code(const std::string& selector) const;
  /// True when every message was answered with 0.
  bool allAnsweredZero() const;
};

/// One file. Whether the plug-in opened it is told by `builderRan` and the code of "AI Go".
struct Opening : StepReport {
  bool builderRan = false;  ///< the plug-in asked for the document set-up
  art::Document document;   ///< what was drawn, also when a later call failed
  std::string problem;      ///< why no message was sent; empty when they were
};

/// Loads nothing itself: it takes a module, tells it what a host tells it, and keeps what it drew.
/// The module has to be a fresh load where one file's kind must not reach into the next.
class Session {
 public:
  explicit Session(std::unique_ptr<Module> module, Options options = {});
  /// Ends, if that was not done.
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// "SP Access"/"Reload", "SP Interface"/"Startup" and, to the notifier registered for it, the
  /// notice that the application has started. Stops after a start-up that did not answer 0.
  StepReport start();
  /// A new document, made current, then "AI File Format"/"AI Check", "AI Get Parameters" and
  /// "AI Go"; stops at the first that does not answer 0. `file` is native bytes; a relative one is
  /// taken from the current directory.
  Opening open(const std::string& file);
  /// "SP Interface"/"Shutdown" (only after a start-up that answered 0), "SP Access"/"Unload"; then
  /// the module leaves memory. Suites not released are named as misuse.
  StepReport end();

  /// True after a start-up that answered 0, until the end.
  bool started() const { return started_; }
  /// True when the module left memory at the end.
  bool unloaded() const { return unloaded_; }
  Host& host() { return host_; }
  const Host& host() const { return host_; }

  /// Sends one message and gives its answer. The record's common part is filled in and the globals
  /// are kept afterwards; `record` may be null, then a zeroed block larger than any record is sent.
  /// An exception that leaves the plug-in is named as misuse, the answer is then 'CANT'.
  hostapi::SPErr send(const char* caller, const char* selector, void* record = nullptr);
  /// The file-format messages one by one, with any option word, in the host's message layout.
  hostapi::SPErr sendFileFormat(const char* selector, const std::string& file,
                                std::int32_t option = hostapi::kFileFormatRead);
  /// What was printed by messages sent since the last call of this, of `start`, `open` or `end`.
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
