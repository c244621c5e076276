#include <gmock/gmock.h>

#include "plugin/plugin.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr hostapi::AIErr kCode = fourCC("TEST");

std::int64_t now = 1'000'000;

// Sets the plug-in's clock by hand.
class ErrorReport : public testing::Test {
 protected:
  void SetUp() override {
    now = 1'000'000;
    Plugin::clock = [] { return now; };
  }
  void TearDown() override { Plugin::clock = clock_; }

 private:
  std::int64_t (*clock_)() = Plugin::clock;
};

// A host whose page set-up always fails with a code.
embedded::Options refusing(hostapi::AIErr code) {
  return failing("AI Document Suite", "SetDocumentSetup", code, 0);
}

TEST_F(ErrorReport, ShowsTheFourCharactersOfACode) {
  PluginInHost plugin(refusing(kCode));
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), kCode);
  EXPECT_THAT(opening.alerts, ElementsAre("TEST"));
}

TEST_F(ErrorReport, ShowsASmallCodeAsANumber) {
  PluginInHost plugin(refusing(16384));
  plugin->start();
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("16384"));
}

TEST_F(ErrorReport, ShowsANegativeCodeAsANumber) {
  PluginInHost plugin(refusing(-108));
  plugin->start();
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("-108"));
}

TEST_F(ErrorReport, IsNotRepeatedWithinFiveSeconds) {
  PluginInHost plugin(refusing(kCode));
  plugin->start();
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST"));
  now += 4;
  EXPECT_THAT(plugin.open(oneStroke()).alerts, IsEmpty());
  now += 1;
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST"));
}

TEST_F(ErrorReport, CountsTheFiveSecondsFromTheLastAlertNotFromTheLastError) {
  PluginInHost plugin(refusing(kCode));
  plugin->start();
  plugin.open(oneStroke());
  now += 3;
  EXPECT_THAT(plugin.open(oneStroke()).alerts, IsEmpty());
  now += 3;
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST"));
}

TEST_F(ErrorReport, IsNotRepeatedWhenTheClockIsSetBack) {
  PluginInHost plugin(refusing(kCode));
  plugin->start();
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST"));
  now -= 86'400;
  EXPECT_THAT(plugin.open(oneStroke()).alerts, IsEmpty());
  now += 86'400 + 5;
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST"));
}

// The first and third of three openings fail with the same code, the second with one never shown.
TEST_F(ErrorReport, IsNotRepeatedAfterACodeThatIsNotShown) {
  embedded::Options options = refusing(kCode);
  options.faults.push_back({.suite = "AI Document Suite",
                            .function = "SetDocumentRulerOrigin",
                            .call = 2,
                            .code = fourCC("STOP")});
  PluginInHost plugin(options);
  plugin->start();
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST"));
  now += 3;
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), fourCC("STOP"));
  now += 1;
  EXPECT_THAT(plugin.open(oneStroke()).alerts, IsEmpty());
  now += 1;
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST")) << "five after the first";
}

TEST_F(ErrorReport, IsShownAtOnceForADifferentCode) {
  embedded::Options options = refusing(kCode);
  options.faults.push_back({.suite = "AI Document Suite",
                            .function = "SetDocumentRulerOrigin",
                            .call = 2,
                            .code = fourCC("ELSE")});
  PluginInHost plugin(options);
  plugin->start();
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST"));
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("ELSE"));
  EXPECT_THAT(plugin.open(oneStroke()).alerts, ElementsAre("TEST"));
}

TEST_F(ErrorReport, IsNeverShownForCodesThatControlTheHost) {
  const hostapi::AIErr never[] = {
      fourCC("FMT?"),
      fourCC("RFSE"),
      fourCC("AFTR"),
      fourCC("VALD"),
      fourCC("MOOT"),
      fourCC("TRSH"),
      fourCC("CHEK"),
      fourCC("CHIT"),
      fourCC("TLTK"),
      fourCC("pFls"),
      fourCC("S!Fd"),
      fourCC("!Acq"),
      fourCC("dsRP"),
      fourCC("skpE"),
      fourCC("DONE"),
      fourCC("STOP"),
      361,
  };
  for (const hostapi::AIErr code : never) {
    PluginInHost plugin(refusing(code));
    plugin->start();
    const embedded::Opening opening = plugin.open(oneStroke());
    EXPECT_EQ(opening.code("AI Go"), code);
    EXPECT_THAT(opening.alerts, IsEmpty()) << hostapi::codeText(code);
  }
}

