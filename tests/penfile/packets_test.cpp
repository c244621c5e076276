#include "penfile/packets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <type_traits>

#include "tests/support/pen/log_capture.h"
#include "tests/support/pen/open_bytes.h"
#include "tests/support/pen/pen_file_builder.h"

namespace {

using Orvo::decodeLength;
using Orvo::PenFileStream;
using pentest::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(!std::has_virtual_destructor_v<Orvo::BasePacket>);
static_assert(std::is_polymorphic_v<Orvo::BasePacket>);

// A packet that reads itself from bytes, which begin after the tag.
template <class Packet>
struct Read {
  explicit Read(const Bytes& bytes) : Read(Packet(), bytes) {}
  Read(const Packet& before, const Bytes& bytes) : packet(before) {
    PenFileStream stream(pentest::openBytes(bytes));
    result = packet.readFromStream(stream);
    stream.readByte(next);
  }

  Packet packet;
  bool result = false;
  unsigned char next = 0;  // The byte after those that were read.
};

using ReadDescriptor = Read<Orvo::FileDescriptor>;
using ReadPhysical = Read<Orvo::PhysicalParams>;
using ReadDateTime = Read<Orvo::FileDateTime>;
using ReadCoordinate = Read<Orvo::CoordinatePoint>;
using ReadPressure = Read<Orvo::PressureData>;
using ReadTilt = Read<Orvo::TiltData>;
using ReadTime = Read<Orvo::TimestampData>;
using ReadStatus = Read<Orvo::Status>;

class PacketLog : public testing::Test {
 protected:
  pentest::LogCapture log_;
};
using FileDescriptorPacket = PacketLog;
using PressurePacket = PacketLog;

TEST(LengthCode, IsAMantissaTimesAPowerOfSix) {
  EXPECT_EQ(decodeLength(0x00), 0U);
  EXPECT_EQ(decodeLength(0x03), 3U);
  EXPECT_EQ(decodeLength(0x06), 6U);
  EXPECT_EQ(decodeLength(0x09), 9U);
  EXPECT_EQ(decodeLength(0x3F), 63U);
  EXPECT_EQ(decodeLength(0x40), 0U);
  EXPECT_EQ(decodeLength(0x41), 6U);
  EXPECT_EQ(decodeLength(0x46), 36U);
  EXPECT_EQ(decodeLength(0x81), 36U);
  EXPECT_EQ(decodeLength(0xC1), 216U);
  EXPECT_EQ(decodeLength(0xFF), 13608U);
}

TEST(PacketHeads, HaveTheirTagAndLength) {
  const auto expect = [](const Orvo::BasePacket& packet, int tag, int length) {
    EXPECT_EQ(packet.tag.value, tag);
    EXPECT_EQ(packet.expectedLength.value, length);
  };
  expect(Orvo::FileDescriptor(), 1, 6);
  expect(Orvo::PhysicalParams(), 17, 9);
  expect(Orvo::FileDateTime(), 49, 9);
  expect(Orvo::CoordinatePoint(), 97, 6);
  expect(Orvo::PressureData(), 100, 6);
  expect(Orvo::TiltData(), 101, 6);
  expect(Orvo::TimestampData(), 194, 6);
  expect(Orvo::Status(), 241, 3);
}

TEST(PacketLength, OfSixHasTwoCodes) {
  EXPECT_TRUE(ReadTilt({0x06, 1, 2, 3, 4}).result);
  EXPECT_TRUE(ReadTilt({0x41, 1, 2, 3, 4}).result);
  EXPECT_FALSE(ReadTilt({0x46, 1, 2, 3, 4}).result);
  EXPECT_FALSE(ReadTilt({0x05, 1, 2, 3, 4}).result);
}

TEST(PacketLength, ThatIsWrongStopsReadingAfterTheCode) {
  const ReadCoordinate read({0x07, 9, 1, 0, 2});
  EXPECT_FALSE(read.result);
  EXPECT_EQ(read.next, 9);
  EXPECT_EQ(read.packet.x, 0.0);
}

TEST(PacketLength, ThatIsMissingFailsEveryPacket) {
  EXPECT_FALSE(ReadPhysical(Bytes{}).result);
  EXPECT_FALSE(ReadDateTime(Bytes{}).result);
  EXPECT_FALSE(ReadCoordinate(Bytes{}).result);
  EXPECT_FALSE(ReadPressure(Bytes{}).result);
  EXPECT_FALSE(ReadTilt(Bytes{}).result);
  EXPECT_FALSE(ReadTime(Bytes{}).result);
  EXPECT_FALSE(ReadStatus(Bytes{}).result);
}

TEST(Packets, FailOnAClosedStream) {
  PenFileStream closed{platform::File()};
  EXPECT_FALSE(Orvo::FileDescriptor().readFromStream(closed));
  EXPECT_FALSE(Orvo::Status().readFromStream(closed));
}

TEST_F(FileDescriptorPacket, KeepsItsFourBytes) {
  const ReadDescriptor read({1, 6, 0xAA, 2, 0xBB, 0xCC});
  EXPECT_TRUE(read.result);
  EXPECT_EQ(read.packet.descriptorByte0, 0xAA);
  EXPECT_EQ(read.packet.coordinateFormat, 2);
  EXPECT_EQ(read.packet.descriptorByte2, 0xBB);
  EXPECT_EQ(read.packet.descriptorByte3, 0xCC);
}

TEST_F(FileDescriptorPacket, OnAStreamThatIsClosedOrAtItsEndIsRefusedSilently) {
  EXPECT_THAT(log_.linesOfWork([] {
    PenFileStream closed{platform::File()};
    EXPECT_FALSE(Orvo::FileDescriptor().readFromStream(closed));
    PenFileStream ended(pentest::openBytes(Bytes{}));
    unsigned char none = 0;
    EXPECT_FALSE(ended.readByte(none));
    EXPECT_FALSE(Orvo::FileDescriptor().readFromStream(ended));
  }),
              IsEmpty());
}

TEST_F(FileDescriptorPacket, WithAnotherTagIsRefusedAndLogged) {
  EXPECT_THAT(log_.linesOfWork([] {
    EXPECT_FALSE(ReadDescriptor({2, 6, 0, 2, 0, 0}).result);
  }),
              ElementsAre("SEVERE bad packet tag: 1 expected for file descriptor\t"
                          "FileDescriptor::readFromStream()"));
}

TEST_F(FileDescriptorPacket, WithAWrongLengthIsRefusedSilently) {
  EXPECT_THAT(log_.linesOfWork([] {
    EXPECT_FALSE(ReadDescriptor({1, 7, 0, 2, 0, 0}).result);
  }),
              IsEmpty());
}

TEST_F(FileDescriptorPacket, WithAnotherFormatIsRefusedAndLoggedAndKeepsOnlyItsFirstBytes) {
  const auto work = [] {
    const ReadDescriptor read({1, 6, 0xAA, 3, 0xBB, 0xCC});
    EXPECT_FALSE(read.result);
    EXPECT_EQ(read.packet.descriptorByte0, 0xAA);
    EXPECT_EQ(read.packet.coordinateFormat, 3);
    EXPECT_EQ(read.packet.descriptorByte2, 0);
    EXPECT_EQ(read.packet.descriptorByte3, 0);
  };
  EXPECT_THAT(log_.linesOfWork(work),
              ElementsAre("SEVERE Invalid coordinate format - currently only cooridnates are "
                          "supported\tFileDescriptor::readFromStream()"));
}

TEST_F(FileDescriptorPacket, InAnEmptyFileCountsAsAnotherTag) {
  EXPECT_THAT(log_.linesOfWork([] { EXPECT_FALSE(ReadDescriptor(Bytes{}).result); }),
              ElementsAre("SEVERE bad packet tag: 1 expected for file descriptor\t"
                          "FileDescriptor::readFromStream()"));
}

TEST(PhysicalParamsPacket, KeepsItsBytesInFileOrder) {
  const ReadPhysical read({9, 1, 2, 3, 4, 5, 6, 7});
  EXPECT_TRUE(read.result);
  EXPECT_EQ(read.packet.paramByte0, 1);
  EXPECT_THAT(read.packet.paramWord1, ElementsAre(2, 3));
  EXPECT_THAT(read.packet.paramWord2, ElementsAre(4, 5));
  EXPECT_EQ(read.packet.paramByte5, 6);
  EXPECT_EQ(read.packet.paramByte6, 7);
}

TEST(PhysicalParamsPacket, HasZerosWhereItIsCutShortWhateverItHeldBefore) {
  const ReadPhysical before({9, 1, 2, 3, 4, 5, 6, 7});
  const ReadPhysical read(before.packet, {9, 8, 9});
  EXPECT_TRUE(read.result);
  EXPECT_EQ(read.packet.paramByte0, 8);
  EXPECT_THAT(read.packet.paramWord1, ElementsAre(9, 0));
  EXPECT_THAT(read.packet.paramWord2, ElementsAre(0, 0));
  EXPECT_EQ(read.packet.paramByte6, 0);
}

TEST(FileDateTimePacket, KeepsSevenBytes) {
  const ReadDateTime read({9, 20, 12, 5, 31, 14, 7, 9});
  EXPECT_TRUE(read.result);
  EXPECT_THAT(read.packet.dateTimeBytes, ElementsAre(20, 12, 5, 31, 14, 7, 9));
}

TEST(FileDateTimePacket, HasZerosWhereItIsCutShortWhateverItHeldBefore) {
  const ReadDateTime before({9, 20, 12, 5, 31, 14, 7, 9});
  const ReadDateTime read(before.packet, {9, 21});
  EXPECT_TRUE(read.result);
  EXPECT_THAT(read.packet.dateTimeBytes, ElementsAre(21, 0, 0, 0, 0, 0, 0));
}

TEST(CoordinatePacket, ScalesEachAxisDifferently) {
  const ReadCoordinate read({6, 0x00, 0x0A, 0x00, 0x0A});
  EXPECT_TRUE(read.result);
  EXPECT_EQ(read.packet.x, 1.5);
  EXPECT_EQ(read.packet.y, 2.5);
}

TEST(CoordinatePacket, IsSigned) {
  const ReadCoordinate minusOne({6, 0xFF, 0xFF, 0xFF, 0xFF});
  EXPECT_EQ(minusOne.packet.x, 0.4);
  EXPECT_EQ(minusOne.packet.y, 0.3);
  const ReadCoordinate others({6, 0xFF, 0xFB, 0xFF, 0xFD});  // -5 and -3.
  EXPECT_EQ(others.packet.x, 0.0);
  EXPECT_EQ(others.packet.y, -0.1);
}

TEST(CoordinatePacket, CoversItsWholeRange) {
  const ReadCoordinate lowest({6, 0x80, 0x00, 0x80, 0x00});
  EXPECT_EQ(lowest.packet.x, -3276.3);
  EXPECT_EQ(lowest.packet.y, -6553.1);
  const ReadCoordinate highest({6, 0x7F, 0xFF, 0x7F, 0xFF});
  EXPECT_EQ(highest.packet.x, 3277.2);
  EXPECT_EQ(highest.packet.y, 6553.9);
}

TEST(CoordinatePacket, DividesByTenAndDoesNotMultiplyByATenth) {
  const ReadCoordinate read({6, 0x00, 0x01, 0x00, 0x00});  // (1 + 5) / 10.
  EXPECT_EQ(read.packet.x, 0.6);
  EXPECT_NE(read.packet.x, 6.0 * 0.1);
}

TEST(CoordinatePacket, CutShortIsReadWithZeros) {
  const ReadCoordinate nothing({6});
  EXPECT_TRUE(nothing.result);
  EXPECT_EQ(nothing.packet.x, 0.5);
  EXPECT_EQ(nothing.packet.y, 0.5);
  const ReadCoordinate half({6, 0x01});  // r is 256.
  EXPECT_EQ(half.packet.x, 26.1);
}

TEST_F(PressurePacket, WithAlgorithmOneOrFiveIsAQuarterOfAnUnsignedNumber) {
  for (const unsigned char algorithm : Bytes{1, 5}) {
    EXPECT_EQ(ReadPressure({6, algorithm, 0, 0xFF, 0xFF}).packet.pressure, 16383);
    EXPECT_EQ(ReadPressure({6, algorithm, 0xEE, 0x80, 0x00}).packet.pressure, 8192);
    EXPECT_EQ(ReadPressure({6, algorithm, 0, 0x00, 0x07}).packet.pressure, 1);
  }
}

TEST_F(PressurePacket, WithAlgorithmSixIsASignedNumber) {
  EXPECT_EQ(ReadPressure({6, 6, 0, 0xFF, 0xFF}).packet.pressure, -1);
  EXPECT_EQ(ReadPressure({6, 6, 0, 0x80, 0x00}).packet.pressure, -32768);
  EXPECT_EQ(ReadPressure({6, 6, 0, 0x7F, 0xFF}).packet.pressure, 32767);
}

TEST_F(PressurePacket, WithAnyOtherAlgorithmIsRefusedWithAWarningAndKeepsThePressure) {
  const ReadPressure before({6, 6, 0, 0, 9});
  const auto work = [&] {
    const ReadPressure read(before.packet, {6, 2, 0, 0, 50});
    EXPECT_FALSE(read.result);
    EXPECT_EQ(read.packet.pressure, 9);
  };
  EXPECT_THAT(
      log_.linesOfWork(work),
      ElementsAre("WARNING invalid pressure algorithm type\tPressureData::readFromStream()"));
}

TEST_F(PressurePacket, CutAfterItsLengthHasAlgorithmZero) {
  EXPECT_THAT(
      log_.linesOfWork([] { EXPECT_FALSE(ReadPressure({6}).result); }),
      ElementsAre("WARNING invalid pressure algorithm type\tPressureData::readFromStream()"));
}

TEST(TiltPacket, IsTwoSignedBytes) {
  const ReadTilt read({6, 0xFF, 0x80, 0x11, 0x22});
  EXPECT_TRUE(read.result);
  EXPECT_EQ(read.packet.tiltX, -1);
  EXPECT_EQ(read.packet.tiltY, -128);
  EXPECT_EQ(ReadTilt({6, 0x7F, 0, 0, 0}).packet.tiltX, 127);
}

TEST(TimePacket, CombinesThreeSignedBytes) {
  EXPECT_EQ(ReadTime({6, 17, 0x00, 0x00, 0x7F}).packet.timestamp, 127U);
  EXPECT_EQ(ReadTime({6, 17, 0x00, 0x01, 0x00}).packet.timestamp, 256U);
  EXPECT_EQ(ReadTime({6, 17, 0x00, 0x01, 0x80}).packet.timestamp, 0xFFFFFF80U);
  EXPECT_EQ(ReadTime({6, 17, 0x80, 0x00, 0x00}).packet.timestamp, 0xFF800000U);
  EXPECT_EQ(ReadTime({6, 17, 0x01, 0x80, 0x00}).packet.timestamp, 0xFFFF8000U);
  EXPECT_EQ(ReadTime({6, 17, 0x12, 0x34, 0x56}).packet.timestamp, 0x123456U);
}

TEST(TimePacket, OfAnotherKindHasTimeZero) {
  const ReadTime before({6, 17, 0, 0, 5});
  const ReadTime read(before.packet, {6, 0x10, 1, 2, 3});
  EXPECT_TRUE(read.result);
  EXPECT_EQ(read.packet.timestamp, 0U);
}

TEST(TimePacket, WithAWrongLengthResetsTheTime) {
  const ReadTime before({6, 17, 0, 0, 5});
  const ReadTime read(before.packet, {7, 17, 1, 2, 3});
  EXPECT_FALSE(read.result);
  EXPECT_EQ(read.packet.timestamp, 0U);
}

TEST(StatusPacket, SaysWhetherALayerStartsAndThePenIsDown) {
  EXPECT_EQ(ReadStatus({3, 0x81}).packet.status, 0x81);
  EXPECT_TRUE(ReadStatus({3, 0x80}).packet.startsLayer());
  EXPECT_FALSE(ReadStatus({3, 0x80}).packet.penIsDown());
  EXPECT_TRUE(ReadStatus({3, 0x7F}).packet.penIsDown());
  EXPECT_FALSE(ReadStatus({3, 0x7E}).packet.startsLayer());
  EXPECT_FALSE(ReadStatus({3, 0x7E}).packet.penIsDown());
}

TEST(StatusPacket, CutShortIsPenUp) {
  const ReadStatus read({3});
  EXPECT_TRUE(read.result);
  EXPECT_EQ(read.packet.status, 0);
}

}  // namespace
