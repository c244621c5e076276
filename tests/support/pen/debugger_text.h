#pragma once

#include <string>

#ifdef _WIN32
#include <windows.h>

#include "platform/paths.h"
#else
#include <gtest/gtest.h>
#endif

namespace pentest {

#ifdef _WIN32

/// Hears, while it lives, what its process hands to the debugger. One at a time.
class DebuggerEar {
 public:
  DebuggerEar() : handler_(AddVectoredExceptionHandler(1, &hear)) { heard().clear(); }
  ~DebuggerEar() { RemoveVectoredExceptionHandler(handler_); }
  DebuggerEar(const DebuggerEar&) = delete;
  DebuggerEar& operator=(const DebuggerEar&) = delete;

  static std::string& heard() {
    static std::string text;
    return text;
  }

 private:
  // The system hands text over by raising an exception: its length with the zero, and where it is.
  static LONG CALLBACK hear(EXCEPTION_POINTERS* pointers) {
    constexpr DWORD narrow = 0x40010006;
    constexpr DWORD wide = 0x4001000A;
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode == narrow) {
      heard().append(reinterpret_cast<const char*>(record.ExceptionInformation[1]),
                     record.ExceptionInformation[0] - 1);
    } else if (record.ExceptionCode == wide) {
      heard() += platform::wideToNativePath(
          {reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1]),
           record.ExceptionInformation[0] - 1});
    } else {
      return EXCEPTION_CONTINUE_SEARCH;
    }
    return EXCEPTION_CONTINUE_EXECUTION;
  }

  void* handler_;
};

/// What `work` hands to the debugger.
template <typename Work>
std::string debuggerTextOf(Work work) {
  const DebuggerEar ear;
  work();
  return DebuggerEar::heard();
}

#else

/// What `work` hands to the debugger: natively what it prints on standard error.
template <typename Work>
std::string debuggerTextOf(Work work) {
  testing::internal::CaptureStderr();
  work();
  return testing::internal::GetCapturedStderr();
}

#endif

}  // namespace pentest
