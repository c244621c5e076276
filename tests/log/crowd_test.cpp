// The log with many writers at once, in threads and in processes, and a log that something happens
// to.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "log/logger.h"
#include "tests/support/pen/log_capture.h"

namespace {

using Orvo::LogLevel;
using Orvo::logMessage;
using pentest::LogCapture;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kLines = 4'000;
#else
constexpr std::size_t kLines = 100'000;
#endif
constexpr std::size_t kWriters = 8;
constexpr std::size_t kEach = kLines / kWriters;
constexpr std::uintmax_t kTenMebibytes = 10'485'760;

// The n-th line of a writer, which says whose it is and ends with its own number again.
std::string messageOf(std::size_t writer, std::size_t number) {
  const std::string name = std::to_string(writer) + "." + std::to_string(number);
  return name + " to " + name;
}

void writeLines(std::size_t writer, std::size_t count) {
  for (std::size_t number = 0; number < count; ++number)
    logMessage("C", "m", messageOf(writer, number).c_str(), LogLevel::severe);
}

// Standard error, where each line goes too, is of no interest.
class Crowd : public testing::Test {
 protected:
  void SetUp() override { testing::internal::CaptureStderr(); }
  void TearDown() override { testing::internal::GetCapturedStderr(); }

  static void writeInThreads(std::size_t count) {
    std::vector<std::thread> threads;
    for (std::size_t writer = 0; writer < kWriters; ++writer)
      threads.emplace_back([=] { writeLines(writer, count); });
    for (std::thread& thread : threads)
      thread.join();
  }

  static void writeInProcesses(std::size_t count) {
    std::vector<pid_t> processes;
    for (std::size_t writer = 0; writer < kWriters; ++writer) {
      processes.push_back(::fork());
      if (processes.back() == 0) {
        writeLines(writer, count);
        ::_exit(0);
      }
    }
    for (const pid_t process : processes) {
      int status = 0;
      ASSERT_EQ(::waitpid(process, &status, 0), process);
      ASSERT_EQ(status, 0);
    }
  }

  // Every line is whole: no other line begins in the middle of it.
  std::map<std::size_t, std::vector<std::size_t>> numbersByWriter() const {
    std::map<std::size_t, std::vector<std::size_t>> numbers;
    std::ifstream file(log_.file());
    for (std::string line; std::getline(file, line);) {
      const std::string text = pentest::withoutTimeAndThread(line);
      std::size_t writer = kWriters;
      std::size_t number = 0;
      std::string level;
      char dot = 0;
      std::istringstream(text) >> level >> writer >> dot >> number;
      if (text != "SEVERE " + messageOf(writer, number) + "\tC::m()") {
        ADD_FAILURE() << "not a whole line: " << line;
        break;
      }
      numbers[writer].push_back(number);
    }
    return numbers;
  }

  void expectEveryLineInOrder() const {
    const auto numbers = numbersByWriter();
    ASSERT_EQ(numbers.size(), kWriters);
    for (const auto& [writer, own] : numbers) {
      ASSERT_EQ(own.size(), kEach) << writer;
      for (std::size_t i = 0; i < own.size(); ++i)
        ASSERT_EQ(own[i], i) << writer;
    }
  }

  // A log that grew beyond the limit has been started afresh, and its lines are whole but for the
  // filling, which is not there any more.
  void expectFreshLog() const {
    EXPECT_LT(std::filesystem::file_size(log_.file()), kTenMebibytes);
    std::size_t lines = 0;
    for (const auto& [writer, own] : numbersByWriter()) {
      EXPECT_TRUE(std::is_sorted(own.begin(), own.end())) << writer;
      lines += own.size();
    }
    EXPECT_GT(lines, 0U);
    EXPECT_LT(lines, kLines / 5);
  }

  void fillAlmost() const {
    std::ofstream(log_.file()).put('x');
    std::filesystem::resize_file(log_.file(), kTenMebibytes - 10'000);
  }

  LogCapture log_;
};

TEST_F(Crowd, OfThreadsWritesEveryLineWholeAndInItsOrder) {
  writeInThreads(kEach);
  expectEveryLineInOrder();
}

TEST_F(Crowd, OfProcessesWritesEveryLineWholeAndInItsOrder) {
  writeInProcesses(kEach);
  expectEveryLineInOrder();
}

TEST_F(Crowd, OfThreadsStartsTheLogAfreshAtTenMebibytes) {
  fillAlmost();
  writeInThreads(kEach / 5);
  expectFreshLog();
}

TEST_F(Crowd, OfProcessesStartsTheLogAfreshAtTenMebibytes) {
  fillAlmost();
  writeInProcesses(kEach / 5);
  expectFreshLog();
}

// What stands in the place of the log is left alone, and once it is gone the log is written again.
class LogInThePlaceOf : public Crowd {
 protected:
  void expectNoLineUntilItIsGone(const std::function<void(const std::filesystem::path&)>& make) {
    make(log_.file());
    const auto before = std::filesystem::symlink_status(log_.file());
    writeLines(0, 2);
    EXPECT_EQ(std::filesystem::symlink_status(log_.file()), before);
    std::filesystem::remove(log_.file());
    writeLines(0, 1);
    EXPECT_EQ(numbersByWriter()[0], std::vector<std::size_t>{0});
  }
};

TEST_F(LogInThePlaceOf, AFolderIsNotWritten) {
  expectNoLineUntilItIsGone([](const auto& place) { std::filesystem::create_directory(place); });
}

TEST_F(LogInThePlaceOf, APipeIsNotWritten) {
  expectNoLineUntilItIsGone([](const auto& place) { ASSERT_EQ(::mkfifo(place.c_str(), 0600), 0); });
}

TEST_F(LogInThePlaceOf, ABrokenLinkIsNotWritten) {
  expectNoLineUntilItIsGone(
      [](const auto& place) { std::filesystem::create_symlink("nowhere", place); });
  EXPECT_FALSE(std::filesystem::exists("nowhere"));
}

// Permissions do not bind the administrator, whose line is written.
TEST_F(LogInThePlaceOf, AFileThatMayNotBeWrittenIsNotChanged) {
  writeLines(0, 1);
  std::filesystem::permissions(log_.file(), std::filesystem::perms::owner_read);
  writeLines(0, 1);
  EXPECT_EQ(numbersByWriter()[0].size(), ::geteuid() == 0 ? 2U : 1U);
}

TEST_F(LogInThePlaceOf, OneThatIsDeletedBetweenTwoLinesIsMadeAgain) {
  for (std::size_t round = 0; round < 3; ++round) {
    writeLines(0, 1);
    EXPECT_EQ(numbersByWriter()[0].size(), 1U);
    std::filesystem::remove(log_.file());
  }
}

}  // namespace
