// Signals that end a process, while it has others to end first. Not for Windows.
#pragma once

#include <array>
#include <csignal>

namespace platform {

/// While it lives, the signals that would end this process are only noted: those from a terminal,
/// and the request to end. They come in only where the process waits with the mask from before.
/// Signals that are ignored stay ignored. One object at a time.
class EndingSignals {
 public:
  EndingSignals();
  ~EndingSignals() { restore(); }
  EndingSignals(const EndingSignals&) = delete;
  EndingSignals& operator=(const EndingSignals&) = delete;

  /// The last that came in; 0 where none did.
  static int noted();
  static void forget();

  /// The signals that were blocked before.
  const sigset_t& mask() const { return mask_; }
  /// Lets signals in everywhere.
  void letIn() const;
  /// Everything is as it was before.
  void restore() const;
  /// In a copy of this process: a terminal sends its signals to every process, but the parent says
  /// which of them end. Its request to end does so.
  void leaveToParent() const;

 private:
  static constexpr std::array kSignals{SIGHUP, SIGINT, SIGQUIT, SIGTERM};

  std::array<struct sigaction, kSignals.size()> before_{};
  sigset_t mask_{};
};

}  // namespace platform
