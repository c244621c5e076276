#include <gmock/gmock.h>
#include <iterator>
#include <string_view>

#include "penfile/document_loader.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/pen/text_file.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kFilePath[] = "AI File Path Suite";
constexpr char kString[] = "AI Unicode String Suite";
constexpr char kDocument[] = "AI Document Suite";
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

TEST(MessageLayout, IsRecognisedFromTheFileRecord) {
  for (const auto layout : {embedded::MessageLayout::plain, embedded::MessageLayout::driveRecord,
                            embedded::MessageLayout::networkRecord}) {
    embedded::Options options;
    options.messageLayout = layout;
    PluginInHost plugin(options);
    plugin->start();
    const embedded::Opening opening = plugin.open(oneStroke());
    EXPECT_TRUE(opening.builderRan);
    EXPECT_THAT(opening.misuse, IsEmpty());
  }
}

TEST(MessageLayout, IsRecognisedFromADriveLetterOfEitherCase) {
  PluginInHost plugin;
  plugin->start();
  oneStroke().write(plugin.path("a.pnx"));
  for (const std::string_view drive : {"A:", "C:", "Z:", "a:", "c:", "z:"}) {
    plugin->host().newDocument();
    hostapi::AIFileFormatMessageWithFileRecord message{};
    drive.copy(message.fileRecord, drive.size());
    message.option = hostapi::kFileFormatRead;
    message.filePath = plugin->host().makeFilePath(plugin.path("a.pnx"));
    EXPECT_EQ(plugin->send("AI File Format", "AI Go", &message), 0) << drive;
    EXPECT_TRUE(plugin.host().builderRan()) << drive;
    plugin->host().freeFilePath(message.filePath);
  }
}

// The first two bytes of the option are those of "[:" and "{:".
TEST(MessageLayout, IsThePlainOneForAnOptionNextToALetterAndAColon) {
  PluginInHost plugin;
  plugin->start();
  oneStroke().write(plugin.path("a.pnx"));
  for (const std::int32_t option : {0x3A5B, 0x3A7B}) {
    plugin->host().newDocument();
    EXPECT_EQ(plugin->sendFileFormat("AI Go", plugin.path("a.pnx"), option), 0);
    EXPECT_TRUE(plugin.host().builderRan());
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

TEST(ArtSets, OfEitherWidthAndWithTheLayersGroupGiveEveryPathItsStyle) {
  for (const auto& host : {HostWithFaults().withArtSetNumbers(embedded::ArtSetNumbers::bits64),
                           HostWithFaults().withLayerGroup(embedded::LayerGroup::counted),
                           HostWithFaults()
                               .withArtSetNumbers(embedded::ArtSetNumbers::bits64)
                               .withLayerGroup(embedded::LayerGroup::counted)}) {
    PluginInHost plugin(host);
    plugin->start();
    const embedded::Opening opening = plugin.open(twoLayers(2));
    EXPECT_EQ(opening.code("AI Go"), 0);
    EXPECT_THAT(opening.misuse, IsEmpty());
    for (const std::size_t layer : {0U, 1U}) {
      for (const std::size_t stroke : {0U, 1U}) {
        EXPECT_TRUE(pathAt(opening.document, layer, stroke).style);
      }
    }
  }
}

HostWithFaults withoutAnyLibrary() {
  return HostWithFaults().withoutLibrary().withLibraryAt("/nowhere/brush_pressure.ai");
}

TEST(StyleLibrary, MissingStyleEndsTheOpeningWithTheHostsCode) {
  PluginInHost plugin(withoutAnyLibrary());
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), fourCC("NAM?"));
  EXPECT_THAT(opening.alerts, ElementsAre("NAM?"));
  EXPECT_FALSE(opening.builderRan);
  EXPECT_EQ(plugin.calls("AI Path Style Suite", "ImportStyles"), 1U);
}

TEST(StyleLibrary, NullStyleWithoutAnErrorDrawsPathsWithoutAStyle) {
  PluginInHost plugin(
      withoutAnyLibrary().answeringMissingStyles(embedded::MissingStyle::nullStyle));
  plugin->start();
  const embedded::Opening opening = plugin.open(oneStroke());
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_EQ(pathAt(opening.document, 0, 0).style, std::nullopt);
}

TEST(StyleLibrary, OfTheFileBeforeIsNotUsedWhereTheImportFails) {
  PluginInHost plugin(failing(kPathStyle, "ImportStyles", fourCC("!Imp"), 2));
  plugin->start();
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), 0);
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), fourCC("NAM?"));
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

TEST(StyleLibrary, StyleOfTheFileBeforeIsNotUsedWhereTheLookUpGivesNone) {
  expectNoStyleInTheSecondDrawing(failing(kArtStyle, "GetArtStyleByNameFromDocument", 0, 2));
}

TEST(StyleLibrary, StyleOfTheDrawingBeforeIsNotUsedWhereTheNewOneCannotBeNamed) {
  expectNoStyleInTheSecondDrawing(failing(kArtStyle, "AddNamedStyle", fourCC("TEST"), 2));
}

// Every step that is tested, in its order, for an extension that is the last to be compared with.
struct Step {
  const char* suite;
  const char* function;
  std::size_t call = 1;
};

constexpr Step kSteps[] = {
    {kFilePath, "GetFullPath"},
    {kString, "Initialize", 1},  // "pnx"
    {kFilePath, "Copy"},
    {kFilePath, "GetFileExtension"},
    {kString, "Initialize", 2},  // "eli"
    {kString, "Initialize", 3},  // "kvo"
    {kString, "Initialize", 4},  // "inkml"
    {kString, "InitializeUTF16"},
    {kString, "Initialize", 5},  // the library's file
    {kString, "Append"},
    {kFilePath, "Set"},
    {kString, "Initialize", 6},  // the library's style
    {kArtStyle, "GetArtStyleByNameFromDocument"},
    {kString, "GetChar"},
    {kString, "Initialize", 7},  // the drawing's style
    {kDocument, "GetDocumentSetup"},
    {kDocument, "SetDocumentRulerOrigin"},
    {kDocument, "SetDocumentSetup"},
    {"AI Layer Suite", "SetLayerEditable"},
};

TEST(OrderOfSteps, IsToldByTheCodeOfTheFirstOneThatIsRefused) {
  constexpr hostapi::AIErr firstCode = 1000;
  for (std::size_t first = 0; first < std::size(kSteps); ++first) {
    HostWithFaults host;
    for (std::size_t i = first; i < std::size(kSteps); ++i) {
      host.answering(kSteps[i].suite, kSteps[i].function, kSteps[i].call,
                     firstCode + static_cast<hostapi::AIErr>(i));
    }
    PluginInHost plugin(host);
    plugin->start();
    EXPECT_EQ(plugin->open(plugin.writeText("a.inkml", kEmptyInkLayer)).code("AI Go"),
              firstCode + static_cast<hostapi::AIErr>(first))
        << kSteps[first].function << " " << kSteps[first].call;
  }
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
