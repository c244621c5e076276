#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr hostapi::AIErr kCode = fourCC("TEST");

// The suites in the journal's lines for one function of the basic suite, as "name version".
std::vector<std::string> suitesNamedBy(const embedded::Host& host, const std::string& function) {
  std::vector<std::string> names;
  const std::string text = host.journal().jsonLines();
  const std::string mark = "\"function\":\"" + function + "\",\"arguments\":{\"name\":\"";
  for (std::size_t at = text.find(mark); at != text.npos; at = text.find(mark, at + 1)) {
    const std::size_t name = at + mark.size();
    const std::size_t version = text.find("\"version\":", name) + 10;
    names.push_back(text.substr(name, text.find('"', name) - name) + " " +
                    text.substr(version, text.find_first_of(",}", version) - version));
  }
  return names;
}

const std::vector<std::string> kNamedSuites = {
    "SP Access Suite 3",       "SP Plug-ins Suite 4",       "AI Notifier Suite 3",
    "AI Context Suite 6",      "AI User Suite 10",          "AI File Path Suite 3",
    "AI Folders Suite 4",      "AI Unicode String Suite 7", "SP Blocks Suite 2",
    "AI File Format Suite 12", "AI Document Suite 13",      "AI Text Frame Suite 3",
    "AI Art Suite 16",         "AI Path Suite 10",          "AI Matching Art Suite 6",
    "AI MdMemory Suite 2",     "AI Application Suite 2",    "AI Document List Suite 7",
    "AI Path Style Suite 12",  "AI Layer Suite 12",         "AI Real Bezier Suite 3",
    "AI TabletData Suite 2",   "AI Art Style Suite 6",      "AI Shape Construction Suite 5",
    "AI Runtime Suite 11",     "AI Art Set Suite 7",
};

TEST(Startup, AcquiresTheFramesSuitesThenItsOwnThenTheTextEngines) {
  PluginInHost plugin;
  EXPECT_TRUE(plugin->start().allAnsweredZero());
  const std::vector<std::string> names = suitesNamedBy(plugin.host(), "AcquireSuite");
  ASSERT_EQ(names.size(), 26U + 78U);
  EXPECT_EQ(std::vector(names.begin(), names.begin() + 26), kNamedSuites);
  EXPECT_EQ(names[26], "ATE ApplicationPaint Suite 1");
  EXPECT_EQ(names[36], "ATE TextFrame Suite 101");
  EXPECT_EQ(names[42], "ATE DocumentTextResources Suite 101");
  EXPECT_EQ(names.back(), "ATE WordsIterator Suite 1");
}

TEST(Startup, KeepsItsSuitesAfterTheHolderIsGoneAndReleasesThemInOrderAtShutdown) {
  PluginInHost plugin;
  plugin->start();
  EXPECT_EQ(plugin.host().acquiredSuites(), 104U);
  EXPECT_THAT(suitesNamedBy(plugin.host(), "ReleaseSuite"), IsEmpty());
  plugin->send("SP Interface", "Shutdown");
  EXPECT_EQ(suitesNamedBy(plugin.host(), "ReleaseSuite"),
            suitesNamedBy(plugin.host(), "AcquireSuite"));
  EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
}

TEST(Startup, KeepsTheModuleInMemoryUntilShutdown) {
  PluginInHost plugin;
  plugin->start();
  EXPECT_EQ(plugin.host().accessCount(), 1U);
  plugin->send("SP Interface", "Shutdown");
  EXPECT_EQ(plugin.host().accessCount(), 0U);
}

TEST(Startup, ChangesNothingWhereThePluginRunsAlready) {
  PluginInHost plugin;
  plugin->start();
  void* const running = plugin->globals();
  const std::size_t callsBefore = plugin.host().journal().size();
  EXPECT_EQ(plugin->send("SP Interface", "Startup"), 0);
  EXPECT_EQ(plugin->globals(), running);
  EXPECT_EQ(plugin.host().journal().size(), callsBefore);
  EXPECT_EQ(plugin.host().acquiredSuites(), 104U);
  EXPECT_EQ(plugin.host().accessCount(), 1U);
  EXPECT_THAT(plugin->end().misuse, IsEmpty());
  EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
  EXPECT_EQ(plugin.host().accessCount(), 0U);
}

