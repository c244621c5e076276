// Reading the library from a file.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "stylelib/library.h"
#ifndef _WIN32
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#endif

#include "stylelib/limits.h"
#include "tests/stylelib/library_builder.h"

namespace {

namespace fs = std::filesystem;
using testing::SizeIs;

class LibraryFile : public testing::Test {
 protected:
  LibraryFile() {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    folder = fs::path(testing::TempDir()) / (std::string("penwick-library-") + test->name());
    fs::remove_all(folder);
    fs::create_directory(folder);
  }
  ~LibraryFile() override { fs::remove_all(folder); }

  std::string path() const { return (folder / "brush_pressure.ai").string(); }
  void write(const std::string& bytes) const { std::ofstream(path(), std::ios::binary) << bytes; }
  std::string problem() const { return stylelib::readLibraryFile(path()).problem; }

  fs::path folder;
};

TEST_F(LibraryFile, IsRead) {
  write(libtest::LibraryText().text());
  EXPECT_TRUE(stylelib::libraryFileExists(path()));
  EXPECT_THAT(stylelib::readLibraryFile(path()).styles, SizeIs(2));
}

TEST_F(LibraryFile, ThatIsMissingCannotBeOpened) {
  EXPECT_FALSE(stylelib::libraryFileExists(path()));
  EXPECT_EQ(problem(), "it cannot be opened");
}

TEST_F(LibraryFile, IsReadOnlyUpToTheLimit) {
  write("");
  fs::resize_file(path(), stylelib::kMostFileBytes + 1);
  EXPECT_EQ(problem(), "it is larger than 16 MiB");
}

TEST_F(LibraryFile, ThatIsAFolderIsRefused) {
  fs::create_directory(path());
  EXPECT_TRUE(stylelib::libraryFileExists(path()));
  EXPECT_EQ(problem(), "it is not a regular file");
}

#ifndef _WIN32

TEST_F(LibraryFile, OfATerabyteIsRefusedLikeOneBeyondTheLimit) {
  write("");
  fs::resize_file(path(), std::uintmax_t{1} << 40);
  EXPECT_EQ(problem(), "it is larger than 16 MiB");
}

TEST_F(LibraryFile, ThatIsAPipeIsRefusedWithoutWaiting) {
  ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
  EXPECT_TRUE(stylelib::libraryFileExists(path()));
  EXPECT_EQ(problem(), "it is not a regular file");
}

TEST_F(LibraryFile, ThatIsADeviceIsRefused) {
  fs::create_symlink("/dev/zero", path());
  EXPECT_TRUE(stylelib::libraryFileExists(path()));
  EXPECT_EQ(problem(), "it is not a regular file");
}

TEST_F(LibraryFile, ThatIsASocketIsRefused) {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  ASSERT_LT(path().size(), sizeof address.sun_path);
  path().copy(address.sun_path, path().size());
  const int server = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_TRUE(stylelib::libraryFileExists(path()));
  EXPECT_EQ(problem(), "it is not a regular file");
  close(server);
}

TEST_F(LibraryFile, MayBeALink) {
  write(libtest::LibraryText().text());
  fs::rename(path(), folder / "other.ai");
  fs::create_symlink("other.ai", path());
  EXPECT_THAT(stylelib::readLibraryFile(path()).styles, SizeIs(2));
}

TEST_F(LibraryFile, ThatIsADanglingLinkCountsAsMissing) {
  fs::create_symlink("other.ai", path());
  EXPECT_FALSE(stylelib::libraryFileExists(path()));
}

#endif

}  // namespace
