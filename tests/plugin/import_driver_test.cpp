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

TEST_F(ImportDriver, SetsTheFileKindByTheExactExtension) {
  const std::pair<const char*, std::uint32_t> rows[] = {{"a.kvo", Orvo::kInkML},
                                                        {"a.pnx", Orvo::kPenFile},
                                                        {"a.inkml", Orvo::kInkML},
                                                        {"a.eli", Orvo::kPenFile}};
  for (const auto& [name, kind] : rows) {
    plugin.open(oneStroke(), name);
    EXPECT_EQ(Orvo::fileKind, kind) << name;
  }
}

TEST_F(ImportDriver, KeepsTheKindOfThePreviousFileForAnyOtherExtension) {
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

TEST_F(ImportDriver, LoadsTheStyleLibraryEvenForAFileThatFails) {
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
  EXPECT_EQ(plugin.calls(kString, "GetChar"), 0U) << "the path is not converted";
}

TEST_F(ImportDriver, ReadsWithAnyOptionWordThatHasTheReadBit) {
  oneStroke().write(plugin.path("a.pnx"));
  plugin->host().newDocument();
  EXPECT_EQ(plugin->sendFileFormat("AI Go", plugin.path("a.pnx"), 0x00000801), 0);
  EXPECT_TRUE(plugin.host().builderRan());
}

TEST_F(ImportDriver, WorksWithoutCheckAndGetParameters) {
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

TEST_F(ImportDriver, DrawsNothingForAMissingFile) {
  const embedded::Opening opening = plugin->open(plugin.path("missing.pnx"));
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_FALSE(opening.builderRan);
}

TEST_F(ImportDriver, OpensFilesWhateverCharactersTheirNamesHave) {
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

// The first two bytes of the option are those of "\1" and "\[": a single backslash. The kind is
// that of the file's extension, which is read from where the layout has the path.
TEST(MessageLayout, IsThePlainOneForAnOptionOfOneBackslash) {
  PluginInHost plugin;
  plugin->start();
  const std::string file = plugin.writeText("a.kvo", kEmptyInkLayer);
  for (const std::int32_t option : {0x315C, 0x5B5C}) {
    Orvo::fileKind = Orvo::kPenFile;
    plugin->host().newDocument();
    EXPECT_EQ(plugin->sendFileFormat("AI Go", file, option), 0);
    EXPECT_EQ(Orvo::fileKind, Orvo::kInkML) << option;
  }
}

TEST(MessageLayout, IsThePlainOneForAnOptionOfABackslashInItsSecondByteOnly) {
  PluginInHost plugin;
  plugin->start();
  const std::string file = plugin.writeText("a.kvo", kEmptyInkLayer);
  plugin->host().newDocument();
  EXPECT_EQ(plugin->sendFileFormat("AI Go", file, 0x5C01), 0);
  EXPECT_TRUE(plugin.host().builderRan());
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

// Every step whose result is checked, in order, for the extension that is compared last.
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

TEST(OrderOfSteps, ShowsInTheCodeOfTheFirstOneThatIsRefused) {
  constexpr hostapi::AIErr kFirstCode = 1000;
  for (std::size_t first = 0; first < std::size(kSteps); ++first) {
    HostWithFaults host;
    for (std::size_t i = first; i < std::size(kSteps); ++i) {
      host.answering(kSteps[i].suite, kSteps[i].function, kSteps[i].call,
                     kFirstCode + static_cast<hostapi::AIErr>(i));
    }
    PluginInHost plugin(host);
    plugin->start();
    EXPECT_EQ(plugin->open(plugin.writeText("a.inkml", kEmptyInkLayer)).code("AI Go"),
              kFirstCode + static_cast<hostapi::AIErr>(first))
        << kSteps[first].function << " " << kSteps[first].call;
  }
}

}  // namespace
