// Clock, command line, debugger output, files, paths and threads.
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <type_traits>

#include "platform/clock.h"
#include "platform/command_line.h"
#include "platform/debug_output.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/thread.h"
#include "tests/log/made_files.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/support/pen/text_file.h"

namespace {

using platform::nativePathToWide;
using platform::wideToNativePath;

TEST(NativePath, IsUtf8) {
  EXPECT_EQ(wideToNativePath(L"a\u00e9\u20ac\U0001F58A"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x96\x8A");
  EXPECT_EQ(nativePathToWide("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x96\x8A"), L"a\u00e9\u20ac\U0001F58A");
}

TEST(NativePath, IsEmptyForEmptyText) {
  EXPECT_EQ(wideToNativePath(L""), "");
  EXPECT_EQ(nativePathToWide(""), L"");
}

#ifndef _WIN32

std::wstring wideOf(std::initializer_list<unsigned> characters) {
  std::wstring wide;
  for (const unsigned character : characters)
    wide.push_back(static_cast<wchar_t>(character));
  return wide;
}

TEST(NativePath, ALoneSurrogateIsTheByteItStandsFor) {
  EXPECT_EQ(wideToNativePath(wideOf({0xDC80, 'x', 0xDCFF})), "\x80x\xFF");
  EXPECT_EQ(nativePathToWide("\x80x\xFF"), wideOf({0xDC80, 'x', 0xDCFF}));
}

TEST(NativePath, EachByteThatIsNotUtf8BecomesALoneSurrogate) {
  EXPECT_EQ(nativePathToWide("\xC0\xAF"), wideOf({0xDCC0, 0xDCAF}));              // Overlong.
  EXPECT_EQ(nativePathToWide("\xE0\x80\xAF"), wideOf({0xDCE0, 0xDC80, 0xDCAF}));  // Overlong.
  EXPECT_EQ(nativePathToWide("\xED\xA0\x80"), wideOf({0xDCED, 0xDCA0, 0xDC80}));  // Surrogate.
  EXPECT_EQ(nativePathToWide("\xF4\x90\x80\x80"), wideOf({0xDCF4, 0xDC90, 0xDC80, 0xDC80}));
  EXPECT_EQ(nativePathToWide("\xE2\x82"), wideOf({0xDCE2, 0xDC82}));  // Cut.
  EXPECT_EQ(nativePathToWide("\xE2z"), wideOf({0xDCE2, 'z'}));
}

TEST(NativePath, EveryPairOfBytesSurvivesTheConversionToWideTextAndBack) {
  for (int first = 1; first < 256; ++first) {
    for (int second = 1; second < 256; ++second) {
      const std::string name{static_cast<char>(first), static_cast<char>(second), '\x9C'};
      ASSERT_EQ(wideToNativePath(nativePathToWide(name)), name);
    }
  }
}

TEST(NativePath, WhatIsNotACharacterBecomesTheReplacementCharacter) {
  EXPECT_EQ(wideToNativePath(wideOf({0xD800})), "\xEF\xBF\xBD");
  EXPECT_EQ(wideToNativePath(wideOf({0x110000})), "\xEF\xBF\xBD");
}

TEST(LocalAppDataFolder, IsTheOneThatTheEnvironmentNames) {
  ::setenv("HOME", "/somewhere", 1);
  ::setenv("XDG_DATA_HOME", "/data of mine", 1);
  EXPECT_EQ(platform::localAppDataFolder(), L"/data of mine");
  for (const char* unusable : {"", "relative/data"}) {
    ::setenv("XDG_DATA_HOME", unusable, 1);
    EXPECT_EQ(platform::localAppDataFolder(), L"/somewhere/.local/share");
  }
  ::unsetenv("XDG_DATA_HOME");
}

TEST(LocalAppDataFolder, LiesUnderHome) {
  ::unsetenv("XDG_DATA_HOME");
  ::setenv("HOME", "/somewhere/\xC3\xA9", 1);
  EXPECT_EQ(platform::localAppDataFolder(), L"/somewhere/\u00e9/.local/share");
}

TEST(LocalAppDataFolder, IsThatOfTheAccountWhenHomeIsNotSet) {
  ::unsetenv("XDG_DATA_HOME");
  ::unsetenv("HOME");
  const auto folder = platform::localAppDataFolder();
  ASSERT_TRUE(folder.has_value());
  EXPECT_TRUE(folder->ends_with(L"/.local/share"));
  EXPECT_NE(*folder, L"/.local/share");
}

TEST(File, OpensUnderAnyName) {
  const pentest::TemporaryFolder folder;
  const std::string name = (folder / "odd \xFF\xC3\xA9").string();
  EXPECT_TRUE(platform::openFile(nativePathToWide(name).c_str(), "wb"));
  EXPECT_TRUE(std::filesystem::exists(name));
}

TEST(DebugOutput, GoesToStandardErrorUnchanged) {
  testing::internal::CaptureStderr();
  platform::debugOutput("narrow\xFF");
  platform::debugOutput(L" w\u00efde");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "narrow\xFF w\xC3\xAF"
            "de");
}

#endif

TEST(File, ReadsByteByByteAndSeeks) {
  const pentest::TemporaryFolder folder;
  const std::filesystem::path path = folder / "three";
  pentest::writeText(path, "\xFF\x62\x63");

  const platform::File owner = platform::openFile(path.wstring().c_str(), "rb");
  ASSERT_TRUE(owner);
  std::FILE* in = owner.get();
  EXPECT_EQ(platform::readByte(in), 0xFF);
  EXPECT_EQ(platform::tell(in), 1);
  EXPECT_TRUE(platform::seekToEnd(in));
  EXPECT_EQ(platform::tell(in), 3);
  EXPECT_EQ(platform::readByte(in), EOF);
  EXPECT_TRUE(platform::seekTo(in, 2));
  EXPECT_EQ(platform::readByte(in), 'c');
  EXPECT_TRUE(platform::seekTo(in, 5'000'000'000));
  EXPECT_EQ(platform::tell(in), 5'000'000'000);
  EXPECT_EQ(platform::readByte(in), EOF);
}

TEST(File, DoesNotOpenWhenItIsMissing) {
  const pentest::TemporaryFolder folder;
  EXPECT_EQ(platform::openFile((folder / "missing").wstring().c_str(), "rb"), nullptr);
}

TEST(CriticalSection, MayBeTakenAgainByItsHolder) {
  platform::CriticalSection section;
  std::atomic<bool> entered = false;
  section.lock();
  section.lock();
  std::thread other([&] {
    const std::lock_guard guard(section);
    entered = true;
  });
  section.unlock();
  EXPECT_FALSE(entered);  // Released only once so far.
  section.unlock();
  other.join();
  EXPECT_TRUE(entered);
}

TEST(CriticalSection, LetsOneThreadInAtATime) {
  platform::CriticalSection section;
  int count = 0;
  const auto work = [&] {
    for (int i = 0; i < 20'000; ++i) {
      const std::lock_guard guard(section);
      ++count;
    }
  };
  std::thread one(work);
  std::thread other(work);
  one.join();
  other.join();
  EXPECT_EQ(count, 40'000);
}

TEST(ThreadId, TellsThreadsApart) {
  const std::uint64_t mine = platform::currentThreadId();
  std::uint64_t theirs = mine;
  std::thread([&] { theirs = platform::currentThreadId(); }).join();
  EXPECT_NE(theirs, mine);
  EXPECT_EQ(platform::currentThreadId(), mine);
}

TEST(LocalTime, OfAMomentOutsideTheCalendarIsAllZero) {
  const std::tm parts = platform::localTime(INT64_MAX);
  EXPECT_EQ(parts.tm_year, 0);
  EXPECT_EQ(parts.tm_mday, 0);
}

// The pointers of a copy would point into the original.
static_assert(!std::is_copy_constructible_v<platform::CommandLine>);
static_assert(!std::is_copy_assignable_v<platform::CommandLine>);

#ifndef _WIN32
TEST(CommandLine, HoldsItsWordsAndANullAfterThem) {
  std::string program = "penwick";
  std::string word = "*.pnx \xFF";
  char* words[] = {program.data(), word.data(), nullptr};
  platform::CommandLine line(2, words);
  ASSERT_EQ(line.count(), 2);
  EXPECT_STREQ(line.words()[0], "penwick");
  EXPECT_STREQ(line.words()[1], "*.pnx \xFF");
  EXPECT_EQ(line.words()[2], nullptr);
}
#else
TEST(CommandLine, IsThatOfTheProcess) {
  std::string other = "not what the process was started with";
  char* words[] = {other.data(), nullptr};
  platform::CommandLine line(1, words);
  ASSERT_GE(line.count(), 1);
  EXPECT_TRUE(std::string(line.words()[0]).ends_with("platform_tests.exe"));
  EXPECT_EQ(line.words()[line.count()], nullptr);
}
#endif

}  // namespace
