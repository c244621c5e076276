#include <gtest/gtest.h>

#include "tests/penfile/parsing.h"
#include "tests/support/pen/open_pipe.h"

namespace {

using Orvo::ParseFailure;
using Orvo::PnxParser;
using pentest::Bytes;
using pentest::openPipe;
using pentest::recording;

// A recording that comes through a pipe, in which nothing can be read twice.
class Pipe : public pentest::SilentTest {
 protected:
  static void expectFailure(const Bytes& bytes, const pentest::Failing& expected) {
    PnxParser parser(openPipe(bytes));
    ASSERT_TRUE(parser.stream.isOpen());
    EXPECT_FALSE(parser.parse());
    pentest::expectFailure(parser.report(), expected);
  }
};

TEST_F(Pipe, DeliversAWholeRecording) {
  PnxParser parser(openPipe(recording().coordinate(1, 1).data()));
  EXPECT_TRUE(parser.parse());
  EXPECT_TRUE(parser.document->complete.value);
  EXPECT_EQ(parser.document->back().back().size(), 1U);
  EXPECT_FALSE(parser.report().cutPacket.has_value());
}

TEST_F(Pipe, DeliversTheCutLastPacketOfARecording) {
  PnxParser parser(openPipe(recording().bytes({97, 6, 0, 1}).data()));
  EXPECT_TRUE(parser.parse());
  EXPECT_EQ(parser.report().cutPacket, 6);
}

TEST_F(Pipe, IsNotBlamedForWhatIsWrongInTheRecording) {
  expectFailure({}, {ParseFailure::emptyFile, 0, 0, std::nullopt});
  expectFailure({'<', '?'}, {ParseFailure::badFirstTag, 0, '<', std::nullopt});
  expectFailure({1, 7, 0, 2, 0, 0}, {ParseFailure::badDescriptorLength, 0, 1, 7});
  expectFailure({1, 6, 0, 3, 0, 0}, {ParseFailure::badCoordinateFormat, 0, 1, 6});
  expectFailure(recording().bytes({97, 7, 0, 1, 0, 1, 0}).data(),
                {ParseFailure::wrongLength, 6, 97, 7});
  expectFailure(recording().bytes({100, 0x41, 7, 0, 0, 1}).data(),
                {ParseFailure::badPressureAlgorithm, 6, 100, 0x41});
  expectFailure(recording().descriptor().data(),
                {ParseFailure::secondDescriptor, 6, 1, std::nullopt});
}

}  // namespace