TEST_F(ErrorReport, AcquiresTheUserSuiteOnlyForTheAlert) {
  PluginInHost plugin(refusing(kCode));
  plugin->start();
  const std::size_t held = plugin.host().acquiredSuites();
  const std::size_t acquisitions = plugin.calls("SP Basic Suite", "AcquireSuite");
  plugin.open(oneStroke());
  EXPECT_EQ(plugin.calls("SP Basic Suite", "AcquireSuite"), acquisitions + 1);
  EXPECT_EQ(plugin.host().acquiredSuites(), held);
  EXPECT_EQ(plugin.host().liveStrings(), 0U);
}

TEST_F(ErrorReport, ShowsNothingAndKeepsTheAnswerWhenTheHostHasNoAlerts) {
  embedded::Options options = refusing(kCode);
  options.lackingSuites = {"AI User Suite"};
  PluginInHost plugin(options);
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), kCode);
  EXPECT_THAT(opening.alerts, IsEmpty());
}

// A host whose page set-up always fails, and one other call.
embedded::Options refusingAlso(const char* suite, const char* function, std::size_t call) {
  return HostWithFaults()
      .answering("AI Document Suite", "SetDocumentSetup", 0, kCode)
      .answering(suite, function, call, fourCC("ELSE"));
}

// The alerts of an opening that ends with the code, and what it does not release.
struct End {
  std::vector<std::string> alerts;
  std::size_t suites = 104;  // the number that start-up asks for
  std::size_t strings = 0;
};

void expectEnd(const embedded::Options& options, const End& expected) {
  PluginInHost plugin(options);
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), kCode);
  EXPECT_EQ(opening.alerts, expected.alerts);
  EXPECT_EQ(plugin.host().acquiredSuites(), expected.suites);
  EXPECT_EQ(plugin.host().liveStrings(), expected.strings);
}

// The alert's suite is the first one requested after start-up.
TEST_F(ErrorReport, IsNotShownAndKeepsTheAnswerWhenItsSuiteIsRefused) {
  expectEnd(refusingAlso("SP Basic Suite", "AcquireSuite", 105), {});
}

// The opening makes four strings from text before it: "pnx", the library's file, and the names of
// the library's style and the drawing's.
TEST_F(ErrorReport, IsNotShownAndKeepsTheAnswerWhenItsTextCannotBeMade) {
  expectEnd(refusingAlso("AI Unicode String Suite", "Initialize", 5), {});
}

// Before the alert's text, the opening destroys the strings above, the full path, the extension and
// the library's folder.
TEST_F(ErrorReport, IsShownAndKeepsTheAnswerWhenItsTextCannotBeDestroyed) {
  expectEnd(refusingAlso("AI Unicode String Suite", "Destroy", 8),
            {.alerts = {"TEST"}, .strings = 1});
}

TEST_F(ErrorReport, IsShownAndKeepsTheAnswerWhenItsSuiteCannotBeReleased) {
  expectEnd(refusingAlso("SP Basic Suite", "ReleaseSuite", 1), {.alerts = {"TEST"}, .suites = 105});
}

TEST_F(ErrorReport, AnswersCantHappenForAnyOtherException) {
  PluginInHost plugin(failing("AI Path Suite", "SetPathSegments", kCode));
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), fourCC("CANT"));
  EXPECT_THAT(opening.alerts, ElementsAre("CANT"));
}

TEST_F(ErrorReport, TurnsUnhandledMessageIntoZero) {
  PluginInHost plugin(refusing(fourCC("!MSG")));
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_THAT(opening.alerts, IsEmpty());
}

}  // namespace