TEST(Startup, RegistersTheFormatForOpeningOnly) {
  PluginInHost plugin;
  plugin->start();
  ASSERT_EQ(plugin.host().formats().size(), 1U);
  const embedded::Host::Format& format = plugin.host().formats()[0];
  EXPECT_EQ(format.name, "  Morva Penwick vector files");
  EXPECT_EQ(format.title, " Morva Penwick vector files");
  EXPECT_EQ(format.extensions, "pnx,kvo");
  EXPECT_EQ(format.options, 1);
}

TEST(Startup, SubscribesToApplicationStartedUnderTheNameThatTheHostGives) {
  embedded::Options options;
  options.pluginName = "somebody";
  PluginInHost plugin(options);
  plugin->start();
  ASSERT_EQ(plugin.host().notifiers().size(), 1U);
  EXPECT_EQ(plugin.host().notifiers()[0].name, "somebody App Started Notifier");
  EXPECT_EQ(plugin.host().notifiers()[0].type, "AI Application Started Notifier");
}

TEST(Startup, KeepsItsOwnNameWhenTheHostDoesNotGiveOne) {
  const std::vector<embedded::Options> hosts = {
      failing("SP Plug-ins Suite", "GetPluginName", kCode),
      failing("SP Plug-ins Suite", "GetPluginName", 0),  // also gives null
      HostWithFaults().withNullSlot("SP Plug-ins Suite", 22),
      HostWithFaults().lacking("SP Plug-ins Suite"),
  };
  for (embedded::Options host : hosts) {
    host.pluginName = "somebody";
    PluginInHost plugin(host);
    EXPECT_TRUE(plugin->start().allAnsweredZero());
    ASSERT_EQ(plugin.host().notifiers().size(), 1U);
    EXPECT_EQ(plugin.host().notifiers()[0].name, "kvoexportfile App Started Notifier");
  }
}

TEST(Startup, IgnoresANameThatComesWithAnErrorCode) {
  PluginInHost plugin(HostWithFaults()
                          .answering("SP Plug-ins Suite", "GetPluginName", 1, kCode)
                          .fillingOutsOfFailedCalls());
  EXPECT_TRUE(plugin->start().allAnsweredZero());
  ASSERT_EQ(plugin.host().notifiers().size(), 1U);
  EXPECT_EQ(plugin.host().notifiers()[0].name, "kvoexportfile App Started Notifier");
}

TEST(Startup, TruncatesALongName) {
  embedded::Options options;
  options.pluginName = std::string(400, 'n');
  PluginInHost plugin(options);
  plugin->start();
  ASSERT_EQ(plugin.host().notifiers().size(), 1U);
  EXPECT_EQ(plugin.host().notifiers()[0].name, std::string(255, 'n') + " App Started Notifier");
}

TEST(Startup, PrintsTheHostsVersion) {
  PluginInHost plugin;
  EXPECT_EQ(plugin->start().output.standardOutput, "AI Major version 16 , Minor version 0\n");
}

TEST(Startup, PrintsTheMinorVersionFromTheSecondCall) {
  PluginInHost plugin(failing("AI Runtime Suite", "GetAppMinorVersion", 7, 2));
  EXPECT_EQ(plugin->start().output.standardOutput, "AI Major version 16 , Minor version 7\n");
}

TEST(Startup, PrintsTheVersionBeforeItRegistersTheFormat) {
  PluginInHost plugin(failing("AI File Format Suite", "AddFileFormat", kCode));
  const embedded::StepReport start = plugin->start();
  EXPECT_EQ(start.code("Startup"), kCode);
  EXPECT_EQ(start.output.standardOutput, "AI Major version 16 , Minor version 0\n");
}

// The record of the current start-up, and its contents when the first suite is requested.
hostapi::SPInterfaceMessage startup{};
void* globalsAtFirstSuite = nullptr;

TEST(Startup, StoresTheObjectBeforeItDoesAnythingElse) {
  const embedded::Host host;
  hostapi::SPBasicSuite basic = *host.basic();
  basic.AcquireSuite = [](const char*, std::int32_t, const void**) {
    if (globalsAtFirstSuite == nullptr) globalsAtFirstSuite = startup.d.globals;
    return fourCC("S!Fd");
  };
  startup.d = {hostapi::kSPCheck, host.plugin(), nullptr, &basic};
  globalsAtFirstSuite = nullptr;
  EXPECT_EQ(PluginMain("SP Interface", "Startup", &startup), fourCC("S!Fd"));
  EXPECT_NE(globalsAtFirstSuite, nullptr);
  EXPECT_EQ(startup.d.globals, nullptr) << "the failed start-up deleted it";
}

struct FailingCall {
  const char* suite;
  const char* function;
};

class FailingStartup : public testing::TestWithParam<FailingCall> {};

