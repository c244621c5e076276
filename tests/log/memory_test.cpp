// The log of a module: the memory that it allocates and frees, what it does when there is none, and
// the file that it finds.
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

#include "log/logger.h"
#include "tests/log/library.h"
#include "tests/support/memory/failing_allocation.h"
#include "tests/support/memory/live_bytes.h"
#include "tests/support/pen/log_capture.h"

namespace {

using memorytest::FailingAllocations;
using memorytest::liveBytes;
using testing::ElementsAre;

class LogMemory : public testing::Test {
 protected:
  pentest::LogCapture log_;
};

TEST_F(LogMemory, CanRunOutWithoutTheCallerNoticing) {
  std::size_t failures = 0;
  const auto lines = log_.linesOfWork([&] {
    for (bool failed = true; failed; failures += failed ? 1 : 0) {
      const FailingAllocations allocation(failures);
      EXPECT_NO_THROW(Orvo::logMessage("SomeClass", "someMethod", "a message of some length",
                                       Orvo::LogLevel::severe));
      failed = allocation.failed();
    }
  });
  EXPECT_GT(failures, 0U);
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.back(), "SEVERE a message of some length\tSomeClass::someMethod()");
}

TEST_F(LogMemory, IsFreedWhenAModuleWhoseStaticObjectsLogIsUnloaded) {
  const auto lines = log_.linesOfWork([&] {
    const std::size_t before = liveBytes();
    std::optional<logtest::Library> module(STATIC_OBJECTS_MODULE);
    ASSERT_TRUE(module->isLoaded());
#ifndef _WIN32  // There a module has its own allocation functions.
    EXPECT_GT(liveBytes(), before);
#endif
    module.reset();
    EXPECT_EQ(liveBytes(), before);
  });
  EXPECT_THAT(lines, ElementsAre("SEVERE created\tLogsAlways::constructor()",
                                 "SEVERE destroyed\tLogsWhenDestroyed::destructor()",
                                 "SEVERE destroyed\tLogsWhenDestroyed::destructor()"));
}

TEST(LogOfALoadedModule, GoesBehindWhatTheFileHeldBefore) {
  const pentest::LogCapture log;
  const auto lines = log.linesOfWork([&] {
    std::ofstream(log.file()) << "[2012.05.31 14:07:09] [1] SEVERE earlier\tSomeClass::some()\n";
    const logtest::Library module(STATIC_OBJECTS_MODULE);
    ASSERT_TRUE(module.isLoaded());
  });
  EXPECT_THAT(lines, ElementsAre("SEVERE earlier\tSomeClass::some()",
                                 "SEVERE created\tLogsAlways::constructor()",
                                 "SEVERE destroyed\tLogsWhenDestroyed::destructor()",
                                 "SEVERE destroyed\tLogsWhenDestroyed::destructor()"));
}

}  // namespace
