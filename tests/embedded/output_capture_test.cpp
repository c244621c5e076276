#include "embedded/output_capture.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <iostream>
#include <string>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace {

using embedded::CapturedOutput;
using embedded::OutputCapture;

TEST(OutputCapture, KeepsTheTwoStreamsApart) {
  OutputCapture capture;
  std::printf("there are %d layers\n", 3);
  std::cout << "and more";
  std::cerr << "trouble\n";
  const CapturedOutput output = capture.finish();
  EXPECT_EQ(output.standardOutput, "there are 3 layers\nand more");
  EXPECT_EQ(output.standardError, "trouble\n");
  EXPECT_FALSE(output.empty());
}

#ifndef _WIN32
TEST(OutputCapture, CapturesWhatIsWrittenToTheDescriptor) {
  OutputCapture capture;
  ASSERT_EQ(write(STDOUT_FILENO, "raw", 3), 3);
  EXPECT_EQ(capture.finish().standardOutput, "raw");
}
#endif

TEST(OutputCapture, RestoresTheStreams) {
  OutputCapture outer;
  {
    std::string inside;
    OutputCapture capture;
    std::printf("inside");
    inside = capture.finish().standardOutput;
    EXPECT_EQ(inside, "inside");
    std::printf("outside");
  }
  EXPECT_EQ(outer.finish().standardOutput, "outside");
}

TEST(OutputCapture, DoesNotCaptureWhatWasPrintedBefore) {
  OutputCapture outer;
  std::printf("before");
  OutputCapture capture;
  EXPECT_EQ(capture.finish().standardOutput, "");
  EXPECT_EQ(outer.finish().standardOutput, "before");
}

TEST(OutputCapture, CapturesZeroBytesAndLongOutput) {
  OutputCapture capture;
  const std::string much(300000, 'x');
  EXPECT_EQ(std::fwrite("\0", 1, 1, stdout), 1U);
  EXPECT_EQ(std::fwrite(much.data(), 1, much.size(), stdout), much.size());
  EXPECT_EQ(capture.finish().standardOutput, std::string(1, '\0') + much);
}

TEST(OutputCapture, IsEmptyTheSecondTime) {
  OutputCapture capture;
  std::printf("once");
  capture.finish();
  EXPECT_TRUE(capture.finish().empty());
}

TEST(CapturedOutputs, AreAddedStreamByStream) {
  CapturedOutput output{"a", "b"};
  output += {"c", "d"};
  EXPECT_EQ(output.standardOutput, "ac");
  EXPECT_EQ(output.standardError, "bd");
}

}  // namespace
