// Hosts that lack a suite or a function: nothing is called through null, and the answer is the same
// as if the call were refused with 'S!Fd'.
#include <gmock/gmock.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::IsEmpty;

constexpr hostapi::AIErr kMissing = fourCC("S!Fd");
constexpr hostapi::AIErr kCant = fourCC("CANT");
constexpr hostapi::AIErr kParameter = fourCC("PARM");

// The alerts for a code: none for 0 and a missing suite, otherwise the code itself.
std::vector<std::string> alertsFor(hostapi::AIErr code) {
  if (code == 0 || code == kMissing) return {};
  return {hostapi::codeText(code)};
}

std::string withoutBlanks(std::string name) {
  std::erase_if(name, [](char character) { return character == ' ' || character == '-'; });
  return name;
}

// ---- suites ----

struct Suite {
  const char* name;
  std::int32_t version;
  hostapi::SPErr startup;
  hostapi::SPErr go = 0;
  std::size_t paths = 0;  // of a recording with one stroke
  // What the plug-in cannot release without the suite.
  std::size_t stringsLeft = 0;
};

const Suite kSuites[] = {
    {"SP Access Suite", 3, kMissing},
    {"AI Notifier Suite", 3, kMissing},
    {"AI File Format Suite", 12, kMissing},
    {"SP Plug-ins Suite", 4, 0, 0, 1},
    {"AI User Suite", 10, 0, 0, 1},
    {"AI Runtime Suite", 11, 0, 0, 1},
    {"AI File Path Suite", 3, 0, kMissing, 0},
    {"AI Unicode String Suite", 7, 0, kMissing, 0, 1},
    {"AI Document Suite", 13, 0, kMissing, 0},
    {"AI Layer Suite", 12, 0, kMissing, 0},
    {"AI Art Style Suite", 6, 0, kMissing, 0},
    {"AI Path Style Suite", 12, 0, kParameter, 0},
    {"AI Art Suite", 16, 0, kCant, 0},
    {"AI Path Suite", 10, 0, kCant, 1},
    {"AI TabletData Suite", 2, 0, kCant, 1},
    {"AI Art Set Suite", 7, 0, kMissing, 1},
};

void expectAnswer(const embedded::Opening& opening, hostapi::SPErr go, std::size_t paths) {
  EXPECT_EQ(opening.code("AI Go"), go);
  EXPECT_EQ(opening.alerts, alertsFor(go));
  EXPECT_EQ(art::countPaths(opening.document), paths);
  EXPECT_THAT(opening.misuse, IsEmpty());
}

class MissingSuite : public testing::TestWithParam<Suite> {
 protected:
  void expectAnswers(const embedded::Options& options) {
    const Suite& suite = GetParam();
    PluginInHost plugin(options);
    const embedded::StepReport start = plugin->start();
    EXPECT_EQ(start.code("Startup"), suite.startup);
    EXPECT_EQ(start.alerts, alertsFor(suite.startup));
    if (suite.startup == 0) {
      EXPECT_EQ(plugin.host().acquiredSuites(), 103U);
      expectAnswer(plugin.open(oneStroke()), suite.go, suite.paths);
    } else {
      EXPECT_EQ(plugin->globals(), nullptr);
      EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
    }
    EXPECT_THAT(plugin->end().misuse, IsEmpty());
    EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
    EXPECT_EQ(plugin.host().liveStrings(), suite.stringsLeft);
    EXPECT_EQ(plugin.host().livePaths(), 0U);
  }
};

TEST_P(MissingSuite, GivesTheAnswerInTheTable) {
  expectAnswers(HostWithFaults().lacking(GetParam().name));
}

TEST_P(MissingSuite, CanAlsoBeOneOfAnOlderOrANewerVersion) {
  expectAnswers(HostWithFaults().offering(GetParam().name, GetParam().version - 1));
  expectAnswers(HostWithFaults().offering(GetParam().name, GetParam().version + 1));
}

INSTANTIATE_TEST_SUITE_P(, MissingSuite, testing::ValuesIn(kSuites),
                         [](const auto& suite) { return withoutBlanks(suite.param.name); });

// ---- functions ----

struct Slot {
  const char* suite;
  std::size_t number;
  const char* function;
  // Of a recording of two layers with a stroke each:
  hostapi::SPErr go;
  std::size_t paths;
};

