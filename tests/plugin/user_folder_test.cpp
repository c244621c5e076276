// The style library in the folder of the user's data, which this program chooses.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <optional>
#include <string>

#include "hostapi/ai_file_path_suite.h"
#include "platform/folders.h"
#include "tests/plugin/changed_suite.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

std::optional<std::wstring> userFolder;

}  // namespace

// Replaces the system's.
std::optional<std::wstring> platform::localAppDataFolder() {
  return userFolder;
}

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::IsEmpty;

// L"/some/folder \u20AC" in the platform's encoding.
#ifdef _WIN32
constexpr const char* kFolderAsPlatformText = "/some/folder \x80";
#else
constexpr const char* kFolderAsPlatformText = "/some/folder \xE2\x82\xAC";
#endif

std::u32string pathAsked;

// The path of the library that an opening imports, and what it prints for the debugger.
std::string openAndKeepThePath(PluginInHost& plugin) {
  plugin->start();
  ChangedSuite<hostapi::AIFilePathSuite> paths;
  static const auto hostsOwn = paths.hostsOwn().Set;
  static const embedded::Host* host = nullptr;
  host = &plugin.host();
  paths->Set = [](const hostapi::UnicodeStringBody* text, hostapi::AIBool8 expand,
                  hostapi::FilePathBody* path) {
    pathAsked = test::characters(*host, *text);
    return hostsOwn(text, expand, path);
  };
  return plugin.debuggerTextOfOpening(oneStroke());
}

TEST(UserFolder, IsPrintedForTheDebuggerAndBeginsThePathOfTheLibrary) {
  userFolder = L"/some/folder \u20AC";
  PluginInHost plugin;
  EXPECT_EQ(openAndKeepThePath(plugin), kFolderAsPlatformText);
  EXPECT_EQ(pathAsked, U"/some/folder \u20AC\\Penwick\\brush_pressure.ai");
}

TEST(UserFolder, ThatIsUnknownIsEmptyAndNotPrintedForTheDebugger) {
  userFolder.reset();
  PluginInHost plugin;
  EXPECT_EQ(openAndKeepThePath(plugin), "");
  EXPECT_EQ(pathAsked, U"\\Penwick\\brush_pressure.ai");
}

class LibraryOfTheUser : public testing::Test {
 protected:
  // A library with the style Mine only.
  LibraryOfTheUser() {
    std::filesystem::create_directory(folder_ / "Penwick");
    std::ofstream(folder_.path() / "Penwick" / "brush_pressure.ai")
        << "%!PS-Adobe-3.0\n%AI9_BeginArtStyles\n/KnownStyle : (Mine) /Name , ;\n"
           "%AI9_EndArtStyles\n%AI9_BeginArtStyleList\n(Mine)\n%AI9_EndArtStyleList\n";
    userFolder = folder_.path().wstring();
  }

  static embedded::Opening open(const embedded::Options& options) {
    PluginInHost plugin(options);
    plugin->start();
    return plugin.open(oneStroke());
  }

 private:
  pentest::TemporaryFolder folder_;
};

TEST_F(LibraryOfTheUser, WithoutTheStyleEndsTheOpeningWithTheHostsCode) {
  const embedded::Opening opening = open({});
  EXPECT_EQ(opening.code("AI Go"), fourCC("NAM?"));
  EXPECT_FALSE(opening.builderRan);
}

TEST_F(LibraryOfTheUser, WithoutTheStyleAndWithoutAnErrorLeavesTheArtUnstyled) {
  const embedded::Opening opening =
      open(HostWithFaults().answeringMissingStyles(embedded::MissingStyle::nullStyle));
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_EQ(pathAt(opening.document, 0, 0).style, std::nullopt);
  EXPECT_THAT(opening.misuse, IsEmpty());
}

}  // namespace
