// Every allocation of start-up, "Go" and shut-down fails: alone, in runs, and from one on for good.
#include <algorithm>
#include <gmock/gmock.h>
#include <iostream>
#include <string>

#include "art/json.h"
#include "tests/plugin/sample_files.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/memory/failing_allocation.h"
#include "tests/support/memory/live_bytes.h"
#include "tests/support/share/share.h"

#ifdef __SANITIZE_ADDRESS__
// The leak sanitizer asks for this name. What the XML library leaves behind is counted below, in
// `mostLeft`.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions() {
  return "leak:libtinyxml";
}
#endif

namespace {

using namespace plugintest;
using hostapi::AIErr;
using memorytest::exemptAllocations;
using memorytest::FailingAllocations;
using memorytest::liveBytes;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr AIErr kCant = fourCC("CANT");
constexpr std::size_t kRuns[] = {1, 2, 3, 8, FailingAllocations::kAll};

// Only the allocations of the plug-in fail, not those of the host that it calls.
hostapi::SPErr entry(const char* caller, const char* selector, void* message) {
  exemptAllocations(false);
  const hostapi::SPErr answer = PluginMain(caller, selector, message);
  exemptAllocations(true);
  return answer;
}

class WithoutMemory : public testing::TestWithParam<SampleFile> {
 protected:
  WithoutMemory() {
    exemptAllocations(true);
    // What is made once in a program, such as the log, is made here.
    PluginInHost plugin;
    plugin->start();
    faultlessArt_ = art::toJson(open(plugin).document);
  }

  static test::HostWithFaults exemptHost() {
    return test::HostWithFaults().tellingAtBorder(&exemptAllocations);
  }

  static embedded::Opening open(PluginInHost& plugin) {
    return plugin->open(plugin.writeText(GetParam().name, GetParam().bytes));
  }

  static std::string describe(std::size_t successes, std::size_t count) {
    return std::to_string(successes) + " allocations succeed, " +
           (count == FailingAllocations::kAll ? "all others" : std::to_string(count)) + " fail";
  }

  static std::size_t allocationsOfGo() {
    PluginInHost plugin(exemptHost(), &entry);
    plugin->start();
    const FailingAllocations none(0, 0);
    open(plugin);
    return none.made();
  }

  // Where memory runs out in it, the XML library leaves the nodes that it has made and not yet put
  // into the tree: it alone knows where they are. Of a recording nothing is left.
  static std::size_t mostLeft() {
    return GetParam().isInk() ? 5 * GetParam().bytes.size() + 4096 : 0;
  }

  // The file is opened where memory runs out, and once more where it does not.
  void openFailing(std::size_t successes, std::size_t count) {
    PluginInHost plugin(exemptHost(), &entry);
    plugin->start();
    embedded::Opening opening;
    {
      const FailingAllocations failing(successes, count);
      opening = open(plugin);
      EXPECT_GT(failing.failed(), 0U);
    }
    expectAnswer(opening);
    const embedded::Opening next = open(plugin);
    EXPECT_TRUE(next.allAnsweredZero());
    EXPECT_EQ(art::toJson(next.document), faultlessArt_);
    EXPECT_THAT(plugin->end().misuse, IsEmpty());
    EXPECT_EQ(plugin.host().liveStrings() + plugin.host().livePaths(), 0U);
    EXPECT_EQ(plugin.host().accessCount(), 0U);
  }

  // Memory that ran out for a line of the log alone is nobody's loss: then nothing is missing.
  void expectAnswer(const embedded::Opening& opening) {
    EXPECT_THAT(opening.misuse, IsEmpty());
    if (!GetParam().opens && opening.code("AI Go") == 0) {
      EXPECT_EQ(art::toJson(opening.document), faultlessArt_);
      EXPECT_THAT(opening.alerts, IsEmpty());
    } else {
      EXPECT_EQ(opening.code("AI Go"), kCant);
      EXPECT_THAT(opening.alerts, ElementsAre("CANT"));
    }
  }

 private:
  std::string faultlessArt_;
};

TEST_P(WithoutMemory, GoIsAnsweredAndTheNextFileOpensAsAlone) {
  const std::size_t all = allocationsOfGo();
  ASSERT_GT(all, 0U);
  const std::size_t cases = all * std::size(kRuns);
  test::Share share = GetParam().isLarge() ? test::Share(GetParam().name, cases, 10, 1000)
                                           : test::Share(GetParam().name, cases, 150);
  std::size_t most = 0;
  for (std::size_t successes = 0; successes < all; ++successes) {
    for (const std::size_t count : kRuns) {
      if (!share.takesNext()) continue;
      SCOPED_TRACE(describe(successes, count));
      const std::size_t before = liveBytes();
      openFailing(successes, count);
      EXPECT_LE(liveBytes(), before + mostLeft());
      most = std::max(most, liveBytes() - before);
      if (HasFailure()) return;
    }
  }
  std::cout << GetParam().name << ": at most " << most << " of " << GetParam().bytes.size()
            << " bytes left" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(, WithoutMemory, testing::ValuesIn(sampleFiles()),
                         [](const auto& file) { return file.param.title(); });

class StartupWithoutMemory : public testing::Test {
 protected:
  StartupWithoutMemory() { exemptAllocations(true); }

  // True if an allocation failed.
  static bool startFailing(std::size_t successes, std::size_t count) {
    PluginInHost plugin(test::HostWithFaults().tellingAtBorder(&exemptAllocations), &entry);
    embedded::StepReport report;
    {
      const FailingAllocations failing(successes, count);
      report = plugin->start();
      if (failing.failed() == 0) return false;
    }
    // The first two are the plug-in object and the suites holder.
    const AIErr answer = successes < 2 ? hostapi::kOutOfMemoryErr : kCant;
    EXPECT_EQ(report.code("Startup"), answer);
    EXPECT_THAT(report.alerts, ElementsAre(hostapi::codeText(answer)));
    EXPECT_THAT(report.misuse, IsEmpty());
    EXPECT_EQ(plugin->globals(), nullptr);
    EXPECT_THAT(plugin.host().formats(), IsEmpty());
    expectBalance(plugin);
    return true;
  }

  static void expectBalance(PluginInHost& plugin) {
    EXPECT_THAT(plugin->end().misuse, IsEmpty());
    EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
    EXPECT_EQ(plugin.host().accessCount(), 0U);
    EXPECT_EQ(plugin.host().liveStrings(), 0U);
  }
};

TEST_F(StartupWithoutMemory, ReportsThatMemoryRanOutOrThatItCannotGoOn) {
  EXPECT_EQ(hostapi::kOutOfMemoryErr, 0x214D454D);
  for (const std::size_t count : kRuns) {
    std::size_t failed = 0;
    while (true) {
      SCOPED_TRACE(std::to_string(failed) + ", " + std::to_string(count));
      const std::size_t before = liveBytes();
      const bool another = startFailing(failed, count);
      EXPECT_EQ(liveBytes(), before);
      if (!another || HasFailure()) break;
      ++failed;
    }
    // The object, the suites holder, the notifier's name and the format's title.
    EXPECT_EQ(failed, 4U);
  }
}

TEST_F(StartupWithoutMemory, ShutDownNeedsNone) {
  PluginInHost plugin(test::HostWithFaults().tellingAtBorder(&exemptAllocations), &entry);
  EXPECT_TRUE(plugin->start().allAnsweredZero());
  const FailingAllocations failing(0, FailingAllocations::kAll);
  const embedded::StepReport end = plugin->end();
  EXPECT_TRUE(end.allAnsweredZero());
  EXPECT_EQ(failing.failed(), 0U);
}

}  // namespace
