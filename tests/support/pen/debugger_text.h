// What is sent to the debugger.
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

/// Collects what its process sends to the debugger while it lives. There may be one at a time.
class DebuggerListener {
 public:
  DebuggerListener() : handler_(AddVectoredExceptionHandler(1, &listen)) { collected().clear(); }
  ~DebuggerListener() { RemoveVectoredExceptionHandler(handler_); }
  DebuggerListener(const DebuggerListener&) = delete;
  DebuggerListener& operator=(const DebuggerListener&) = delete;

  static std::string& collected() {
    static std::string text;
    return text;
  }

 private:
  // The system passes text on by raising an exception with its length, including the terminating
  // zero, and its address.
  static LONG CALLBACK listen(EXCEPTION_POINTERS* pointers) {
    constexpr DWORD kNarrow = 0x40010006;
    constexpr DWORD kWide = 0x4001000A;
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode == kNarrow) {
      collected().append(reinterpret_cast<const char*>(record.ExceptionInformation[1]),
                         record.ExceptionInformation[0] - 1);
    } else if (record.ExceptionCode == kWide) {
      collected() += platform::wideToNativePath(
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
template <class Work>
std::string debuggerTextOf(Work work) {
  const DebuggerListener listener;
  work();
  return DebuggerListener::collected();
}

#else

/// What `work` sends to the debugger: natively what it prints on standard error.
template <class Work>
std::string debuggerTextOf(Work work) {
  testing::internal::CaptureStderr();
  work();
  return testing::internal::GetCapturedStderr();
}

#endif

}  // namespace pentest
