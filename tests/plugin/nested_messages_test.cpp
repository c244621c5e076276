// Messages that arrive while a file is being opened: the host opens a document to import its
// styles.
#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <utility>
#include <vector>

#include "plugin/kvoexportfileplugin.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::IsEmpty;

constexpr char kPathStyle[] = "AI Path Style Suite";

// A plug-in that receives a message, once, while the first file imports its styles.
class NestedMessage : public testing::Test {
 protected:
  void SetUp() override {
    plugin->start();
    oneStroke().write(plugin.path("outer.pnx"));
  }

  embedded::Opening openOuter() { return plugin->open(plugin.path("outer.pnx")); }

  std::function<void()> tell;
  PluginInHost plugin{HostWithFaults().whileImporting([this] {
    if (const auto once = std::exchange(tell, nullptr)) once();
  })};
};

TEST_F(NestedMessage, ToOpenAFileIsCancelledBeforeAnythingIsChanged) {
  const std::string inner = plugin.writeText("inner.kvo", kEmptyInkLayer);
  std::optional<hostapi::SPErr> answer;
  std::size_t calls = 1;
  std::uint32_t kind = Orvo::kInkML;
  tell = [&] {
    const std::size_t before = plugin.host().journal().size();
    answer = plugin->sendFileFormat("AI Go", inner);
    calls = plugin.host().journal().size() - before;
    kind = Orvo::fileKind;
  };
  const embedded::Opening opening = openOuter();
  EXPECT_EQ(answer, fourCC("STOP"));
  EXPECT_EQ(calls, 0U);
  EXPECT_EQ(kind, Orvo::kPenFile);
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_THAT(opening.alerts, IsEmpty());
  EXPECT_THAT(opening.misuse, IsEmpty());
  EXPECT_EQ(art::countPaths(opening.document), 1U);
  EXPECT_TRUE(pathAt(opening.document, 0, 0).style);
  EXPECT_EQ(plugin.calls(kPathStyle, "ImportStyles"), 1U);
}

TEST_F(NestedMessage, ToOpenAFileIsCancelledWhateverItsOptions) {
  std::optional<hostapi::SPErr> answer;
  tell = [&] { answer = plugin->sendFileFormat("AI Go", plugin.path("outer.pnx"), 0); };
  EXPECT_EQ(openOuter().code("AI Go"), 0);
  EXPECT_EQ(answer, fourCC("STOP"));
}

TEST_F(NestedMessage, OfAnotherKindIsAnsweredAsUsual) {
  std::vector<hostapi::SPErr> answers;
  tell = [&] {
    answers = {plugin->sendFileFormat("AI Check", plugin.path("outer.pnx")),
               plugin->sendFileFormat("AI Get Parameters", plugin.path("outer.pnx")),
               plugin->send("AI Notifier", "AI Notify"), plugin->send("AI Menu", "AI Go")};
  };
  EXPECT_EQ(openOuter().code("AI Go"), 0);
  EXPECT_THAT(answers, testing::ElementsAre(0, 0, 0, 0));
}

TEST_F(NestedMessage, ThatIsCancelledDoesNotKeepTheNextFilesFromOpening) {
  tell = [&] { plugin->sendFileFormat("AI Go", plugin.path("outer.pnx")); };
  for (int file = 0; file < 3; ++file)
    EXPECT_EQ(openOuter().code("AI Go"), 0);
  EXPECT_TRUE(plugin.open(oneStroke()).builderRan);
}

TEST(OpeningThatFails, DoesNotKeepTheNextFileFromOpening) {
  for (const auto& [suite, function] : {std::pair{"AI File Path Suite", "GetFullPath"},
                                        std::pair{"AI Document Suite", "SetDocumentSetup"},
                                        std::pair{"AI Path Suite", "SetPathSegments"}}) {
    PluginInHost plugin(failing(suite, function, fourCC("TEST")));
    plugin->start();
    EXPECT_NE(plugin.open(oneStroke()).code("AI Go"), 0) << function;
    EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), 0) << function;
  }
}

TEST_F(NestedMessage, ToOpenAFileIsCancelledForASecondObjectInTheProcessToo) {
  std::optional<hostapi::SPErr> answer;
  tell = [&] {
    kvoexportfileplugin second(plugin.host().plugin());
    hostapi::AIFileFormatMessage go{};
    answer = second.message("AI File Format", "AI Go", &go);
  };
  EXPECT_EQ(openOuter().code("AI Go"), 0);
  EXPECT_EQ(answer, fourCC("STOP"));
}

}  // namespace
