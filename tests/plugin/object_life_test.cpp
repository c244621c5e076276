// The objects that start-up creates, and what becomes of them.
#include <algorithm>
#include <gmock/gmock.h>
#include <string_view>

#include "hostapi/ai_file_format_suite.h"
#include "tests/plugin/allocation.h"
#include "tests/plugin/plugin_in_host.h"

namespace {

using namespace plugintest;

TEST(PluginObject, IsDeletedAtShutdown) {
  PluginInHost plugin;
  plugin->start();
  ASSERT_NE(plugin->globals(), nullptr);
  allocation::watch(plugin->globals());
  EXPECT_EQ(plugin->send("SP Access", "Reload"), 0);
  EXPECT_FALSE(allocation::isFreed());
  EXPECT_EQ(plugin->send("SP Interface", "Shutdown"), 0);
  EXPECT_TRUE(allocation::isFreed());
}

// The record of the current start-up; its object is watched from the first suite on.
hostapi::SPInterfaceMessage startup{};
const hostapi::SPBasicSuite* hostsOwn = nullptr;

hostapi::SPErr watchAndRefuse(const char*, std::int32_t, const void**) {
  allocation::watch(startup.d.globals);
  return hostapi::kSuiteNotFoundErr;
}

hostapi::SPErr start(const embedded::Host& host, hostapi::SPBasicSuite& basic) {
  startup.d = {hostapi::kSPCheck, host.plugin(), nullptr, &basic};
  return PluginMain("SP Interface", "Startup", &startup);
}

TEST(PluginObject, IsDeletedAfterAStartupThatFailed) {
  const embedded::Host host;
  hostapi::SPBasicSuite basic = *host.basic();
  basic.AcquireSuite = watchAndRefuse;
  EXPECT_EQ(start(host, basic), fourCC("S!Fd"));
  EXPECT_TRUE(allocation::isFreed());
}

std::string title;

hostapi::AIErr readTitle(hostapi::SPPluginRef, const char*,
                         const hostapi::PlatformAddFileFormatData* data, std::int32_t,
                         hostapi::AIFileFormatHandle*, std::int32_t) {
  title.assign(reinterpret_cast<const char*>(data->title), allocation::sizeOf(data->title));
  return fourCC("TEST");
}

hostapi::SPErr acquireWithOwnFormats(const char* name, std::int32_t version, const void** suite) {
  static hostapi::AIFileFormatSuite formats{};
  formats.AddFileFormat = readTitle;
  const hostapi::SPErr code = hostsOwn->AcquireSuite(name, version, suite);
  if (std::string_view(name) == hostapi::AIFileFormatSuite::kId.name) *suite = &formats;
  return code;
}

TEST(FormatTitle, IsInAZeroFilledBufferOf1024Bytes) {
  const embedded::Host host;
  hostsOwn = host.basic();
  hostapi::SPBasicSuite basic = *hostsOwn;
  basic.AcquireSuite = acquireWithOwnFormats;
  EXPECT_EQ(start(host, basic), fourCC("TEST"));
  std::string wanted = " Morva Penwick vector files";
  wanted.resize(1024);
  EXPECT_EQ(title, wanted);
}

}  // namespace
