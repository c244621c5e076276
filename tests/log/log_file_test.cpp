// The file that the log is written to: natively a regular file with one name, and nothing else.
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/file.h"
#include "tests/log/made_files.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/support/pen/text_file.h"

namespace {

namespace fs = std::filesystem;

using pentest::permissionsOf;
using pentest::readText;
using pentest::writeText;

// Opens the log "orvo.log" in the test's own folder, and writes to it.
class LogFile : public testing::Test {
 protected:
  bool opens(bool emptyFirst) const {
    const platform::File log = platform::openLogFile(path().wstring().c_str(), emptyFirst);
    return log && std::fputs("line", log.get()) >= 0;
  }
  fs::path path() const { return folder_ / "orvo.log"; }
  fs::path target() const { return folder_ / "target"; }

 private:
  pentest::TemporaryFolder folder_;
};

TEST_F(LogFile, IsAppendedToOrEmptied) {
  writeText(path(), "old ");
  EXPECT_TRUE(opens(false));
  EXPECT_EQ(readText(path()), "old line");
  EXPECT_TRUE(opens(true));
  EXPECT_EQ(readText(path()), "line");
}

TEST_F(LogFile, HasTheUsualPermissions) {
  const mode_t before = ::umask(0027);
  EXPECT_TRUE(opens(false));
  ::umask(before);
  EXPECT_EQ(permissionsOf(path()), 0640U);
}

TEST_F(LogFile, KnowsItsLength) {
  writeText(path(), "old ");
  const platform::File log = platform::openLogFile(path().wstring().c_str(), false);
  ASSERT_TRUE(log);
  EXPECT_GE(std::fputs("line", log.get()), 0);
  EXPECT_EQ(platform::tell(log.get()), 8);
}

TEST_F(LogFile, IsNotOpenedThroughALink) {
  writeText(target(), "mine");
  fs::create_symlink("target", path());
  EXPECT_FALSE(opens(false));
  EXPECT_FALSE(opens(true));
  EXPECT_EQ(readText(target()), "mine");
}

TEST_F(LogFile, IsNotOpenedWhenItHasASecondName) {
  writeText(target(), "mine");
  fs::create_hard_link(target(), path());
  EXPECT_FALSE(opens(false));
  EXPECT_FALSE(opens(true));
  EXPECT_EQ(readText(target()), "mine");
}

TEST_F(LogFile, IsNotAPipe) {
  ASSERT_EQ(::mkfifo(path().c_str(), 0600), 0);
  EXPECT_FALSE(opens(false));
  // With a reader the pipe could be opened at once, but a log is still not written to it.
  const platform::File reader = platform::openFile(path().wstring().c_str(), "r+");
  ASSERT_TRUE(reader);
  EXPECT_FALSE(opens(false));
  EXPECT_FALSE(opens(true));
}

}  // namespace