TEST_P(FailingStartup, AnswersWithTheCodeAndReleasesEverything) {
  PluginInHost plugin(failing(GetParam().suite, GetParam().function, kCode));
  const embedded::StepReport report = plugin->start();
  EXPECT_EQ(report.code("Startup"), kCode);
  EXPECT_THAT(report.alerts, ElementsAre("TEST"));
  EXPECT_EQ(plugin->globals(), nullptr);
  EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
  EXPECT_EQ(plugin.host().accessCount(), 0U);
  EXPECT_EQ(plugin.host().liveStrings(), 0U);
  EXPECT_THAT(report.misuse, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, FailingStartup,
                         testing::Values(FailingCall{"AI Notifier Suite", "AddNotifier"},
                                         FailingCall{"SP Access Suite", "AcquirePlugin"},
                                         FailingCall{"AI File Format Suite", "AddFileFormat"}),
                         [](const auto& row) { return std::string(row.param.function); });

TEST(Startup, TreatsUnhandledMessageAsSuccess) {
  PluginInHost plugin(failing("AI File Format Suite", "AddFileFormat", fourCC("!MSG")));
  EXPECT_EQ(plugin->start().code("Startup"), 0);
  EXPECT_NE(plugin->globals(), nullptr);
}

TEST(Startup, ShowsNoAlertForAMissingSuite) {
  embedded::Options options;
  options.lackingSuites = {"AI File Format Suite"};
  PluginInHost plugin(options);
  const embedded::StepReport report = plugin->start();
  EXPECT_EQ(report.code("Startup"), fourCC("S!Fd"));
  EXPECT_THAT(report.alerts, IsEmpty());
}

// What start-up answers when the k-th suite that it requests is refused: only three are needed.
TEST(Startup, NeedsOnlyTheSuitesThatItCallsAndReleasesWhatItGot) {
  const std::vector<std::string> needed = {"SP Access Suite", "AI Notifier Suite",
                                           "AI File Format Suite"};
  for (std::size_t k = 1; k <= 104; ++k) {
    PluginInHost plugin(failing("SP Basic Suite", "AcquireSuite", fourCC("S!Fd"), k));
    const embedded::StepReport report = plugin->start();
    const std::string name = k <= kNamedSuites.size()
                                 ? kNamedSuites[k - 1].substr(0, kNamedSuites[k - 1].rfind(' '))
                                 : "";
    const bool isNeeded = std::find(needed.begin(), needed.end(), name) != needed.end();
    EXPECT_EQ(report.code("Startup"), isNeeded ? fourCC("S!Fd") : 0) << k << " " << name;
    EXPECT_EQ(plugin.host().acquiredSuites(), isNeeded ? 0U : 103U) << k;
    EXPECT_THAT(plugin->end().misuse, IsEmpty()) << k;
    EXPECT_EQ(plugin.host().acquiredSuites(), 0U) << k;
  }
}

TEST(Startup, AnswersThatASuiteIsMissingWhenThereIsNone) {
  PluginInHost plugin(failing("SP Basic Suite", "AcquireSuite", fourCC("S!Fd"), 0));
  EXPECT_EQ(plugin->start().code("Startup"), fourCC("S!Fd"));
  EXPECT_THAT(plugin->end().misuse, IsEmpty());
}

TEST(Shutdown, AnswersWithTheCodeOfAFailedReleaseOfTheModuleAndReleasesTheSuites) {
  PluginInHost plugin(failing("SP Access Suite", "ReleasePlugin", kCode));
  plugin->start();
  EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), kCode);
  EXPECT_THAT(plugin.host().alerts(), ElementsAre("TEST"));
  EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
  EXPECT_EQ(plugin->globals(), nullptr);
}

TEST(Shutdown, IgnoresASuiteThatCannotBeReleasedAndReleasesTheOthers) {
  for (std::size_t position = 1; position <= 104; ++position) {
    PluginInHost plugin(failing("SP Basic Suite", "ReleaseSuite", kCode, position));
    plugin->start();
    EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), 0) << position;
    EXPECT_THAT(plugin.host().alerts(), IsEmpty()) << position;
    EXPECT_EQ(plugin.calls("SP Basic Suite", "ReleaseSuite"), 104U) << position;
    EXPECT_EQ(plugin.host().acquiredSuites(), 1U) << position;
    EXPECT_EQ(plugin.host().accessCount(), 0U) << position;
    EXPECT_EQ(plugin->globals(), nullptr) << position;
  }
}

}  // namespace
