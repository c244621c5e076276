#include <gmock/gmock.h>

#include "hostapi/messages.h"
#include "tests/plugin/plugin_in_host.h"

namespace {

using namespace plugintest;
using testing::IsEmpty;

struct Message {
  const char* caller;
  const char* selector;
};

// Every message of the host's protocol except those that open a file, start or end the plug-in.
constexpr Message kMessages[] = {
    {"SP Access", "Reload"},
    {"SP Access", "Unload"},
    {"SP Interface", "About"},
    {"SP Cache", "Plug-in Purge"},
    {"SP Properties", "Acquire"},
    {"SP Properties", "Release"},
    {"AI Notifier", "AI Notify"},
    {"Action Manager", "Do Action"},
    {"AI Menu", "AI Go"},
    {"AI Menu", "AI Update"},
    {"AI Filter", "AI Get Parameters"},
    {"AI Filter", "AI Go"},
    {"AI Plugin Group", "AI Notify Edits"},
    {"AI Plugin Group", "AI Update"},
    {"AI File Format", "AI Get Parameters"},
    {"AI File Format", "AI Check"},
    {"AI File Format", "AI Update AI140"},
    {"AI File Format", "Do Action"},
    {"AI Tool", "AI Edit Options"},
    {"AI Tool", "AI Track Cursor"},
    {"AI Tool", "AI Mouse Down"},
    {"AI Tool", "AI Mouse Drag"},
    {"AI Tool", "AI Mouse Up"},
    {"AI Tool", "AI Select"},
    {"AI Tool", "AI Deselect"},
    {"AI Tool", "AI Reselect"},
    {"AI Tool", "AI Decrease Diameter"},
    {"AI Tool", "AI Increase Diameter"},
    {"AI Live Effect", "AI Live Effect Edit Parameters"},
    {"AI Live Effect", "AI Live Effect Go Live"},
    {"AI Live Effect", "AI Live Effect Interpolate Parameters"},
    {"AI Live Effect", "AI Live Effect Input Type"},
    {"AI Live Effect", "AI Live Effect Scale Parameters"},
    {"AI Live Effect", "AI Live Effect Convert Color Space"},
    {"AI Live Effect", "AI Live Effect Adjust Colors"},
    {"AI Live Effect", "AI Live Effect Handle Merge"},
    {"AI Timer", "AI Go"},
    {"AI Clipboard", "AI Go"},
    {"AI Clipboard", "AI Can Copy"},
    {"AI Clipboard", "AI Clone"},
    {"AI Clipboard", "AI Dispose"},
    {"Workspace Manager", "Write Workspace"},
    {"AI File Format", "AI Set Parameters"},
    {"nobody", "nothing"},
    {"", ""},
};

TEST(Dispatch, AnswersZeroToEveryMessageThatItDoesNotHandleAndShowsNoAlert) {
  PluginInHost plugin;
  plugin->start();
  const std::size_t callsBefore = plugin.host().journal().size();
  for (const Message& message : kMessages) {
    EXPECT_EQ(plugin->send(message.caller, message.selector), 0)
        << message.caller << "/" << message.selector;
  }
  EXPECT_THAT(plugin.host().alerts(), IsEmpty());
  EXPECT_EQ(plugin.host().journal().size(), callsBefore);
}

TEST(Dispatch, AnswersZeroToAMessageWithoutACallerASelectorOrARecord) {
  PluginInHost plugin;
  plugin->start();
  const std::size_t callsBefore = plugin.host().journal().size();
  hostapi::SPInterfaceMessage record{};
  record.d = {hostapi::kSPCheck, plugin.host().plugin(), plugin->globals(), plugin.host().basic()};
  EXPECT_EQ(PluginMain(nullptr, "AI Go", &record), 0);
  EXPECT_EQ(PluginMain("AI Menu", nullptr, &record), 0);
  EXPECT_EQ(PluginMain("SP Interface", "Startup", nullptr), 0);
  EXPECT_EQ(plugin.host().journal().size(), callsBefore);
}

TEST(Dispatch, AnswersZeroWhereTheHostStillNamesAPluginThatHasEnded) {
  PluginInHost plugin;
  plugin->start();
  hostapi::SPInterfaceMessage record{};
  record.d = {hostapi::kSPCheck, plugin.host().plugin(), plugin->globals(), plugin.host().basic()};
  EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), 0);
  const std::size_t callsBefore = plugin.host().journal().size();
  EXPECT_EQ(PluginMain("AI File Format", "AI Go", &record), 0);
  EXPECT_EQ(PluginMain("SP Interface", "Shutdown", &record), 0);
  EXPECT_EQ(plugin.host().journal().size(), callsBefore);
}

TEST(Dispatch, AnswersZeroAndTouchesNothingBeforeStartup) {
  PluginInHost plugin;
  for (const Message& message : kMessages) {
    EXPECT_EQ(plugin->send(message.caller, message.selector), 0);
  }
  EXPECT_EQ(plugin->send("AI File Format", "AI Go"), 0);
  EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), 0);
  EXPECT_EQ(plugin->globals(), nullptr);
  EXPECT_EQ(plugin.host().journal().size(), 0U);
}

TEST(Dispatch, AnswersZeroAndTouchesNothingAfterShutdown) {
  PluginInHost plugin;
  plugin->start();
  EXPECT_NE(plugin->globals(), nullptr);
  EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), 0);
  EXPECT_EQ(plugin->globals(), nullptr);
  const std::size_t callsBefore = plugin.host().journal().size();
  for (const Message& message : kMessages) {
    EXPECT_EQ(plugin->send(message.caller, message.selector), 0);
  }
  EXPECT_EQ(plugin->send("AI File Format", "AI Go"), 0);
  EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), 0);
  EXPECT_EQ(plugin.host().journal().size(), callsBefore);
}

TEST(Dispatch, ComparesCallerAndSelectorByteForByte) {
  PluginInHost plugin;
  EXPECT_EQ(plugin->send("SP interface", "Startup"), 0);
  EXPECT_EQ(plugin->send("SP Interface", "startup"), 0);
  EXPECT_EQ(plugin->globals(), nullptr);
}

TEST(Dispatch, ShutsDownOnlyForTheInterfaceCaller) {
  PluginInHost plugin;
  plugin->start();
  for (const char* caller : {"SP Access", "AI Menu", "AI File Format", "SP interface", ""})
    EXPECT_EQ(plugin->send(caller, "Shutdown"), 0) << caller;
  EXPECT_NE(plugin->globals(), nullptr);
  EXPECT_EQ(plugin.host().acquiredSuites(), 104U);
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), 0);
}

TEST(Dispatch, StartsUpOnlyForTheInterfaceCaller) {
  PluginInHost plugin;
  for (const char* caller : {"SP Access", "AI Menu", ""})
    EXPECT_EQ(plugin->send(caller, "Startup"), 0) << caller;
  EXPECT_EQ(plugin->globals(), nullptr);
}

TEST(Dispatch, CanBeStartedAgainAfterAShutdown) {
  for (int round = 0; round < 3; ++round) {
    PluginInHost plugin;
    EXPECT_EQ(plugin->send("SP Interface", "Startup"), 0);
    EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), 0);
    EXPECT_EQ(plugin.host().acquiredSuites(), 0U);
    EXPECT_EQ(plugin.host().accessCount(), 0U);
  }
}

}  // namespace
