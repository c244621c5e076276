// Start-up without memory. The allocation that answers null instead of throwing is replaced for the
// whole program.
#include <gmock/gmock.h>
#include <new>

#include "tests/plugin/plugin_in_host.h"

namespace {

// The allocation that fails, counted from the next one on; 0: none.
int failingAllocation = 0;

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  if (failingAllocation > 0 && --failingAllocation == 0) return nullptr;
  try {
    return ::operator new(size);
  } catch (...) {
    return nullptr;
  }
}

namespace {

using namespace plugintest;
using testing::ElementsAre;
using testing::IsEmpty;

class StartupWithoutMemory : public testing::Test {
 protected:
  embedded::StepReport startFailingAt(int allocation) {
    failingAllocation = allocation;
    embedded::StepReport report = plugin->start();
    left = failingAllocation;
    failingAllocation = 0;
    return report;
  }

  void expectOutOfMemory(const embedded::StepReport& report) {
    EXPECT_EQ(left, 0) << "no allocation failed";
    EXPECT_EQ(report.code("Startup"), 0x214D454D);
    EXPECT_THAT(report.alerts, ElementsAre("!MEM"));
    EXPECT_THAT(report.misuse, IsEmpty());
    EXPECT_EQ(plugin->globals(), nullptr);
    EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
    EXPECT_EQ(plugin.host().liveStrings(), 0U);
    EXPECT_THAT(plugin.host().formats(), IsEmpty());
    EXPECT_THAT(plugin.host().notifiers(), IsEmpty());
  }

  PluginInHost plugin;
  int left = 0;
};

TEST_F(StartupWithoutMemory, ForThePluginObjectAnswersAndShowsThatMemoryIsOut) {
  expectOutOfMemory(startFailingAt(1));
}

TEST_F(StartupWithoutMemory, ForTheSuitesHolderAnswersAndShowsThatMemoryIsOut) {
  expectOutOfMemory(startFailingAt(2));
}

TEST_F(StartupWithoutMemory, AllocatesNothingElseThatMayFailSo) {
  EXPECT_TRUE(startFailingAt(3).allAnsweredZero());
  EXPECT_EQ(left, 1);
}

}  // namespace
