// Files that are written completely or not at all, and never through what somebody else put there.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#ifndef _WIN32
#include <csignal>
#include <sys/stat.h>
#endif

#include "platform/replace_file.h"
#include "tests/log/made_files.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/support/pen/text_file.h"

namespace {

namespace fs = std::filesystem;

using pentest::namesIn;
using pentest::readText;
using pentest::writeText;

TEST(ReplaceFile, MakesAFile) {
  const pentest::TemporaryFolder folder;
  EXPECT_FALSE(platform::replaceFile(folder / "a", std::string("with\0zero", 9)));
  EXPECT_EQ(readText(folder / "a"), std::string("with\0zero", 9));
  EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a"));
}

TEST(ReplaceFile, ReplacesAFile) {
  const pentest::TemporaryFolder folder;
  writeText(folder / "a", "old and longer");
  EXPECT_FALSE(platform::replaceFile(folder / "a", "new"));
  EXPECT_EQ(readText(folder / "a"), "new");
  EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a"));
}

TEST(ReplaceFile, WritesToTheCurrentFolderWhenTheNameHasNone) {
  const pentest::TemporaryFolder folder;
  const pentest::CurrentFolder inside(folder.path());
  EXPECT_FALSE(platform::replaceFile("a", "new"));
  EXPECT_EQ(readText(folder / "a"), "new");
}

TEST(ReplaceFile, LeavesNothingBehindWhenItFails) {
  const pentest::TemporaryFolder folder;
  fs::create_directories(folder / "a/full");
  EXPECT_TRUE(platform::replaceFile(folder / "a", "new"));
  EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a"));
  EXPECT_EQ(platform::replaceFile(folder / "no/a", "new"), std::errc::no_such_file_or_directory);
}

TEST(RandomFileName, IsDifferentEachTime) {
  std::set<std::string> names;
  for (int i = 0; i < 100; ++i)
    names.insert(platform::randomFileName());
  EXPECT_EQ(names.size(), 100U);
}

#ifndef _WIN32

using pentest::permissionsOf;

TEST(ReplaceFile, KeepsPermissionsAndGivesNewFilesTheUsualOnes) {
  const pentest::TemporaryFolder folder;
  writeText(folder / "a", "old");
  ::chmod((folder / "a").c_str(), 0751);
  EXPECT_FALSE(platform::replaceFile(folder / "a", "new"));
  EXPECT_EQ(permissionsOf(folder / "a"), 0751U);

  const mode_t before = ::umask(0026);
  EXPECT_FALSE(platform::replaceFile(folder / "b", "new"));
  EXPECT_EQ(::umask(before), 0026U);
  EXPECT_EQ(permissionsOf(folder / "b"), 0640U);
}

TEST(ReplaceFile, ReplacesALinkAndNotItsTarget) {
  const pentest::TemporaryFolder folder;
  writeText(folder / "target", "mine");
  fs::create_symlink("target", folder / "a");
  EXPECT_FALSE(platform::replaceFile(folder / "a", "new"));
  EXPECT_FALSE(fs::is_symlink(folder / "a"));
  EXPECT_EQ(readText(folder / "target"), "mine");
}

TEST(ReplaceFile, BlocksNoSignalAfterwards) {
  const pentest::TemporaryFolder folder;
  sigset_t before;
  sigset_t after;
  ::pthread_sigmask(SIG_SETMASK, nullptr, &before);
  EXPECT_FALSE(platform::replaceFile(folder / "a", "new"));
  EXPECT_TRUE(platform::replaceFile(folder / "no/a", "new"));
  ::pthread_sigmask(SIG_SETMASK, nullptr, &after);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGUSR1})
    EXPECT_EQ(::sigismember(&before, number), ::sigismember(&after, number));
}

TEST(WriteInto, RefusesRegularFiles) {
  const pentest::TemporaryFolder folder;
  writeText(folder / "a", "mine");
  EXPECT_EQ(platform::writeInto(folder / "a", "new"), std::errc::file_exists);
  EXPECT_EQ(readText(folder / "a"), "mine");
  EXPECT_FALSE(platform::writeInto("/dev/null", "new"));
  EXPECT_EQ(platform::writeInto("/dev/full", "new"), std::errc::no_space_on_device);
  EXPECT_EQ(platform::writeInto(folder / "no", "new"), std::errc::no_such_file_or_directory);
}

#endif

}  // namespace
