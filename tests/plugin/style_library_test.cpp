// The library with the style of every path, and hosts that do not provide it.
#include <gmock/gmock.h>

#include "hostapi/ai_file_path_suite.h"
#include "tests/plugin/changed_suite.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kPathStyle[] = "AI Path Style Suite";
constexpr char kArtStyle[] = "AI Art Style Suite";

HostWithFaults withoutAnyLibrary() {
  return HostWithFaults().withoutLibrary().withLibraryAt("/nowhere/brush_pressure.ai");
}

TEST(StyleLibrary, ThatIsMissingEndsTheOpeningBeforeAStyleIsLookedUp) {
  PluginInHost plugin(withoutAnyLibrary());
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), fourCC("PARM"));
  EXPECT_THAT(opening.alerts, ElementsAre("PARM"));
  EXPECT_THAT(opening.misuse, IsEmpty());
  EXPECT_FALSE(opening.builderRan);
  EXPECT_EQ(plugin.calls(kPathStyle, "ImportStyles"), 1U);
  EXPECT_EQ(plugin.calls(kArtStyle, "GetArtStyleByNameFromDocument"), 0U);
  ASSERT_TRUE(opening.firstFailure);
  EXPECT_EQ(opening.firstFailure->function, "ImportStyles");
}

TEST(StyleLibrary, WithoutTheStyleEndsTheOpeningWithTheHostsCode) {
  PluginInHost plugin(failing(kArtStyle, "GetArtStyleByNameFromDocument", fourCC("NAM?")));
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), fourCC("NAM?"));
  EXPECT_THAT(opening.alerts, ElementsAre("NAM?"));
  EXPECT_FALSE(opening.builderRan);
}

// Opens a drawing of two layers that must come out whole, but without any style.
void expectArtWithoutStyles(const embedded::Options& options) {
  PluginInHost plugin(options);
  plugin->start();
  const embedded::Opening opening = plugin.open(twoLayers(2));
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_THAT(opening.alerts, IsEmpty());
  EXPECT_THAT(opening.misuse, IsEmpty());
  EXPECT_EQ(art::countPaths(opening.document), 4U);
  for (const std::size_t layer : {0U, 1U})
    EXPECT_EQ(pathAt(opening.document, layer, 0).style, std::nullopt);
  EXPECT_EQ(plugin.calls(kArtStyle, "SetArtStyle"), 0U);
}

TEST(StyleLibrary, WithoutTheStyleAndWithoutAnErrorLeavesTheArtUnstyled) {
  expectArtWithoutStyles(failing(kArtStyle, "GetArtStyleByNameFromDocument", 0));
}

TEST(StyleLibrary, WhoseStyleCannotBeNamedLeavesTheArtUnstyled) {
  const auto host = HostWithFaults().answering(kArtStyle, "AddNamedStyle", 1, fourCC("TEST"));
  expectArtWithoutStyles(host);
  expectArtWithoutStyles(HostWithFaults(host).fillingOutsOfFailedCalls());
}

TEST(StyleLibrary, WhoseNamedStyleIsNullLeavesTheArtUnstyled) {
  expectArtWithoutStyles(failing(kArtStyle, "AddNamedStyle", 0));
}

// Without a style to apply, the layers and their art are not even counted.
TEST(StyleLibrary, WithoutTheStyleSucceedsWhateverTheArtSetsAnswer) {
  expectArtWithoutStyles(HostWithFaults()
                             .answering(kArtStyle, "AddNamedStyle", 1, 0)
                             .answering("AI Layer Suite", "GetNthLayer", 0, fourCC("TEST"))
                             .answering("AI Art Set Suite", "CountArtSet", 0, fourCC("TEST")));
}

TEST(StyleLibrary, OfThePreviousFileIsNotUsedWhenTheImportFails) {
  PluginInHost plugin(failing(kPathStyle, "ImportStyles", fourCC("!Imp"), 2));
  plugin->start();
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), 0);
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), fourCC("PARM"));
}

// Opens a drawing whose path gets its style, and then one whose path must not.
void expectNoStyleInTheSecondDrawing(const embedded::Options& options) {
  PluginInHost plugin(options);
  plugin->start();
  EXPECT_TRUE(pathAt(plugin.open(oneStroke()).document, 0, 0).style);
  const embedded::Opening second = plugin.open(oneStroke());
  EXPECT_EQ(second.code("AI Go"), 0);
  EXPECT_THAT(second.misuse, IsEmpty());
  EXPECT_EQ(pathAt(second.document, 0, 0).style, std::nullopt);
}

TEST(StyleLibrary, StyleOfThePreviousFileIsNotUsedWhenTheLookUpGivesNone) {
  expectNoStyleInTheSecondDrawing(failing(kArtStyle, "GetArtStyleByNameFromDocument", 0, 2));
}

TEST(StyleLibrary, StyleOfThePreviousDrawingIsNotUsedWhenTheNewOneCannotBeNamed) {
  expectNoStyleInTheSecondDrawing(failing(kArtStyle, "AddNamedStyle", fourCC("TEST"), 2));
}

std::vector<int> expansions;

TEST(StyleLibrary, IsAPathWhoseShortNamesAreExpanded) {
  PluginInHost plugin;
  plugin->start();
  ChangedSuite<hostapi::AIFilePathSuite> paths;
  static const auto hostsOwn = paths.hostsOwn().Set;
  paths->Set = [](const hostapi::UnicodeStringBody* text, hostapi::AIBool8 expand,
                  hostapi::FilePathBody* path) {
    expansions.push_back(expand);
    return hostsOwn(text, expand, path);
  };
  expansions.clear();
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), 0);
  EXPECT_THAT(expansions, ElementsAre(1));
}

TEST(StyleLibrary, IsInTheUsersLocalApplicationDataFolder) {
  PluginInHost plugin;
  plugin->start();
#ifdef _WIN32
  const char* folder = "\\AppData\\Local";
#else
  const char* folder = "/.local/share";
#endif
  EXPECT_THAT(plugin.debuggerTextOfOpening(oneStroke()), HasSubstr(folder));
  EXPECT_THAT(plugin.host().journal().jsonLines(), HasSubstr("\"brush_pressure.ai\""));
}

}  // namespace
