#include "embedded/module.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

namespace {

using embedded::Module;
using testing::HasSubstr;
using testing::StartsWith;

TEST(Module, FindsItsEntryByName) {
  std::string error;
  const auto module = Module::load(TINY_MODULE, error);
  ASSERT_NE(module, nullptr) << error;
  EXPECT_EQ(module->entry()("caller", "selector", nullptr), 1);
  EXPECT_EQ(module->entry()("caller", "selector", nullptr), 2);
  EXPECT_EQ(module->path(), std::filesystem::absolute(TINY_MODULE).string());
  EXPECT_EQ(module->name(), "tiny_module");
  EXPECT_EQ(error, "");
}

TEST(Module, StartsAfreshAtEachLoad) {
  for (int i = 0; i < 3; ++i) {
    std::string error;
    const auto module = Module::load(TINY_MODULE, error);
    ASSERT_NE(module, nullptr) << error;
    EXPECT_EQ(module->entry()("caller", "selector", nullptr), 1);
  }
}

TEST(Module, IsGoneFromMemoryAfterUnloading) {
  std::string error;
  EXPECT_FALSE(Module::isResident(TINY_MODULE));
  const auto module = Module::load(TINY_MODULE, error);
  ASSERT_NE(module, nullptr) << error;
  EXPECT_TRUE(Module::isResident(TINY_MODULE));
  EXPECT_TRUE(module->unload());
  EXPECT_EQ(module->entry(), nullptr);
  EXPECT_FALSE(Module::isResident(TINY_MODULE));
  EXPECT_TRUE(module->unload());
}

TEST(Module, ThatIsMissingIsReportedWithItsPathAndTheCause) {
  std::string error;
  EXPECT_EQ(Module::load("/not/there/plugin.aip", error), nullptr);
  EXPECT_THAT(error, StartsWith("/not/there/plugin.aip: the plug-in module cannot be loaded: "));
#ifndef _WIN32
  EXPECT_THAT(error, HasSubstr("No such file or directory"));
  EXPECT_EQ(error.find("/not/there/plugin.aip", 1), std::string::npos) << "the path appears once";
#endif
}

TEST(Module, IsLookedForInTheCurrentFolderWhenItsPathHasNone) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(std::filesystem::path(TINY_MODULE).parent_path());
  std::string error;
  const auto module = Module::load(std::filesystem::path(TINY_MODULE).filename().string(), error);
  std::filesystem::current_path(before);
  ASSERT_NE(module, nullptr) << error;
  EXPECT_TRUE(std::filesystem::equivalent(module->path(), TINY_MODULE));
}

TEST(Module, WithoutPluginMainIsReported) {
  std::string error;
  EXPECT_EQ(Module::load(ENTRYLESS_MODULE, error), nullptr);
  EXPECT_THAT(error, HasSubstr("entryless_module.aip: the plug-in module has no PluginMain"));
  EXPECT_FALSE(Module::isResident(ENTRYLESS_MODULE));
}

TEST(Module, ThatIsNotAModuleIsReported) {
  const auto file = std::filesystem::temp_directory_path() / "penwick-host-test-text.aip";
  std::ofstream(file) << "this is text";
  std::string error;
  EXPECT_EQ(Module::load(file.string(), error), nullptr);
  EXPECT_THAT(error, StartsWith(file.string() + ": the plug-in module cannot be loaded: "));
  std::filesystem::remove(file);
}

hostapi::SPErr answerSeven(const char*, const char*, void*) {
  return 7;
}

TEST(Module, CanBeAFunctionOfThisProgram) {
  const auto module = Module::ofEntry(&answerSeven, "my plug-in");
  EXPECT_EQ(module->entry()("", "", nullptr), 7);
  EXPECT_EQ(module->name(), "my plug-in");
  EXPECT_EQ(module->path(), "");
  EXPECT_TRUE(module->unload());
  EXPECT_EQ(module->entry(), nullptr);
}

}  // namespace
