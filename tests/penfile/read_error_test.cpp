#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "log/logger.h"
#include "penfile/document_loader.h"
#include "tests/penfile/parsing.h"
#include "tests/support/pen/failing_device.h"
#include "tests/support/pen/log_capture.h"

namespace {

using Orvo::ParseFailure;
using Orvo::PnxParser;
using pentest::Bytes;
using pentest::FailingDevice;
using pentest::PenFileBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

PenFileBuilder recording() {
  return PenFileBuilder()
      .descriptor()
      .coordinate(1, 1)
      .pressure(6, 5)
      .unknown(200, 5, {1, 2, 3})
      .time(17, 0, 0, 1)
      .status(1);
}

constexpr const char* kBadTag =
    "SEVERE bad packet tag: 1 expected for file descriptor\tFileDescriptor::readFromStream()";
constexpr const char* kInvalidDescriptor = "SEVERE invalid file descriptor\tPnxParser::parse()";

TEST(ReadError, IsAFailureWhereverItOccursAndNeverTheEnd) {
  const pentest::LogCapture log;
  for (const bool canBePositioned : {true, false}) {
    const Bytes whole = recording().data();
    for (std::size_t offset = 0; offset <= whole.size(); ++offset) {
      SCOPED_TRACE(offset);
      FailingDevice device{whole, offset, canBePositioned};
      PnxParser parser(device.open());
      bool result = true;
      const auto lines = log.linesOfWork([&] { result = parser.parse(); });
      EXPECT_FALSE(result);
      EXPECT_FALSE(parser.document->complete.value);
      EXPECT_EQ(parser.report().failure, ParseFailure::readError);
      EXPECT_FALSE(parser.report().cutPacket.has_value());
      // A byte that could not be read is not tag 1. Nothing else in the descriptor is complained
      // about.
      if (offset == 0) {
        EXPECT_THAT(lines, ElementsAre(kBadTag, kInvalidDescriptor));
      } else if (offset < 6) {
        EXPECT_THAT(lines, ElementsAre(kInvalidDescriptor));
      } else {
        EXPECT_THAT(lines, IsEmpty());
      }
    }
  }
}

TEST(ReadError, FailsEveryPacketInWhichItOccurs) {
  Orvo::Logger::silence();
  Orvo::FileDescriptor descriptor;
  Orvo::PhysicalParams physical;
  Orvo::FileDateTime dateTime;
  Orvo::CoordinatePoint point;
  Orvo::PressureData pressure;
  Orvo::TiltData tilt;
  Orvo::TimestampData time;
  Orvo::Status status;
  struct Packet {
    Orvo::BasePacket& record;
    Bytes bytes;
    std::size_t readBefore = 1;  // The tag.
  };
  const Packet packets[] = {
      {descriptor, PenFileBuilder().descriptor().data(), 0},
      {physical, PenFileBuilder().physical({1, 2, 3, 4, 5, 6, 7}).data()},
      {dateTime, PenFileBuilder().dateTime({1, 2, 3, 4, 5, 6, 7}).data()},
      {point, PenFileBuilder().coordinate(1, 2).data()},
      {pressure, PenFileBuilder().pressure(1, 2).data()},
      {tilt, PenFileBuilder().tilt(1, 2).data()},
      {time, PenFileBuilder().time(17, 1, 2, 3).data()},
      {status, PenFileBuilder().status(1).data()},
  };
  for (const Packet& packet : packets) {
    for (std::size_t offset = packet.readBefore; offset <= packet.bytes.size(); ++offset) {
      FailingDevice device{packet.bytes, offset};
      Orvo::PenFileStream stream(device.open());
      unsigned char tag = 0;
      if (packet.readBefore == 1) stream.readTag(tag);
      EXPECT_EQ(packet.record.readFromStream(stream), offset == packet.bytes.size())
          << "tag " << int{packet.bytes[0]} << ", failing at " << offset;
    }
  }
  Orvo::Logger::silence(false);
}

TEST(ReadError, IsNotClearedBySeeking) {
  FailingDevice device{Bytes{1, 2, 3}, 1};
  Orvo::PenFileStream stream(device.open());
  unsigned char byte = 0;
  EXPECT_TRUE(stream.readByte(byte));
  EXPECT_FALSE(stream.readByte(byte));
  EXPECT_TRUE(stream.failed());
  stream.seek(0);
  EXPECT_TRUE(stream.failed());
  EXPECT_FALSE(stream.readByte(byte));
}

TEST(ReadError, IsReportedAtThePacketInWhichItOccurs) {
  FailingDevice device{PenFileBuilder().descriptor().coordinate(1, 1).bytes({97, 6, 0}).data()};
  PnxParser parser(device.open());
  EXPECT_FALSE(parser.parse());
  EXPECT_EQ(parser.report().failedPacket.offset, 12);
  EXPECT_EQ(parser.document->back().back().size(), 1U);
}

TEST(ReadError, IsTheResultOfSkippingWhereTheFileCannotBePositioned) {
  const Bytes bytes =
      PenFileBuilder().descriptor().unknown(200, 5, {1, 2, 3}).coordinate(1, 1).data();
  FailingDevice device{bytes, bytes.size(), false};
  PnxParser parser(device.open());
  EXPECT_FALSE(parser.parse());
  EXPECT_EQ(parser.report().failure, ParseFailure::readError);
  EXPECT_EQ(parser.report().failedPacket.offset, 6);
}

TEST(Parser, CompletesAfterTheDescriptorDuringWhichItIsFinished) {
  FailingDevice device{recording().data()};
  PnxParser parser(device.open());
  device.onRead = [&] { parser.finished = true; };
  EXPECT_TRUE(parser.parse());
  EXPECT_TRUE(parser.document->complete.value);
  EXPECT_EQ(parser.document->size(), 0U);
}

TEST(Parser, CompletesAfterAnyKnownPacketDuringWhichItIsFinished) {
  const PenFileBuilder packets[] = {
      PenFileBuilder().physical({1, 2, 3, 4, 5, 6, 7}),
      PenFileBuilder().dateTime({1, 2, 3, 4, 5, 6, 7}),
      PenFileBuilder().coordinate(1, 2),
      PenFileBuilder().pressure(1, 2),
      PenFileBuilder().tilt(1, 2),
      PenFileBuilder().time(17, 1, 2, 3),
      PenFileBuilder().status(1),
  };
  for (const PenFileBuilder& packet : packets) {
    Bytes bytes = PenFileBuilder().descriptor().data();
    const std::size_t start = bytes.size();
    bytes.insert(bytes.end(), packet.data().begin(), packet.data().end());
    const std::size_t end = bytes.size();
    bytes.insert(bytes.end(), packet.data().begin(), packet.data().end());
    FailingDevice device{bytes};
    PnxParser parser(device.open());
    device.onRead = [&] { parser.finished = device.position > start; };
    EXPECT_TRUE(parser.parse());
    EXPECT_TRUE(parser.document->complete.value);
    EXPECT_EQ(device.position, end) << "tag " << int{bytes[start]};
  }
}

TEST(Parser, ReadsAHeaderPacketIntoTheDocumentThatItHadWhenThePacketBegan) {
  const Bytes bytes = PenFileBuilder().descriptor().physical({1, 2, 3, 4, 5, 6, 7}).data();
  FailingDevice device{bytes, bytes.size()};
  PnxParser parser(device.open());
  device.onRead = [&] {
    if (device.position == 10) {
      parser.document = Orvo::SharedRef<Orvo::PnxDocument>(new Orvo::PnxDocument());
    }
  };
  parser.parse();
  EXPECT_EQ(parser.document->physicalParams.paramByte6, 0);
}

TEST(ReadError, IsTheResultOfReadingAFolder) {
  const pentest::LogCapture log;
  const pentest::TemporaryFolder folder;
  log.linesOfWork([&] {
    PnxParser parser(folder.path().wstring().c_str());
    EXPECT_FALSE(parser.parse());
    EXPECT_EQ(parser.report().failure, ParseFailure::readError);
    EXPECT_FALSE(Orvo::loadDocument(folder.path().wstring().c_str()));
  });
}

}  // namespace
