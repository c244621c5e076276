#include <fstream>
#include <gmock/gmock.h>

#include "penfile/document_loader.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/pen/text_file.h"

namespace {

using namespace plugintest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kPathStyle[] = "AI Path Style Suite";
constexpr char kArtStyle[] = "AI Art Style Suite";

class ImportDriver : public testing::Test {
 protected:
  void SetUp() override { plugin->start(); }

  PluginInHost plugin;
};

TEST_F(ImportDriver, OpensPnxAndEliAsPenRecordings) {
  EXPECT_TRUE(plugin.open(oneStroke(), "drawing.pnx").builderRan);
  EXPECT_TRUE(plugin.open(oneStroke(), "drawing.eli").builderRan);
}

TEST_F(ImportDriver, SetsTheFileKindByTheExtensionExactly) {
  const std::pair<const char*, std::uint32_t> rows[] = {{"a.kvo", Orvo::kInkML},
                                                        {"a.pnx", Orvo::kPenFile},
                                                        {"a.inkml", Orvo::kInkML},
                                                        {"a.eli", Orvo::kPenFile}};
  for (const auto& [name, kind] : rows) {
    plugin.open(oneStroke(), name);
    EXPECT_EQ(Orvo::fileKind, kind) << name;
  }
}

TEST_F(ImportDriver, KeepsTheKindOfTheFileBeforeForAnyOtherExtension) {
  for (const char* name :
       {"a.PNX", "a.INKML", "a.Eli", "a", "a.pnx2", "a.kv", "a.pnx.txt", "pnx"}) {
    Orvo::fileKind = Orvo::kPenFile;
    EXPECT_TRUE(plugin.open(oneStroke(), name).builderRan) << name;
    EXPECT_EQ(Orvo::fileKind, Orvo::kPenFile) << name;
    plugin.open(oneStroke(), "b.kvo");
    EXPECT_FALSE(plugin.open(oneStroke(), name).builderRan) << name;
    EXPECT_EQ(Orvo::fileKind, Orvo::kInkML) << name;
  }
}

TEST_F(ImportDriver, LoadsTheStyleLibraryForEveryFile) {
  for (std::size_t files = 1; files <= 3; ++files) {
    plugin.open(oneStroke());
    EXPECT_EQ(plugin.calls(kPathStyle, "ImportStyles"), files);
    EXPECT_EQ(plugin.calls(kArtStyle, "GetArtStyleByNameFromDocument"), files);
  }
}

TEST_F(ImportDriver, LoadsTheStyleLibraryAlsoForAFileThatFails) {
  const embedded::Opening opening = plugin.open(PenFileBuilder().bytes({9, 9, 9}));
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_FALSE(opening.builderRan);
  EXPECT_THAT(opening.alerts, IsEmpty());
  EXPECT_EQ(plugin.calls(kPathStyle, "ImportStyles"), 1U);
}

TEST_F(ImportDriver, WithoutTheReadOptionOnlyLoadsTheStyleLibrary) {
  oneStroke().write(plugin.path("a.pnx"));
  plugin->host().newDocument();
  EXPECT_EQ(plugin->sendFileFormat("AI Go", plugin.path("a.pnx"), 0x7FFFFFFE), 0);
  EXPECT_EQ(plugin.calls(kPathStyle, "ImportStyles"), 1U);
  EXPECT_EQ(plugin.calls(kArtStyle, "AddNamedStyle"), 0U);
  EXPECT_FALSE(plugin.host().builderRan());
}

TEST_F(ImportDriver, ReadsWithAnyOptionWordThatHasTheReadBit) {
  oneStroke().write(plugin.path("a.pnx"));
  plugin->host().newDocument();
  EXPECT_EQ(plugin->sendFileFormat("AI Go", plugin.path("a.pnx"), 0x00000801), 0);
  EXPECT_TRUE(plugin.host().builderRan());
}

TEST_F(ImportDriver, StandsAloneWithoutCheckAndGetParameters) {
  oneStroke().write(plugin.path("a.pnx"));
  plugin->host().newDocument();
  EXPECT_EQ(plugin->sendFileFormat("AI Go", plugin.path("a.pnx")), 0);
  EXPECT_EQ(plugin->host().document().layers.at(0).art.size(), 1U);
}

TEST_F(ImportDriver, LogsWhyAFileFailsAndAnswersZero) {
  plugin.open(PenFileBuilder().bytes({9}), "bad.pnx");
  const std::vector<std::string> lines = pentest::linesOf(pentest::readText("orvo.log"));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0], HasSubstr("SEVERE bad packet tag: 1 expected for file descriptor\t"
                                  "FileDescriptor::readFromStream()"));
  EXPECT_THAT(lines[1], HasSubstr("SEVERE invalid file descriptor\tPnxParser::parse()"));
}

