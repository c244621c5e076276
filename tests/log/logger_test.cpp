// The lines of the log: what they look like, and where they go.
#include "log/logger.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/pen/debugger_text.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/support/pen/text_file.h"

namespace {

using Orvo::Logger;
using Orvo::LogLevel;
using Orvo::logMessage;
using pentest::linesOf;
using pentest::readText;
using testing::EndsWith;
using testing::HasSubstr;

constexpr std::uintmax_t kTenMebibytes = 10'485'760;

// The framework's own patterns are too simple on Windows.
MATCHER_P(FitsPattern, pattern, "") {
  return std::regex_match(arg, std::regex(pattern));
}

// Each test logs in its own folder.
class Log : public testing::Test {
 protected:
  void TearDown() override { Logger::silence(false); }

  std::filesystem::path file() const { return folder_ / "orvo.log"; }

  // The text that one call sends to the debugger.
  static std::string debuggerOutputOf(const char* message, LogLevel level) {
    return pentest::debuggerTextOf([&] { logMessage("SomeClass", "someMethod", message, level); });
  }

  void makeFileOfSize(std::uintmax_t size) const {
    std::ofstream(file(), std::ios::binary).put('x');
    std::filesystem::resize_file(file(), size);
  }

 private:
  pentest::TemporaryFolder folder_;
  pentest::CurrentFolder current_{folder_.path()};
};

TEST(LogLevelName, NamesEachLevel) {
  const std::vector<std::string> words{"SEVERE", "WARNING", "INFO", "FINE", "FINER", "FINEST"};
  for (std::int32_t level = 0; level < 6; ++level) {
    EXPECT_EQ(Orvo::levelName(static_cast<LogLevel>(level)),
              words[static_cast<std::size_t>(level)]);
  }
}

TEST(LogLevelName, IsEmptyForAnyOtherValue) {
  EXPECT_STREQ(Orvo::levelName(static_cast<LogLevel>(-1)), "");
  EXPECT_STREQ(Orvo::levelName(static_cast<LogLevel>(6)), "");
}

TEST(LogTime, IsWrittenInBracketsInLocalTime) {
  std::tm noonish{};
  noonish.tm_year = 112;
  noonish.tm_mon = 4;
  noonish.tm_mday = 31;
  noonish.tm_hour = 14;
  noonish.tm_min = 7;
  noonish.tm_sec = 9;
  noonish.tm_isdst = -1;
  EXPECT_EQ(Orvo::formatLogTime(std::mktime(&noonish)), "[2012.05.31 14:07:09]");
}

#ifndef _WIN32
TEST(LogTime, FollowsTheTimeZoneOfTheProcess) {
  const char* before = std::getenv("TZ");
  const std::optional<std::string> zone =
      before ? std::optional<std::string>(before) : std::nullopt;
  ::setenv("TZ", "XYZ-5:30", 1);
  ::tzset();
  EXPECT_EQ(Orvo::formatLogTime(0), "[1970.01.01 05:30:00]");
  zone ? ::setenv("TZ", zone->c_str(), 1) : ::unsetenv("TZ");
  ::tzset();
}
#endif

TEST_F(Log, ALineHasTimeThreadLevelMessageAndPlace) {
  const std::string written = debuggerOutputOf("invalid file descriptor", LogLevel::severe);
  EXPECT_THAT(written,
              FitsPattern("\\[[0-9]+\\.[0-9]+\\.[0-9]+ [0-9]+:[0-9]+:[0-9]+\\] \\[[0-9]+\\] "
                          "SEVERE invalid file descriptor\tSomeClass::someMethod\\(\\)\n"));
  EXPECT_THAT(written, HasSubstr("] [" + std::to_string(platform::currentThreadId()) + "] SEVERE"));
  EXPECT_EQ(readText(file()), pentest::asInTextFile(written));
}

TEST_F(Log, WarningsAreWritten) {
  EXPECT_THAT(debuggerOutputOf("careful", LogLevel::warning),
              EndsWith("] WARNING careful\tSomeClass::someMethod()\n"));
}

TEST_F(Log, LevelsFinerThanWarningAreNotWrittenAnywhere) {
  for (const LogLevel level : {LogLevel::info, LogLevel::fine, LogLevel::finer, LogLevel::finest}) {
    EXPECT_EQ(debuggerOutputOf("unheard", level), "");
  }
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Log, ALevelBelowZeroIsWrittenWithAnEmptyName) {
  const std::string written = debuggerOutputOf("odd", static_cast<LogLevel>(-1));
  EXPECT_THAT(written,
              FitsPattern("\\[[^\\]]*\\] \\[[0-9]+\\]  odd\tSomeClass::someMethod\\(\\)\n"));
  EXPECT_EQ(readText(file()), pentest::asInTextFile(written));
}

TEST_F(Log, ALevelBeyondTheLastIsNotWrittenAnywhere) {
  EXPECT_EQ(debuggerOutputOf("unheard", static_cast<LogLevel>(6)), "");
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Log, TheFirstLineIsAppendedToWhatTheFileHolds) {
  std::ofstream(file()) << "before\n";
  logMessage("SomeClass", "someMethod", "after", LogLevel::severe);
  const auto lines = linesOf(readText(file()));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], "before");
  EXPECT_THAT(lines[1], HasSubstr("after"));
}

