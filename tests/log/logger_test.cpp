#include "log/logger.h"

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

constexpr std::uintmax_t tenMebibytes = 10'485'760;

// The framework's own patterns are too simple on Windows.
MATCHER_P(FitsPattern, pattern, "") {
  return std::regex_match(arg, std::regex(pattern));
}

// Each test logs in a folder of its own.
class Log : public testing::Test {
 protected:
  void TearDown() override { Logger::silence(false); }

  std::filesystem::path file() const { return folder_ / "orvo.log"; }

  // The text that one call hands to the debugger.
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

TEST(LogLevelName, IsTheWordOfItsLevel) {
  const std::vector<std::string> words{"SEVERE", "WARNING", "INFO", "FINE", "FINER", "FINEST"};
  for (std::int32_t level = 0; level < 6; ++level) {
    EXPECT_EQ(Orvo::levelName(static_cast<LogLevel>(level)),
              words[static_cast<std::size_t>(level)]);
  }
}

TEST(LogLevelName, IsEmptyOutsideTheTable) {
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

TEST_F(Log, LevelsFinerThanWarningLeaveNothingAnywhere) {
  for (const LogLevel level : {LogLevel::info, LogLevel::fine, LogLevel::finer, LogLevel::finest}) {
    EXPECT_EQ(debuggerOutputOf("unheard", level), "");
  }
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Log, ALevelBelowZeroIsWrittenWithAnEmptyWord) {
  const std::string written = debuggerOutputOf("odd", static_cast<LogLevel>(-1));
  EXPECT_THAT(written,
              FitsPattern("\\[[^\\]]*\\] \\[[0-9]+\\]  odd\tSomeClass::someMethod\\(\\)\n"));
  EXPECT_EQ(readText(file()), pentest::asInTextFile(written));
}

TEST_F(Log, ALevelBehindTheTableLeavesNothingAnywhere) {
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

TEST_F(Log, AFileThatCannotBeOpenedLeavesTheDebuggerOutput) {
  std::filesystem::create_directory(file());
  EXPECT_THAT(debuggerOutputOf("unwritable", LogLevel::severe), HasSubstr("unwritable"));
}

TEST_F(Log, TheLineThatCrossesTenMebibytesIsKeptAndTheNextOneStartsAfresh) {
  makeFileOfSize(tenMebibytes - 1);
  logMessage("SomeClass", "someMethod", "crossing", LogLevel::severe);
  EXPECT_GT(std::filesystem::file_size(file()), tenMebibytes);
  logMessage("SomeClass", "someMethod", "fresh", LogLevel::severe);
  const auto lines = linesOf(readText(file()));
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_THAT(lines[0], HasSubstr("fresh"));
  logMessage("SomeClass", "someMethod", "further", LogLevel::severe);
  EXPECT_EQ(linesOf(readText(file())).size(), 2U);
}

TEST_F(Log, AFileThatIsTooLargeAlreadyIsMeasuredByTheFirstLineOnly) {
  makeFileOfSize(tenMebibytes + 1000);
  logMessage("SomeClass", "someMethod", "appended", LogLevel::severe);
  EXPECT_GT(std::filesystem::file_size(file()), tenMebibytes + 1000);
  logMessage("SomeClass", "someMethod", "fresh", LogLevel::severe);
  EXPECT_EQ(linesOf(readText(file())).size(), 1U);
}

TEST_F(Log, AFileStartsAfreshFromExactlyTenMebibytesOn) {
  const std::string line = pentest::asInTextFile(debuggerOutputOf("same length", LogLevel::severe));
  makeFileOfSize(tenMebibytes - line.size() - 1);
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), tenMebibytes - 1);
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), tenMebibytes - 1 + line.size());
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), line.size());

  makeFileOfSize(tenMebibytes - line.size());
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), tenMebibytes);
  logMessage("SomeClass", "someMethod", "same length", LogLevel::severe);
  EXPECT_EQ(std::filesystem::file_size(file()), line.size());
}

TEST_F(Log, LinesOfManyThreadsStayWhole) {
  constexpr std::size_t threadCount = 4;
  constexpr std::size_t lineCount = 50;
  testing::internal::CaptureStderr();
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < threadCount; ++i) {
    threads.emplace_back([] {
      for (std::size_t line = 0; line < lineCount; ++line) {
        logMessage("SomeClass", "someMethod", "from a thread", LogLevel::warning);
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  testing::internal::GetCapturedStderr();

  const auto lines = linesOf(readText(file()));
  ASSERT_EQ(lines.size(), threadCount * lineCount);
  for (const std::string& line : lines) {
    ASSERT_THAT(line, FitsPattern("\\[[^\\]]*\\] \\[[0-9]+\\] WARNING from a thread\tSomeClass::"
                                  "someMethod\\(\\)"));
  }
}

TEST_F(Log, SilenceTurnsFileAndDebuggerOutputOff) {
  Logger::silence();
  EXPECT_EQ(debuggerOutputOf("unheard", LogLevel::severe), "");
  EXPECT_FALSE(std::filesystem::exists(file()));
  Logger::silence(false);
  EXPECT_THAT(debuggerOutputOf("heard", LogLevel::severe), HasSubstr("heard"));
}

}  // namespace