const Slot kSlots[] = {
    {"SP Plug-ins Suite", 22, "GetPluginName", 0, 2},
    {"AI Runtime Suite", 11, "GetAppMajorVersion", 0, 2},
    {"AI Runtime Suite", 12, "GetAppMinorVersion", 0, 2},
    {"AI File Path Suite", 20, "GetFullPath", kMissing, 0},
    {"AI File Path Suite", 2, "Copy", kMissing, 0},
    {"AI File Path Suite", 19, "GetFileExtension", kMissing, 0},
    {"AI File Path Suite", 15, "Set", kMissing, 0},
    {"AI File Path Suite", 1, "DeleteFilePath", 0, 2},
    {"AI Unicode String Suite", 0, "Initialize", kMissing, 0},
    {"AI Unicode String Suite", 1, "InitializeUTF16", kMissing, 0},
    {"AI Unicode String Suite", 4, "Append", kMissing, 0},
    {"AI Unicode String Suite", 8, "GetChar", kMissing, 0},
    {"AI Unicode String Suite", 10, "Compare", 0, 2},
    {"AI Unicode String Suite", 3, "Destroy", 0, 2},
    {"AI Path Style Suite", 4, "ImportStyles", kParameter, 0},
    {"AI Art Style Suite", 17, "GetArtStyleByNameFromDocument", kMissing, 0},
    {"AI Art Style Suite", 12, "AddNamedStyle", 0, 2},
    {"AI Art Style Suite", 6, "SetArtStyle", kMissing, 2},
    {"AI Document Suite", 40, "GetAIVersion", 0, 2},
    {"AI Document Suite", 10, "GetDocumentSetup", kMissing, 0},
    {"AI Document Suite", 3, "SetDocumentRulerOrigin", kMissing, 0},
    {"AI Document Suite", 11, "SetDocumentSetup", kMissing, 0},
    {"AI Layer Suite", 0, "CountLayers", 0, 2},
    {"AI Layer Suite", 4, "GetFirstLayer", kParameter, 0},
    {"AI Layer Suite", 3, "SetCurrentLayer", 0, 2},
    {"AI Layer Suite", 17, "SetLayerEditable", kMissing, 0},
    {"AI Layer Suite", 6, "InsertLayer", kMissing, 1},
    {"AI Layer Suite", 1, "GetNthLayer", 0, 2},
    {"AI Layer Suite", 25, "LayerHasArt", 0, 2},
    {"AI Art Suite", 4, "GetFirstArtOfLayer", 0, 2},
    {"AI Art Suite", 0, "NewArt", kCant, 0},
    {"AI Path Suite", 1, "SetPathSegmentCount", kCant, 1},
    {"AI Path Suite", 3, "SetPathSegments", kCant, 1},
    {"AI Path Suite", 7, "SetPathClosed", kCant, 1},
    {"AI TabletData Suite", 1, "SetTabletData", kCant, 1},
    {"AI Art Set Suite", 0, "NewArtSet", kParameter, 2},
    {"AI Art Set Suite", 7, "LayerArtSet", 0, 2},
    {"AI Art Set Suite", 2, "CountArtSet", kMissing, 2},
    {"AI Art Set Suite", 3, "IndexArtSet", kParameter, 2},
};

class MissingFunction : public testing::TestWithParam<Slot> {};

TEST_P(MissingFunction, GivesTheAnswerInTheTable) {
  PluginInHost plugin(HostWithFaults().withNullSlot(GetParam().suite, GetParam().number));
  EXPECT_TRUE(plugin->start().allAnsweredZero());
  expectAnswer(plugin.open(twoLayers(1)), GetParam().go, GetParam().paths);
  EXPECT_EQ(plugin.calls(GetParam().suite, GetParam().function), 0U);
  const embedded::StepReport end = plugin->end();
  EXPECT_TRUE(end.allAnsweredZero());
  EXPECT_THAT(end.misuse, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, MissingFunction, testing::ValuesIn(kSlots),
                         [](const auto& slot) { return std::string(slot.param.function); });

TEST(MissingStartFunction, EndsTheStartWithoutAnAlertAndReleasesEverything) {
  for (const char* suite : {"AI Notifier Suite", "SP Access Suite", "AI File Format Suite"}) {
    PluginInHost plugin(HostWithFaults().withNullSlot(suite, 0));
    const embedded::StepReport start = plugin->start();
    EXPECT_EQ(start.code("Startup"), kMissing) << suite;
    EXPECT_THAT(start.alerts, IsEmpty()) << suite;
    EXPECT_EQ(plugin->globals(), nullptr) << suite;
    EXPECT_EQ(plugin.host().acquiredSuites() + plugin.host().accessCount(), 0U) << suite;
  }
}

TEST(MissingVersionFunction, CountsAsVersionZero) {
  for (const auto& [slot, line] : {std::pair{11U, "AI Major version 0 , Minor version 2\n"},
                                   std::pair{12U, "AI Major version 16 , Minor version 0\n"}}) {
    PluginInHost plugin(HostWithFaults().ofVersion(16, 2).withNullSlot("AI Runtime Suite", slot));
    EXPECT_EQ(plugin->start().output.standardOutput, line);
  }
}

TEST(MissingReleaseOfTheModule, IsTheAnswerToTheShutdownWhichStillReleasesTheSuites) {
  PluginInHost plugin(HostWithFaults().withNullSlot("SP Access Suite", 1));
  EXPECT_TRUE(plugin->start().allAnsweredZero());
  EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), kMissing);
  EXPECT_THAT(plugin.host().alerts(), IsEmpty());
  EXPECT_EQ(plugin->globals(), nullptr);
  EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
}

TEST(MissingAlert, ShowsNothingAndKeepsTheAnswer) {
  PluginInHost plugin(HostWithFaults()
                          .withNullSlot("AI User Suite", 43)
                          .answering("AI Document Suite", "SetDocumentSetup", 0, fourCC("TEST")));
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), fourCC("TEST"));
  EXPECT_THAT(opening.alerts, IsEmpty());
  EXPECT_EQ(plugin.host().liveStrings(), 0U);
}

}  // namespace