TEST_F(Log, TheFileCanBeRemovedBetweenMessages) {
  logMessage("SomeClass", "someMethod", "one", LogLevel::severe);
  std::filesystem::remove(file());
  logMessage("SomeClass", "someMethod", "two", LogLevel::severe);
  EXPECT_EQ(linesOf(readText(file())).size(), 1U);
}

TEST_F(Log, ALineStillGoesToTheDebuggerWhenTheFileCannotBeOpened) {
  std::filesystem::create_directory(file());
  EXPECT_THAT(debuggerOutputOf("unwritable", LogLevel::severe), HasSubstr("unwritable"));
}

TEST_F(Log, TheLineThatCrossesTenMebibytesIsKeptAndTheNextOneEmptiesTheFile) {
  makeFileOfSize(kTenMebibytes - 1);
  logMessage("SomeClass", "someMethod", "crossing", LogLevel::severe);
  EXPECT_GT(std::filesystem::file_size(file()), kTenMebibytes);
  logMessage("SomeClass", "someMethod", "fresh", LogLevel::severe);
  const auto lines = linesOf(readText(file()));
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_THAT(lines[0], HasSubstr("fresh"));
  logMessage("SomeClass", "someMethod", "further", LogLevel::severe);
  EXPECT_EQ(linesOf(readText(file())).size(), 2U);
}

TEST_F(Log, AFileThatIsAlreadyTooLargeIsEmptiedByTheSecondLine) {
  makeFileOfSize(kTenMebibytes + 1000);
  logMessage("SomeClass", "someMethod", "appended", LogLevel::severe);
  EXPECT_GT(std::filesystem::file_size(file()), kTenMebibytes + 1000);
  logMessage("SomeClass", "someMethod", "fresh", LogLevel::severe);
  EXPECT_EQ(linesOf(readText(file())).size(), 1U);
}

TEST_F(Log, TheFileIsEmptiedFromExactlyTenMebibytesOn) {
  const std::string line = pentest::asInTextFile(debuggerOutputOf("same length", LogLevel::severe));
  makeFileOfSize(kTenMebibytes - line.size() - 1);
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), kTenMebibytes - 1);
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), kTenMebibytes - 1 + line.size());
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), line.size());

  makeFileOfSize(kTenMebibytes - line.size());
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), kTenMebibytes);
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), line.size());
}

TEST_F(Log, LinesOfManyThreadsStayWhole) {
  constexpr std::size_t kThreadCount = 4;
  constexpr std::size_t kLineCount = 50;
  testing::internal::CaptureStderr();
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreadCount; ++i) {
    threads.emplace_back([] {
      for (std::size_t line = 0; line < kLineCount; ++line) {
        logMessage("SomeClass", "someMethod", "from a thread", LogLevel::warning);
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  testing::internal::GetCapturedStderr();

  const auto lines = linesOf(readText(file()));
  ASSERT_EQ(lines.size(), kThreadCount * kLineCount);
  for (const std::string& line : lines) {
    ASSERT_THAT(line, FitsPattern("\\[[^\\]]*\\] \\[[0-9]+\\] WARNING from a thread\tSomeClass::"
                                  "someMethod\\(\\)"));
  }
}

TEST_F(Log, ALineNamesTheThreadThatCalled) {
  testing::internal::CaptureStderr();
  std::uint64_t other = 0;
  std::thread([&] {
    other = platform::currentThreadId();
    logMessage("SomeClass", "someMethod", "from the other", LogLevel::severe);
  }).join();
  logMessage("SomeClass", "someMethod", "from here", LogLevel::severe);
  testing::internal::GetCapturedStderr();
  const auto lines = linesOf(readText(file()));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0], HasSubstr("] [" + std::to_string(other) + "] SEVERE from the other"));
  EXPECT_THAT(lines[1], HasSubstr("] [" + std::to_string(platform::currentThreadId()) +
                                  "] SEVERE from here"));
}

TEST_F(Log, ALineHasTheTimeOfItsOwnCall) {
  for (int call = 0; call < 2; ++call) {
    const std::time_t before = std::time(nullptr);
    const std::string line = debuggerOutputOf("timed", LogLevel::severe);
    const std::time_t after = std::time(nullptr);
    std::vector<std::string> times;
    for (std::time_t second = before; second <= after; ++second)
      times.push_back(Orvo::formatLogTime(second));
    EXPECT_THAT(times, testing::Contains(line.substr(0, line.find(" [")))) << line;
    while (std::time(nullptr) == after)  // The next call is in another second.
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

TEST_F(Log, EmptyingTheFileIsNotTriedAgainWhenItFails) {
  makeFileOfSize(kTenMebibytes);
  logMessage("SomeClass", "someMethod", "the next one empties the file", LogLevel::severe);
  std::filesystem::remove(file());
  std::filesystem::create_directory(file());
  logMessage("SomeClass", "someMethod", "finds a folder", LogLevel::severe);
  std::filesystem::remove(file());
  std::ofstream(file()) << "before\n";
  logMessage("SomeClass", "someMethod", "appended", LogLevel::severe);
  const auto lines = linesOf(readText(file()));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], "before");
  EXPECT_THAT(lines[1], HasSubstr("appended"));
}

TEST_F(Log, SilenceTurnsFileAndDebuggerOutputOff) {
  Logger::silence();
  EXPECT_EQ(debuggerOutputOf("unheard", LogLevel::severe), "");
  EXPECT_FALSE(std::filesystem::exists(file()));
  Logger::silence(false);
  EXPECT_THAT(debuggerOutputOf("heard", LogLevel::severe), HasSubstr("heard"));
}

}  // namespace
