// Start-up without memory.
#include <gmock/gmock.h>
#include <utility>

#include "tests/plugin/allocation.h"
#include "tests/plugin/plugin_in_host.h"

namespace {

using namespace plugintest;
using testing::ElementsAre;
using testing::IsEmpty;

class StartupWithoutMemory : public testing::Test {
 protected:
  embedded::StepReport startFailingAt(int number) {
    allocation::failing = number;
    embedded::StepReport report = plugin->start();
    left = std::exchange(allocation::failing, 0);
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

TEST_F(StartupWithoutMemory, ForThePluginObjectReportsThatMemoryRanOut) {
  expectOutOfMemory(startFailingAt(1));
}

TEST_F(StartupWithoutMemory, ForTheSuitesHolderReportsThatMemoryRanOut) {
  expectOutOfMemory(startFailingAt(2));
}

TEST_F(StartupWithoutMemory, HasNoOtherAllocationThatCanFailThisWay) {
  EXPECT_TRUE(startFailingAt(3).allAnsweredZero());
  EXPECT_EQ(left, 1);
}

}  // namespace
