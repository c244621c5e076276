// Every call that the plug-in makes is refused in turn, with every other call working.
#include <gmock/gmock.h>
#include <map>
#include <string>
#include <vector>

#include "tests/plugin/plugin_in_host.h"

namespace {

using namespace plugintest;
using testing::IsEmpty;

constexpr hostapi::AIErr kCode = fourCC("TEST");

// What "AI Go" answers when a call of it is refused.
enum class Answer {
  code,      // the refusal's code
  cant,      // 'CANT'
  zero,      // nothing comes of it
  hostCode,  // the code with which the host refuses what follows from it
};

struct Row {
  const char* suite;
  const char* function;
  Answer answer;
  // Only the last call of the function answers so, the others zero.
  bool lastOnly = false;
  // The refused call leaves something of the host's behind.
  bool leaks = false;
};

const Row kRows[] = {
    {"AI File Path Suite", "GetFullPath", Answer::code},
    {"AI File Path Suite", "Copy", Answer::code},
    {"AI File Path Suite", "GetFileExtension", Answer::code},
    {"AI File Path Suite", "Set", Answer::code},
    {"AI File Path Suite", "DeleteFilePath", Answer::zero, false, true},
    {"AI Unicode String Suite", "Initialize", Answer::code},
    {"AI Unicode String Suite", "InitializeUTF16", Answer::code},
    {"AI Unicode String Suite", "Append", Answer::code},
    {"AI Unicode String Suite", "GetChar", Answer::code},
    {"AI Unicode String Suite", "Compare", Answer::zero},
    {"AI Unicode String Suite", "Destroy", Answer::zero, false, true},
    {"AI Path Style Suite", "ImportStyles", Answer::hostCode},
    {"AI Art Style Suite", "GetArtStyleByNameFromDocument", Answer::code},
    {"AI Art Style Suite", "AddNamedStyle", Answer::zero},
    {"AI Art Style Suite", "SetArtStyle", Answer::code, true},
    {"AI Document Suite", "GetAIVersion", Answer::zero},
    {"AI Document Suite", "GetDocumentSetup", Answer::code},
    {"AI Document Suite", "SetDocumentRulerOrigin", Answer::code},
    {"AI Document Suite", "SetDocumentSetup", Answer::code},
    {"AI Layer Suite", "CountLayers", Answer::zero},
    {"AI Layer Suite", "GetFirstLayer", Answer::hostCode},
    {"AI Layer Suite", "SetCurrentLayer", Answer::zero},
    {"AI Layer Suite", "SetLayerEditable", Answer::code},
    {"AI Layer Suite", "InsertLayer", Answer::code},
    {"AI Layer Suite", "GetNthLayer", Answer::zero},
    {"AI Layer Suite", "LayerHasArt", Answer::zero},
    {"AI Art Suite", "GetFirstArtOfLayer", Answer::zero},
    {"AI Art Suite", "NewArt", Answer::cant},
    {"AI Path Suite", "SetPathSegmentCount", Answer::cant},
    {"AI Path Suite", "SetPathSegments", Answer::cant},
    {"AI Path Suite", "SetPathClosed", Answer::cant},
    {"AI TabletData Suite", "SetTabletData", Answer::cant},
    {"AI Art Set Suite", "NewArtSet", Answer::hostCode, true},
    {"AI Art Set Suite", "LayerArtSet", Answer::zero},
    {"AI Art Set Suite", "CountArtSet", Answer::code, true},
    {"AI Art Set Suite", "IndexArtSet", Answer::hostCode, true},
};

// Two layers of two strokes.
PenFileBuilder twoLayers() {
  PenFileBuilder recording;
  recording.descriptor();
  for (int layer = 0; layer < 2; ++layer) {
    recording.status(0x80);
    for (int stroke = 0; stroke < 2; ++stroke) {
      recording.status(0)
          .status(1)
          .coordinate(10, 20)
          .coordinate(30, 40 + stroke)
          .coordinate(50, 60 + layer);
    }
  }
  return recording;
}

std::map<std::pair<std::string, std::string>, std::size_t> countCalls(const embedded::Host& host) {
  std::map<std::pair<std::string, std::string>, std::size_t> counts;
  for (const Row& row : kRows) {
    counts[{row.suite, row.function}] = host.journal().count(row.suite, row.function);
  }
  return counts;
}

void expectAnswer(Answer answer, const embedded::Opening& opening, const std::string& where) {
  const hostapi::SPErr code = opening.code("AI Go").value();
  switch (answer) {
    case Answer::zero:
      EXPECT_EQ(code, 0) << where;
      break;
    case Answer::code:
      EXPECT_EQ(code, kCode) << where;
      break;
    case Answer::cant:
      EXPECT_EQ(code, fourCC("CANT")) << where;
      break;
    case Answer::hostCode:
      EXPECT_NE(code, 0) << where;
      EXPECT_NE(code, kCode) << where;
      break;
  }
  const std::vector<std::string> wanted =
      code == 0 ? std::vector<std::string>() : std::vector{hostapi::codeText(code)};
  EXPECT_EQ(opening.alerts, wanted) << where;
}

// The first and the last call of a function within one opening, counted from the host's beginning.
std::pair<std::size_t, std::size_t> callsOfAnOpening(const Row& row) {
  PluginInHost plugin;
  plugin->start();
  const std::size_t before = plugin.host().journal().count(row.suite, row.function);
  plugin.open(twoLayers());
  return {before + 1, plugin.host().journal().count(row.suite, row.function)};
}

class EveryCall : public testing::TestWithParam<Row> {};

TEST_P(EveryCall, ThatIsRefusedIsAnsweredByTheTableAndTheNextFileOpens) {
  const Row& row = GetParam();
  const auto [first, last] = callsOfAnOpening(row);
  ASSERT_GE(last, first) << "the function is called";

  for (std::size_t call = first; call <= last; ++call) {
    const std::string where = std::string(row.function) + ", call " + std::to_string(call) +
                              " of " + std::to_string(last);
    PluginInHost plugin(failing(row.suite, row.function, kCode, call));
    plugin->start();
    const bool isLast = call == last;
    const Answer answer = row.lastOnly && !isLast ? Answer::zero : row.answer;
    const embedded::Opening opening = plugin.open(twoLayers());
    expectAnswer(answer, opening, where);
    const embedded::Opening next = plugin.open(twoLayers());
    EXPECT_EQ(next.code("AI Go"), 0) << where;
    EXPECT_EQ(art::countPaths(next.document), 4U) << where;
    EXPECT_THAT(next.misuse, IsEmpty()) << where;
    EXPECT_THAT(plugin->end().misuse, IsEmpty()) << where;
    EXPECT_EQ(plugin.host().liveStrings() + plugin.host().livePaths(), row.leaks ? 1U : 0U)
        << where;
    EXPECT_EQ(plugin.host().acquiredSuites() + plugin.host().accessCount(), 0U) << where;
  }
}

INSTANTIATE_TEST_SUITE_P(, EveryCall, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.function); });

