// The current folder, and the folders that the program makes for itself.
#include "platform/folders.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "platform/file.h"
#include "platform/paths.h"
#include "platform/working_folder.h"
#include "tests/log/made_files.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

using pentest::namesIn;
using pentest::writeText;

TEST(RunInFolder, GoesThereAndComesBack) {
  const pentest::TemporaryFolder folder;
  const fs::path before = fs::current_path();
  fs::path during;
  platform::runInFolder(folder.path(), [&] { during = fs::current_path(); });
  EXPECT_TRUE(fs::equivalent(during, folder.path()));
  EXPECT_EQ(fs::current_path(), before);
}

TEST(RunInFolder, ComesBackAfterAnExceptionToo) {
  const pentest::TemporaryFolder folder;
  const fs::path before = fs::current_path();
  const auto fail = [] { throw std::runtime_error("work"); };
  EXPECT_THROW(platform::runInFolder(folder.path(), fail), std::runtime_error);
  EXPECT_EQ(fs::current_path(), before);
}

TEST(RunInFolder, KeepsNoFileWhenTheFolderCannotBeEntered) {
  const pentest::TemporaryFolder folder;
  const pentest::CurrentFolder inside(folder.path());
  for (const fs::path& nowhere : {fs::path(), folder / "missing"}) {
    fs::path made;
    platform::runInFolder(nowhere, [&] {
      made = fs::current_path() / "orvo.log";
      platform::openFile(L"orvo.log", "w");
    });
    EXPECT_FALSE(fs::equivalent(fs::current_path(), made.parent_path()));
    EXPECT_FALSE(fs::exists(made));
    EXPECT_TRUE(fs::equivalent(fs::current_path(), folder.path()));
  }
  EXPECT_THAT(namesIn(folder.path()), testing::IsEmpty());
}

TEST(AbsoluteNativePath, StartsAtTheCurrentFolder) {
  const fs::path whole = fs::current_path() / "a";
  EXPECT_EQ(platform::absoluteNativePath("a"), whole.string());
  EXPECT_EQ(platform::absoluteNativePath(whole.string()), whole.string());
}

TEST(PrivateFolder, IsMadeWithTheFoldersAboveIt) {
  const pentest::TemporaryFolder folder;
  EXPECT_FALSE(platform::makePrivateFolder(folder / "a/b"));
  EXPECT_TRUE(fs::is_directory(folder / "a/b"));
  EXPECT_FALSE(platform::makePrivateFolder(folder / "a/b"));
}

TEST(PrivateFolder, IsNotMadeInPlaceOfAFile) {
  const pentest::TemporaryFolder folder;
  writeText(folder / "a", "");
  EXPECT_TRUE(platform::makePrivateFolder(folder / "a"));
  EXPECT_TRUE(platform::makePrivateFolder(folder / "a/b"));
}

#ifndef _WIN32

using pentest::permissionsOf;

TEST(PrivateFolder, BelongsToItsOwnerAlone) {
  const pentest::TemporaryFolder folder;
  EXPECT_FALSE(platform::makePrivateFolder(folder / "a/b"));
  EXPECT_EQ(permissionsOf(folder / "a"), 0700U);
  EXPECT_EQ(permissionsOf(folder / "a/b"), 0700U);
}

class StateFolder : public testing::Test {
 protected:
  void SetUp() override { ::setenv("HOME", "/some/home", 1); }
  void TearDown() override { ::unsetenv("XDG_STATE_HOME"); }
};

TEST_F(StateFolder, IsInTheOneThatAnAbsolutePathNames) {
  ::setenv("XDG_STATE_HOME", "/some/state", 1);
  EXPECT_EQ(platform::stateFolder(), "/some/state/penwick");
}

TEST_F(StateFolder, LiesUnderHomeOtherwise) {
  for (const char* none : {"", "state", "./state"}) {
    ::setenv("XDG_STATE_HOME", none, 1);
    EXPECT_EQ(platform::stateFolder(), "/some/home/.local/state/penwick");
  }
  ::unsetenv("XDG_STATE_HOME");
  EXPECT_EQ(platform::stateFolder(), "/some/home/.local/state/penwick");
}

#endif

}  // namespace