TEST_F(ImportDriver, GivesNoArtForAFileThatIsNotThere) {
  const embedded::Opening opening = plugin->open(plugin.path("missing.pnx"));
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_FALSE(opening.builderRan);
}

TEST_F(ImportDriver, OpensFilesWhateverTheirNamesAreMadeOf) {
  for (const char* name : {"with blank.pnx", "Z\xC3\xBCrich \xE2\x82\xAC.pnx",
                           "\xE7\xBB\x98\xE5\x9B\xBE.pnx", "\xF0\x9D\x84\x9E.pnx", "a.b.c.pnx"}) {
    EXPECT_TRUE(plugin.open(oneStroke(), name).builderRan) << name;
  }
}

#ifndef _WIN32
TEST_F(ImportDriver, OpensFilesWhoseNamesWindowsCouldNotHave) {
  for (const char* name : {"back\\slash.pnx", "not utf-8 \xFF\xC3.pnx"}) {
    EXPECT_TRUE(plugin.open(oneStroke(), name).builderRan) << name;
  }
}
#endif

TEST(MessageLayout, IsRecognisedFromTheFileSpecification) {
  for (const auto layout :
       {embedded::MessageLayout::plain, embedded::MessageLayout::driveSpecification,
        embedded::MessageLayout::networkSpecification}) {
    embedded::Options options;
    options.messageLayout = layout;
    PluginInHost plugin(options);
    plugin->start();
    const embedded::Opening opening = plugin.open(oneStroke());
    EXPECT_TRUE(opening.builderRan);
    EXPECT_THAT(opening.misuse, IsEmpty());
  }
}

TEST(DocumentLayout, IsRecognisedWithoutHarmAndOnce) {
  for (const auto layout : {embedded::DocumentLayout::newer, embedded::DocumentLayout::older}) {
    embedded::Options options;
    options.documentLayout = layout;
    PluginInHost plugin(options);
    plugin->start();
    for (int file = 0; file < 2; ++file) {
      const embedded::Opening opening = plugin.open(oneStroke());
      EXPECT_TRUE(opening.builderRan);
      EXPECT_EQ(opening.code("AI Go"), 0);
      EXPECT_THAT(opening.misuse, IsEmpty());
      EXPECT_FLOAT_EQ(opening.document.width, 200 * 0.2834F);
    }
    EXPECT_EQ(plugin.calls("AI Document Suite", "GetAIVersion") +
                  plugin.calls("AI Document Suite", "GetDocumentTargeting"),
              1U);
  }
}

TEST(UnicodeStringLayout, DoesNotMatter) {
  for (const auto layout :
       {embedded::UnicodeStringLayout::slots36, embedded::UnicodeStringLayout::slots38}) {
    embedded::Options options;
    options.unicodeStringLayout = layout;
    PluginInHost plugin(options);
    plugin->start();
    EXPECT_TRUE(plugin.open(oneStroke(), "Z\xC3\xBCrich.pnx").builderRan);
    EXPECT_THAT(plugin->end().misuse, IsEmpty());
  }
}

TEST(StyleLibrary, MissingStyleEndsTheOpeningWithTheHostsCode) {
  embedded::Options options;
  options.builtInLibrary = false;
  options.libraryPath = "/nowhere/brush_pressure.ai";
  PluginInHost plugin(options);
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_NE(opening.code("AI Go"), 0);
  EXPECT_FALSE(opening.builderRan);
  EXPECT_EQ(plugin.calls("AI Path Style Suite", "ImportStyles"), 1U);
}

TEST(StyleLibrary, NullStyleWithoutAnErrorDrawsPathsWithoutAStyle) {
  embedded::Options options = failing(kPathStyle, "ImportStyles", fourCC("!Imp"));
  options.faults.push_back(
      {.suite = kArtStyle, .function = "GetArtStyleByNameFromDocument", .call = 1, .code = 0});
  PluginInHost plugin(options);
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_EQ(pathAt(opening.document, 0, 0).style, std::nullopt);
}

TEST(StyleLibrary, LiesInTheUsersLocalApplicationDataFolder) {
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
