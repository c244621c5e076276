#ifndef _WIN32
#include "platform/ending_signals.h"

namespace platform {

namespace {

volatile std::sig_atomic_t notedSignal = 0;

extern "C" void noteSignal(int signal) {
  notedSignal = signal;
}

void setHandler(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  ::sigaction(signal, &action, nullptr);
}

}  // namespace

EndingSignals::EndingSignals() {
  forget();
  sigset_t blocked;
  ::sigemptyset(&blocked);
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    ::sigaddset(&blocked, kSignals[i]);
    ::sigaction(kSignals[i], nullptr, &before_[i]);
    if (before_[i].sa_handler != SIG_IGN) setHandler(kSignals[i], noteSignal);
  }
  ::pthread_sigmask(SIG_BLOCK, &blocked, &mask_);
}

int EndingSignals::noted() {
  return notedSignal;
}

void EndingSignals::forget() {
  notedSignal = 0;
}

void EndingSignals::letIn() const {
  ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
}

void EndingSignals::restore() const {
  for (std::size_t i = 0; i < kSignals.size(); ++i)
    ::sigaction(kSignals[i], &before_[i], nullptr);
  letIn();
}

void EndingSignals::leaveToParent() const {
  for (const int signal : kSignals)
    setHandler(signal, signal == SIGTERM ? SIG_DFL : SIG_IGN);
  letIn();
}

}  // namespace platform
#endif