TEST(EveryCallTable, NamesEveryFunctionThatAnOpeningCalls) {
  PluginInHost plugin;
  plugin->start();
  const std::size_t before = plugin.host().journal().size();
  plugin.open(twoLayers());
  std::size_t named = 0;
  for (const auto& [function, count] : countCalls(plugin.host()))
    named += count;
  EXPECT_EQ(plugin.host().journal().size() - before, named);
}

// Each suite is taken away: nothing crashes, and what the host sees is a code or nothing.
TEST(MissingSuite, NeverLeadsToACallThroughNull) {
  for (const Row& row : kRows) {
    embedded::Options options;
    options.lackingSuites = {row.suite};
    PluginInHost plugin(options);
    plugin->start();
    const embedded::Opening opening = plugin.open(twoLayers());
    EXPECT_THAT(opening.alerts, testing::AnyOf(IsEmpty(), testing::ElementsAre("CANT"),
                                               testing::ElementsAre(testing::SizeIs(4))))
        << row.suite;
    plugin->end();
    // What other suites made of strings cannot be given back without the suite that takes it.
    if (row.suite == std::string("AI Unicode String Suite")) continue;
    EXPECT_EQ(plugin.host().liveStrings() + plugin.host().livePaths(), 0U) << row.suite;
  }
}

}  // namespace
