// Fault injection: every call that the plug-in makes is refused in turn while all others work.
#include <gmock/gmock.h>
#include <map>
#include <string>
#include <vector>

#include "art/json.h"
#include "tests/plugin/answers.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::IsEmpty;

std::map<std::pair<std::string, std::string>, std::size_t> countCalls(const embedded::Host& host) {
  std::map<std::pair<std::string, std::string>, std::size_t> counts;
  for (const Row& row : kGoRows) {
    counts[{row.suite, row.function}] = host.journal().count(row.suite, row.function);
  }
  return counts;
}

PenFileBuilder recording() {
  return twoLayers(2);
}

// The first and the last call of a function within one opening, counted over the host's life, when
// other files were opened before it.
std::pair<std::size_t, std::size_t> callsOfAnOpening(const Row& row, int filesBefore) {
  PluginInHost plugin;
  plugin->start();
  for (int file = 0; file < filesBefore; ++file)
    plugin.open(recording());
  const std::size_t before = plugin.calls(row.suite, row.function);
  plugin.open(recording());
  return {before + 1, plugin.calls(row.suite, row.function)};
}

class EveryCall : public testing::TestWithParam<Row> {
 protected:
  static void SetUpTestSuite() {
    PluginInHost plugin;
    plugin->start();
    faultlessArt = art::toJson(plugin.open(recording()).document);
  }

  static void expectOpens(const embedded::Opening& opening) {
    EXPECT_EQ(opening.code("AI Go"), 0);
    EXPECT_EQ(art::toJson(opening.document), faultlessArt);
    EXPECT_THAT(opening.misuse, IsEmpty());
  }

  static void expectAnswer(hostapi::AIErr answer, const embedded::Opening& opening) {
    EXPECT_EQ(opening.code("AI Go"), answer);
    const std::vector<std::string> alerts =
        answer == 0 ? std::vector<std::string>() : std::vector{hostapi::codeText(answer)};
    EXPECT_EQ(opening.alerts, alerts);
    EXPECT_THAT(opening.misuse, IsEmpty());
    if ((GetParam().traits & kSameArt) != 0) {
      EXPECT_EQ(art::toJson(opening.document), faultlessArt);
    }
  }

  // Refuses one call, in the file after `filesBefore` others, and opens one more after it.
  void refuse(std::size_t call, hostapi::AIErr answer, int filesBefore) {
    const Row& row = GetParam();
    HostWithFaults host;
    host.answering(row.suite, row.function, call, kCode);
    if (fillsOuts) host.fillingOutsOfFailedCalls();
    PluginInHost plugin(host);
    plugin->start();
    for (int file = 0; file < filesBefore; ++file)
      expectOpens(plugin.open(recording()));
    expectAnswer(answer, plugin.open(recording()));
    expectOpens(plugin.open(recording()));
    EXPECT_THAT(plugin->end().misuse, IsEmpty());
    const std::size_t left = (row.traits & kLeaks) != 0 ? 1 : 0;
    EXPECT_EQ(plugin.host().liveStrings() + plugin.host().livePaths(), left);
    EXPECT_EQ(plugin.host().acquiredSuites() + plugin.host().accessCount(), 0U);
  }

  void refuseEach(int filesBefore) {
    const Row& row = GetParam();
    const auto [first, last] = callsOfAnOpening(row, filesBefore);
    for (std::size_t call = first; call <= last; ++call) {
      SCOPED_TRACE("call " + std::to_string(call) + " of " + std::to_string(last));
      const bool isZero = (row.traits & kLastOnly) != 0 && call != last;
      refuse(call, isZero ? 0 : row.answer, filesBefore);
    }
  }

  bool fillsOuts = false;

 private:
  inline static std::string faultlessArt;
};

TEST_P(EveryCall, IsMadeWhenTheFirstFileIsOpened) {
  const auto [first, last] = callsOfAnOpening(GetParam(), 0);
  EXPECT_GE(last, first);
}

TEST_P(EveryCall, WhenRefusedGivesTheAnswerInTheTableAndTheNextFileOpens) {
  refuseEach(0);
}

TEST_P(EveryCall, WhenRefusedGivesTheAnswerInTheTableAlsoAfterAFileThatOpened) {
  refuseEach(1);
}

TEST_P(EveryCall, WhenRefusedGivesTheAnswerInTheTableAlsoIfItLeavesValuesBehind) {
  fillsOuts = true;
  refuseEach(0);
}

INSTANTIATE_TEST_SUITE_P(, EveryCall, testing::ValuesIn(kGoRows),
                         [](const auto& row) { return std::string(row.param.function); });

TEST(EveryCallTable, ListsEveryFunctionThatOpeningAFileCalls) {
  PluginInHost plugin;
  plugin->start();
  const std::size_t before = plugin.host().journal().size();
  plugin.open(recording());
  std::size_t named = 0;
  for (const auto& [function, count] : countCalls(plugin.host()))
    named += count;
  EXPECT_EQ(plugin.host().journal().size() - before, named);
}

}  // namespace
