// What the log does between opening and closing its file, seen through the calls of the C library,
// and what happens to a thread that is cancelled. The calls are replaced for the whole program.
#include <cerrno>
#include <cstdio>
#include <dlfcn.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <string>
#include <unistd.h>
#include <utility>

#include "log/logger.h"
#include "tests/support/pen/debugger_text.h"
#include "tests/support/pen/log_capture.h"

namespace {

bool positionIsUnknown = false;
std::function<void()> beforeClosing;

template <class Function>
Function* original(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" off_t ftello(std::FILE* file) {
  static const auto kOriginal = original<off_t(std::FILE*)>("ftello");
  if (!positionIsUnknown) return kOriginal(file);
  errno = ESPIPE;
  return -1;
}

extern "C" int fclose(std::FILE* file) {
  static const auto kOriginal = original<int(std::FILE*)>("fclose");
  if (beforeClosing) std::exchange(beforeClosing, nullptr)();
  return kOriginal(file);
}

namespace {

using Orvo::LogLevel;
using Orvo::logMessage;
using testing::ElementsAre;

void log(const char* message) {
  logMessage("SomeClass", "someMethod", message, LogLevel::severe);
}

class LogFile : public testing::Test {
 protected:
  pentest::LogCapture log_;
};

TEST_F(LogFile, HoldsTheWholeLineBeforeItIsClosed) {
  std::string found;
  const auto lines = log_.linesOfWork([&] {
    beforeClosing = [&] { found = pentest::readText(log_.file()); };
    log("flushed");
  });
  EXPECT_THAT(found, testing::EndsWith("SEVERE flushed\tSomeClass::someMethod()\n"));
  EXPECT_EQ(lines.size(), 1U);
}

TEST_F(LogFile, GetsTheLineAfterTheDebugger) {
  off_t sentToDebugger = 0;
  log_.linesOfWork([&] {
    beforeClosing = [&] { sentToDebugger = ::lseek(STDERR_FILENO, 0, SEEK_CUR); };
    log("heard");
  });
  EXPECT_GT(sentToDebugger, 0);
}

TEST_F(LogFile, IsNotEmptiedWhenItsSizeIsUnknown) {
  const auto lines = log_.linesOfWork([] {
    positionIsUnknown = true;
    log("one");
    positionIsUnknown = false;
    log("two");
  });
  EXPECT_THAT(lines, ElementsAre("SEVERE one\tSomeClass::someMethod()",
                                 "SEVERE two\tSomeClass::someMethod()"));
}

// The address sanitizer itself ends the process where a thread is unwound by its cancellation.
#ifndef __SANITIZE_ADDRESS__
TEST_F(LogFile, LosesOnlyTheLineOfAThreadThatIsCancelled) {
  void* result = nullptr;
  const auto lines = log_.linesOfWork([&] {
    pthread_t thread{};
    const auto cancelItself = [](void*) -> void* {
      pthread_cancel(pthread_self());
      log("cancelled");
      return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, nullptr, cancelItself, nullptr), 0);
    ASSERT_EQ(pthread_join(thread, &result), 0);
    log("afterwards");
  });
  EXPECT_EQ(result, PTHREAD_CANCELED);
  EXPECT_THAT(lines, ElementsAre("SEVERE afterwards\tSomeClass::someMethod()"));
}
#endif

}  // namespace
