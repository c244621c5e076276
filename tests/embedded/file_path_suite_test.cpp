#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/ai_file_path_suite.h"
#include "hostapi/codes.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using testing::ElementsAre;
using testing::IsEmpty;

class FilePathSuite : public testing::Test {
 protected:
  ~FilePathSuite() override {
    EXPECT_EQ(host.livePaths(), 0U);
    EXPECT_EQ(host.liveStrings(), 0U);
  }

  std::u32string fullPath(const FilePathBody& path, AIBool8 displayName = 0) {
    UnicodeStringBody text;
    EXPECT_EQ(suite->GetFullPath(&path, displayName, &text), 0);
    return take(text);
  }

  std::u32string extension(const FilePathBody& path) {
    UnicodeStringBody text;
    EXPECT_EQ(suite->GetFileExtension(&path, &text), 0);
    return take(text);
  }

  std::u32string take(UnicodeStringBody& text) {
    std::u32string characters = test::characters(host, text);
    test::acquire<AIUnicodeStringSuite>(host)->Destroy(&text);
    return characters;
  }

  std::u32string extensionOf(std::string_view text) {
    test::HostFilePath path(host, text);
    return extension(*path.body());
  }

  embedded::Host host;
  const AIFilePathSuite* suite = test::acquire<AIFilePathSuite>(host);
};

TEST_F(FilePathSuite, MakesAndDeletesAnEmptyPath) {
  FilePathBody path;
  EXPECT_EQ(suite->NewFilePath(&path), 0);
  EXPECT_EQ(host.livePaths(), 1U);
  EXPECT_EQ(fullPath(path), U"");
  EXPECT_EQ(suite->DeleteFilePath(&path), 0);
  EXPECT_EQ(path.inside, nullptr);
  EXPECT_EQ(host.livePaths(), 0U);
}

TEST_F(FilePathSuite, GivesTheExtensionWithoutItsDot) {
  EXPECT_EQ(extensionOf("/home/a/drawing.pnx"), U"pnx");
  EXPECT_EQ(extensionOf("/home/a/drawing.tar.kvo"), U"kvo");
  EXPECT_EQ(extensionOf("/home/a.b/drawing"), U"");
  EXPECT_EQ(extensionOf("drawing."), U"");
  EXPECT_EQ(extensionOf(".pnx"), U"pnx");
  EXPECT_EQ(extensionOf(""), U"");
}

TEST_F(FilePathSuite, TreatsTheBackslashAsASeparator) {
  EXPECT_EQ(extensionOf("C:\\a.b"), U"b");
  EXPECT_EQ(extensionOf("C:\\a.b\\c"), U"");
}

#ifndef _WIN32
TEST_F(FilePathSuite, ABackslashGivenThroughSetBecomesTheSystemsSeparator) {
  test::HostFilePath path(host, "/home/a\\Penwick\\brush_pressure.ai");
  EXPECT_EQ(fullPath(*path.body()), U"/home/a/Penwick/brush_pressure.ai");
}

TEST_F(FilePathSuite, TheFileOfAMessageKeepsItsExactName) {
  FilePathBody path = host.makeFilePath("/tmp/a\\b\xFF.pnx");
  const std::u32string exact{U'/', U't',   U'm', U'p', U'/', U'a', U'\\',
                             U'b', 0xDCFF, U'.', U'p', U'n', U'x'};
  EXPECT_EQ(fullPath(path), exact);
  EXPECT_EQ(extension(path), U"pnx");
  EXPECT_EQ(host.livePaths(), 0U) << "it belongs to the host";
  host.freeFilePath(path);
  EXPECT_THAT(host.misuse(), IsEmpty());
}
#endif

TEST_F(FilePathSuite, GivesTheWholePathOrTheLastNameToDisplay) {
  test::HostFilePath path(host, "/home/a.b/drawing.pnx");
  EXPECT_EQ(fullPath(*path.body(), 0), U"/home/a.b/drawing.pnx");
  EXPECT_EQ(fullPath(*path.body(), 1), U"drawing.pnx");
  EXPECT_EQ(fullPath(*path.body(), 255), U"drawing.pnx");
}

TEST_F(FilePathSuite, DisplaysNothingOfAPathThatEndsInASeparator) {
  test::HostFilePath path(host, "/home/a/");
  EXPECT_EQ(fullPath(*path.body(), 1), U"");
  EXPECT_EQ(fullPath(FilePathBody(), 1), U"");
}

TEST_F(FilePathSuite, CopiesThatOutliveTheirSource) {
  FilePathBody copy;
  {
    test::HostFilePath source(host, "/a/b.pnx");
    EXPECT_EQ(suite->Copy(source.body(), &copy), 0);
    EXPECT_NE(copy.inside, source.body()->inside);
  }
  EXPECT_EQ(fullPath(copy), U"/a/b.pnx");
  EXPECT_EQ(suite->DeleteFilePath(&copy), 0);
}

TEST_F(FilePathSuite, ReportsTheUseOfADeletedPath) {
  FilePathBody path;
  ASSERT_EQ(suite->NewFilePath(&path), 0);
  FilePathBody stale = path;
  ASSERT_EQ(suite->DeleteFilePath(&path), 0);
  EXPECT_EQ(suite->DeleteFilePath(&stale), fourCC("PARM"));
  EXPECT_THAT(host.misuse(), ElementsAre("plug-in misbehaving: \"AI File Path Suite\" "
                                         "DeleteFilePath: a deleted file path is used"));
}

TEST_F(FilePathSuite, ReportsTheDeletionOfTheMessagesOwnPath) {
  FilePathBody path = host.makeFilePath("/a.pnx");
  FilePathBody inMessage = path;
  EXPECT_EQ(suite->DeleteFilePath(&inMessage), 0);
  host.freeFilePath(path);
  EXPECT_THAT(host.misuse(),
              ElementsAre("plug-in misbehaving: the message's file path was deleted"));
}

TEST_F(FilePathSuite, ReportsNullPointersAndWhatIsNotAPath) {
  UnicodeStringBody text;
  FilePathBody path{&host};
  EXPECT_EQ(suite->NewFilePath(nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->GetFullPath(nullptr, 0, &text), fourCC("PARM"));
  EXPECT_EQ(suite->GetFullPath(&path, 0, nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->Set(nullptr, 0, &path), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 4U);
  EXPECT_EQ(suite->GetFullPath(&path, 0, &text), fourCC("PARM"));
  EXPECT_THAT(host.misuse().back(), testing::HasSubstr("this is not a file path of this host"));
}

}  // namespace
