// A recording that comes through a pipe, in which nothing can be read twice.

#include <gtest/gtest.h>

#include "log/logger.h"
#include "penfile/pnx_parser.h"
#include "tests/support/pen/open_pipe.h"
#include "tests/support/pen/pen_file_builder.h"

namespace {

using Orvo::ParseFailure;
using Orvo::PnxParser;
using pentest::Bytes;
using pentest::openPipe;
using pentest::PenFileBuilder;

PenFileBuilder recording() {
  return PenFileBuilder().descriptor();
}

class Pipe : public testing::Test {
 protected:
  void SetUp() override { Orvo::Logger::silence(); }
  void TearDown() override { Orvo::Logger::silence(false); }

  static void expectFailure(const Bytes& bytes, ParseFailure failure, std::int64_t offset, int tag,
                            std::optional<unsigned char> lengthCode) {
    PnxParser parser(openPipe(bytes));
    ASSERT_TRUE(parser.stream.isOpen());
    EXPECT_FALSE(parser.parse());
    EXPECT_EQ(parser.report().failure, failure);
    EXPECT_EQ(parser.report().failedPacket.offset, offset);
    EXPECT_EQ(parser.report().failedPacket.tag, tag);
    EXPECT_EQ(parser.report().failedPacket.lengthCode, lengthCode);
  }
};

TEST_F(Pipe, GivesAWholeRecordingThatIsNotCut) {
  PnxParser parser(openPipe(recording().coordinate(1, 1).data()));
  EXPECT_TRUE(parser.parse());
  EXPECT_TRUE(parser.document->complete.value);
  EXPECT_EQ(parser.document->back().back().size(), 1U);
  EXPECT_FALSE(parser.report().cutPacket.has_value());
}

TEST_F(Pipe, GivesTheLastPacketOfARecordingThatIsCut) {
  PnxParser parser(openPipe(recording().bytes({97, 6, 0, 1}).data()));
  EXPECT_TRUE(parser.parse());
  EXPECT_EQ(parser.report().cutPacket, 6);
}

TEST_F(Pipe, IsNotBlamedForWhatIsWrongInTheRecording) {
  expectFailure({}, ParseFailure::emptyFile, 0, 0, std::nullopt);
  expectFailure({'<', '?'}, ParseFailure::badFirstTag, 0, '<', std::nullopt);
  expectFailure({1, 7, 0, 2, 0, 0}, ParseFailure::badDescriptorLength, 0, 1, 7);
  expectFailure({1, 6, 0, 3, 0, 0}, ParseFailure::badCoordinateFormat, 0, 1, 6);
  expectFailure(recording().bytes({97, 7, 0, 1, 0, 1, 0}).data(), ParseFailure::wrongLength, 6, 97,
                7);
  expectFailure(recording().bytes({100, 0x41, 7, 0, 0, 1}).data(),
                ParseFailure::badPressureAlgorithm, 6, 100, 0x41);
  expectFailure(recording().descriptor().data(), ParseFailure::secondDescriptor, 6, 1,
                std::nullopt);
}

}  // namespace
