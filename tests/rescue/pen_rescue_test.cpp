#include "rescue/pen_rescue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

#include "log/logger.h"
#include "tests/penfile/parsing.h"
#include "tests/support/pen/pen_file_builder.h"

namespace {

using pentest::Bytes;
using pentest::PenFileBuilder;
using rescue::LeftOut;
using rescue::PenRescue;
using rescue::rescuePenRecording;
using rescue::Stretch;
using rescue::TextTransfer;
using testing::ElementsAre;

using Shape = std::vector<std::vector<std::size_t>>;

std::string textOf(const PenFileBuilder& recording) {
  return {recording.data().begin(), recording.data().end()};
}

std::string& operator+=(std::string& bytes, const PenFileBuilder& more) {
  return bytes += textOf(more);
}

std::string operator+(std::string bytes, const PenFileBuilder& more) {
  return std::move(bytes += more);
}

PenFileBuilder header() {
  return PenFileBuilder()
      .descriptor(0x10, 2, 7, 1)
      .physical({1, 2, 3, 4, 5, 6, 7})
      .dateTime({20, 12, 5, 31, 14, 7, 9});
}

// A pen-down, `count` points to the right and a pen-up: each point takes 12 bytes, the pen-down and
// the pen-up 3 each. The stroke's number sets it apart from others.
PenFileBuilder stroke(int number, int count = 12) {
  PenFileBuilder packets;
  packets.status(0x01);
  for (int i = 0; i < count; ++i) {
    packets.coordinate(1000 + 37 * i + number, 2000 + 400 * number + i % 3);
    packets.pressure(1, 600 + 4 * i);
  }
  return packets.status(0x00);
}

constexpr std::size_t kHeader = 24;
constexpr std::size_t kStroke = 12 * 12 + 6;

std::string recordingOf(int strokes) {
  std::string bytes = textOf(header());
  for (int number = 0; number < strokes; ++number)
    bytes = bytes + stroke(number);
  return bytes;
}

// Where the packets of a point stand in `recordingOf`.
std::size_t placeOf(std::size_t stroke, std::size_t point) {
  return kHeader + kStroke * stroke + 3 + 12 * point;
}

Shape shapeOf(const std::string& bytes) {
  const pentest::Parsed parsed(Bytes(bytes.begin(), bytes.end()));
  EXPECT_TRUE(parsed.complete());
  return parsed.shape();
}

class PenRescueTest : public pentest::SilentTest {};

void expectUnchanged(const std::string& recording) {
  const PenRescue result = rescuePenRecording(recording);
  EXPECT_TRUE(result.sound);
  EXPECT_TRUE(result.saved);
  EXPECT_EQ(result.bytes, recording);
  EXPECT_THAT(result.leftOut, ElementsAre());
}

TEST_F(PenRescueTest, GivesASoundRecordingBackByteForByte) {
  expectUnchanged(recordingOf(5));
  EXPECT_EQ(rescuePenRecording(recordingOf(5)).pointsKept, 60U);
}

TEST_F(PenRescueTest, LeavesUnknownPacketsAloneThatHoldWhatLooksLikePackets) {
  const PenFileBuilder odd =
      PenFileBuilder().unknown(0x77, 14, {97, 6, 4, 0, 4, 0, 97, 6, 4, 1, 4, 1});
  expectUnchanged(recordingOf(3) + odd + stroke(4));
}

TEST_F(PenRescueTest, LeavesPointsAboveTheSheetAndALoneLayerStatusAlone) {
  expectUnchanged(recordingOf(2) + PenFileBuilder().coordinate(-3, -9).status(0x80) + stroke(3));
}

TEST_F(PenRescueTest, LeavesPacketsWithoutALengthCodeAlone) {
  expectUnchanged(recordingOf(2) + PenFileBuilder().unknown(0x42, 0) + stroke(3));
}

TEST_F(PenRescueTest, LeavesOutZeroBytesAndKeepsThePacketsAroundThem) {
  const std::string front = recordingOf(2);
  const PenRescue result = rescue::rescuePenRecording(front + std::string(512, '\0') + stroke(3));
  EXPECT_EQ(result.bytes, front + stroke(3));
  EXPECT_THAT(result.leftOut,
              ElementsAre(Stretch{front.size(), front.size() + 512, LeftOut::unreadable}));
}

TEST_F(PenRescueTest, LeavesPointsOfASoundRecordingAloneThatLeapFarOutOfTheirStrokes) {
  std::string recording = recordingOf(12);
  recording[placeOf(5, 6) + 2] = 0x50;
  expectUnchanged(recording);
}

TEST_F(PenRescueTest, LeavesRunsAloneThatASoundRecordingHoldsTwice) {
  for (const std::size_t points : {1U, 5U, 11U}) {
    std::string recording = recordingOf(6);
    recording.insert(placeOf(1, points), recording.substr(placeOf(1, 0), 12 * points));
    expectUnchanged(recording);
  }
}

// Tag 75 with 36 times 15 bytes: 45 points up to a packet's end, and all packets are whole.
TEST_F(PenRescueTest, LeavesAnUnknownPacketAloneThatHoldsPartOfADrawing) {
  std::string recording = recordingOf(12);
  const std::size_t head = placeOf(3, 2) + 6;
  ASSERT_EQ(kStroke * 3 + 12 * std::size_t{7} + 6, 540U);
  recording[head] = 0x75;
  recording[head + 1] = static_cast<char>(0x80 | 15);
  expectUnchanged(recording);
}

TEST_F(PenRescueTest, LeavesUnknownPacketsAloneWhoseTagIsAQuestionMark) {
  expectUnchanged(recordingOf(2) + PenFileBuilder().unknown('?', 3, {1}));
  // Without any byte from 80 up, but also without many a "?" in the positions.
  PenFileBuilder low = PenFileBuilder().descriptor(0x10, 2, 7, 1).unknown('?', 3, {1});
  for (int i = 0; i < 40; ++i)
    low.coordinate(256 + i, 512 + i);
  expectUnchanged(textOf(low.unknown('?', 3, {0})));
}

TEST_F(PenRescueTest, CallsNoFileSoundThatIsNotReadToItsEndInWholePackets) {
  EXPECT_TRUE(rescue::isSoundPenRecording(recordingOf(1)));
  EXPECT_FALSE(rescue::isSoundPenRecording(""));
  EXPECT_FALSE(rescue::isSoundPenRecording(recordingOf(1) + "a"));
  EXPECT_FALSE(rescue::isSoundPenRecording(recordingOf(1) + "\x42\x40" + "abc"));
  EXPECT_FALSE(rescue::isSoundPenRecording(recordingOf(1) + std::string(1, '\0')));
  EXPECT_FALSE(rescue::isSoundPenRecording(recordingOf(1) + std::string(8, '\0')));
  EXPECT_FALSE(rescue::isSoundPenRecording(recordingOf(1) + "\x42\x01"));
  EXPECT_FALSE(rescue::isSoundPenRecording(recordingOf(1) + recordingOf(1)));
  EXPECT_FALSE(rescue::isSoundPenRecording(recordingOf(1) + PenFileBuilder().pressure(2, 7)));
  EXPECT_FALSE(rescue::isSoundPenRecording(recordingOf(1).replace(3, 1, "\x03")));
}

TEST_F(PenRescueTest, LeavesOutThePacketWhoseLengthIsWrongAndKeepsAllOthers) {
  std::string damaged = recordingOf(4);
  const std::size_t pressure = placeOf(1, 5) + 6;
  damaged[pressure + 1] = 0x33;
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_TRUE(result.saved);
  EXPECT_FALSE(result.sound);
  EXPECT_THAT(result.leftOut, ElementsAre(Stretch{pressure, pressure + 6, LeftOut::unreadable}));
  EXPECT_EQ(result.bytes, recordingOf(4).erase(pressure, 6));
  EXPECT_EQ(result.pointsKept, 48U);
}

TEST_F(PenRescueTest, EndsTheStrokeWhereBytesAreMissing) {
  std::string damaged = recordingOf(4);
  // From the middle of one coordinate packet to the middle of a pressure packet: four points.
  damaged.erase(placeOf(2, 4) + 3, 4 * 12 + 5);
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(shapeOf(result.bytes), (Shape{{12, 12, 4, 3, 12}}));
  EXPECT_EQ(result.strokesBroken, 1U);
}

// The same points with the pen's clock behind each: 18 bytes.
std::string recordingWithTimes(int points, int timeLeapAt) {
  std::string bytes = recordingOf(2) + PenFileBuilder().status(0x01);
  for (int i = 0; i < points; ++i) {
    const unsigned time = 1000U + 8U * static_cast<unsigned>(i) + (i >= timeLeapAt ? 5000U : 0U);
    bytes += PenFileBuilder()
                 .coordinate(1000 + 40 * i, 4000)
                 .pressure(1, 800)
                 .time(17, 0, time >> 8, time & 0xFFU);
  }
  return bytes + PenFileBuilder().status(0x00);
}

TEST_F(PenRescueTest, EndsTheStrokeWhereTheClockLeapsOverAGap) {
  const std::size_t pressure = recordingOf(2).size() + 3 + 10UL * 18 + 6;
  for (const bool leaps : {false, true}) {
    std::string damaged = recordingWithTimes(20, leaps ? 10 : 20);
    damaged[pressure + 1] = 0x33;
    EXPECT_EQ(shapeOf(rescuePenRecording(damaged).bytes),
              leaps ? (Shape{{12, 12, 11, 9}}) : (Shape{{12, 12, 20}}));
  }
}

TEST_F(PenRescueTest, PutsPressureAndTiltBackBehindAPenDownThatItPutsIn) {
  std::string damaged = recordingOf(2) + PenFileBuilder().status(0x01);
  for (int i = 0; i < 20; ++i) {
    damaged += PenFileBuilder().coordinate(1000 + 40 * i, 4000);
    if (i == 2) damaged += PenFileBuilder().pressure(1, 800).tilt(20, -30);
  }
  const std::size_t end = damaged.size();
  // Points 8 to 15, the last two bytes of the first one only, and the head of the next.
  damaged.replace(end - 12UL * 6 + 3, 8UL * 6, std::string(8UL * 6, '\xFF'));
  const PenRescue result = rescuePenRecording(damaged);
  const pentest::Parsed parsed(Bytes(result.bytes.begin(), result.bytes.end()));
  EXPECT_EQ(parsed.shape(), (Shape{{12, 12, 8, 3}}));
  for (std::size_t i = parsed.points().size() - 3; i < parsed.points().size(); ++i) {
    EXPECT_EQ(parsed.points()[i].pressure.value, 200U);
    EXPECT_EQ(parsed.points()[i].tiltX.value, 20);
    EXPECT_EQ(parsed.points()[i].tiltY.value, -30);
  }
}

TEST_F(PenRescueTest, PutsInADescriptorThatIsMissing) {
  const PenRescue result = rescuePenRecording(recordingOf(3).substr(6));
  EXPECT_TRUE(result.descriptorMended);
  EXPECT_EQ(result.bytes,
            textOf(PenFileBuilder().descriptor(0, 2, 0, 0)) + recordingOf(3).substr(6));
}

TEST_F(PenRescueTest, PutsADamagedDescriptorRightAndKeepsItsOtherBytes) {
  for (const std::size_t byte : {0U, 1U, 3U}) {
    std::string damaged = recordingOf(3);
    damaged[byte] = 0x55;
    const PenRescue result = rescuePenRecording(damaged);
    EXPECT_EQ(result.bytes, recordingOf(3)) << "byte " << byte;
    EXPECT_TRUE(result.descriptorMended);
    EXPECT_THAT(result.leftOut, ElementsAre());
  }
}

TEST_F(PenRescueTest, LeavesOutJunkInFrontAndBehind) {
  const std::string front = "Content-Type: text/plain\r\n\r\n";
  const std::string behind(100, '\0');
  const PenRescue result = rescuePenRecording(front + recordingOf(3) + behind);
  const std::size_t end = front.size() + recordingOf(3).size();
  EXPECT_EQ(result.bytes, recordingOf(3));
  EXPECT_THAT(result.leftOut, ElementsAre(Stretch{0, front.size(), LeftOut::junkInFront},
                                          Stretch{end, end + 100, LeftOut::junkBehind}));
}

TEST_F(PenRescueTest, LeavesOutThePacketInWhichTheFileIsCut) {
  const std::string cut = recordingOf(3).substr(0, placeOf(2, 6) + 4);
  const PenRescue result = rescuePenRecording(cut);
  EXPECT_EQ(result.bytes, recordingOf(3).substr(0, placeOf(2, 6)));
}

TEST_F(PenRescueTest, MakesASecondRecordingFurtherLayersWithoutItsHeader) {
  const std::string first = recordingOf(3);
  const PenRescue result = rescuePenRecording(first + recordingOf(2));
  EXPECT_EQ(shapeOf(result.bytes), (Shape{{12, 12, 12}, {12, 12}}));
  EXPECT_EQ(result.furtherRecordings, 1U);
  EXPECT_THAT(result.leftOut,
              ElementsAre(Stretch{first.size(), first.size() + kHeader, LeftOut::headerPacket}));
}

TEST_F(PenRescueTest, LiftsThePenWhereTheFirstRecordingEndsInsideAStroke) {
  const std::string first = recordingOf(3).substr(0, placeOf(2, 6));
  const PenRescue result = rescuePenRecording(first + recordingOf(2));
  EXPECT_EQ(shapeOf(result.bytes), (Shape{{12, 12, 6}, {12, 12}}));
}

// Points at y 3338 and one pressure hold 0D 0A; 0A alone is in every packet.
std::string recordingWithLineEnds() {
  std::string bytes = recordingOf(4) + PenFileBuilder().status(0x01);
  for (int i = 0; i < 20; ++i)
    bytes += PenFileBuilder().coordinate(2900 + i, 3338 + i % 3).pressure(1, 778 + 256 * i);
  return bytes + PenFileBuilder().status(0x00);
}

std::string replaced(const std::string& bytes, const std::string& old, const std::string& by) {
  std::string result;
  for (std::size_t i = 0; i < bytes.size();) {
    const bool here = bytes.compare(i, old.size(), old) == 0;
    result += here ? by : bytes.substr(i, 1);
    i += here ? old.size() : 1;
  }
  return result;
}

TEST_F(PenRescueTest, TakesOutTheCarriageReturnsThatATransferPutIn) {
  const std::string damaged = replaced(recordingWithLineEnds(), "\n", "\r\n");
  ASSERT_GT(damaged.size(), recordingWithLineEnds().size() + 20);
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(result.bytes, recordingWithLineEnds());
  EXPECT_EQ(result.transfer, TextTransfer::carriageReturnsAdded);
}

TEST_F(PenRescueTest, CountsLeftOutBytesInTheFileAlsoAfterATransferIsUndone) {
  std::string damaged = replaced(recordingWithLineEnds(), "\n", "\r\n");
  const std::size_t size = damaged.size();
  damaged += std::string(50, '\0');
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_THAT(result.leftOut, ElementsAre(Stretch{size, size + 50, LeftOut::junkBehind}));
}

TEST_F(PenRescueTest, PutsBackTheCarriageReturnsThatATransferTookOut) {
  const std::string damaged = replaced(recordingWithLineEnds(), "\r\n", "\n");
  ASSERT_LT(damaged.size(), recordingWithLineEnds().size());
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(result.bytes, recordingWithLineEnds());
  EXPECT_EQ(result.transfer, TextTransfer::carriageReturnsRemoved);
}

TEST_F(PenRescueTest, RestoresTagsThatTurnedIntoQuestionMarksAndDropsThePointsThatDid) {
  std::string sound = textOf(header());
  for (const int number : {1, 4, 6})
    sound += stroke(number);
  sound = sound + PenFileBuilder().status(0x80) + stroke(11);
  std::string damaged = sound;
  for (char& byte : damaged)
    if (static_cast<unsigned char>(byte) >= 0x80) byte = '?';
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_FALSE(result.sound);
  EXPECT_EQ(result.transfer, TextTransfer::highBytesReplaced);
  const pentest::Parsed mended(Bytes(result.bytes.begin(), result.bytes.end()));
  const pentest::Parsed drawn(Bytes(sound.begin(), sound.end()));
  EXPECT_EQ(mended.shape().size(), 2U);
  std::vector<std::pair<double, double>> places;
  for (const Orvo::Point& point : drawn.points())
    places.emplace_back(point.x.value, point.y.value);
  // The low byte of y is below 80 in all of these strokes, that of x in more than half of the
  // points.
  EXPECT_GT(mended.points().size(), 20U);
  for (const Orvo::Point& point : mended.points())
    EXPECT_THAT(places, testing::Contains(std::make_pair(point.x.value, point.y.value)));
}

TEST_F(PenRescueTest, LeavesOutTheSecondOfTwoEqualRuns) {
  for (const std::size_t length : {16U, 40U, 200U, 500U}) {
    std::string damaged = recordingOf(6);
    const std::size_t begin = placeOf(1, 3) + 2;
    damaged.insert(begin + length, damaged.substr(begin, length));
    const PenRescue result = rescuePenRecording(damaged);
    EXPECT_EQ(result.bytes, recordingOf(6)) << length;
  }
}

TEST_F(PenRescueTest, KeepsStrokesThatTheRecordingHoldsTwice) {
  expectUnchanged(textOf(header()) + stroke(1) + stroke(2) + stroke(1) + stroke(2) + stroke(3));
}

TEST_F(PenRescueTest, LiftsThePenWhereThePenUpIsLost) {
  std::string damaged = recordingOf(5);
  damaged.replace(placeOf(1, 12), 2, "\xFF\xFF");
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(shapeOf(result.bytes), (Shape{{12, 12, 12, 12, 12}}));
}

TEST_F(PenRescueTest, PutsThePenDownWhereThePenDownIsLost) {
  std::string damaged = recordingOf(5);
  damaged.replace(placeOf(2, 0) - 3, 2, "\xFF\xFF");
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(shapeOf(result.bytes), (Shape{{12, 12, 12, 12, 12}}));
  EXPECT_EQ(result.statusesMended, 1U);
}

// The length of a pressure packet is wrong, too, so that the recording is not sound.
TEST_F(PenRescueTest, TakesALayerThatStandsInPlaceOfAPenUpOrPenDownForOne) {
  for (const std::size_t place : {placeOf(2, 0) - 1, placeOf(2, 12) + 2}) {
    std::string damaged = recordingOf(5);
    damaged[placeOf(0, 2) + 7] = 0x33;
    damaged[place] = static_cast<char>(damaged[place] ^ 0x80);
    const PenRescue result = rescuePenRecording(damaged);
    EXPECT_EQ(shapeOf(result.bytes), (Shape{{12, 12, 12, 12, 12}})) << place;
  }
}

TEST_F(PenRescueTest, KeepsALayerBetweenStrokesOfADamagedRecording) {
  std::string damaged = recordingOf(3) + PenFileBuilder().status(0x80) + stroke(4);
  damaged[placeOf(0, 2) + 7] = 0x33;
  EXPECT_EQ(shapeOf(rescuePenRecording(damaged).bytes), (Shape{{12, 12, 12}, {12}}));
}

TEST_F(PenRescueTest, DropsThePacketBeforeAGapThatIsHalfOfTwo) {
  std::string damaged = recordingOf(4);
  // The position keeps its first two bytes; then the middle of a later pressure packet follows.
  damaged.erase(placeOf(1, 3) + 4, 4 * 12 + 3);
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(shapeOf(result.bytes), (Shape{{12, 3, 4, 12, 12}}));
}

TEST_F(PenRescueTest, DropsAPointThatLeapsFarOutOfItsStroke) {
  std::string damaged = recordingOf(12);
  damaged[placeOf(5, 6) + 2] = 0x50;
  const PenRescue result = rescuePenRecording(damaged + "a");
  EXPECT_EQ(result.bytes, recordingOf(12).erase(placeOf(5, 6), 6));
  EXPECT_EQ(result.pointsDropped, 1U);
}

TEST_F(PenRescueTest, DropsAPointFarAboveTheSheetAndKeepsThePathOfAPenThatLeavesIt) {
  PenFileBuilder leaves = PenFileBuilder().status(0x01);
  for (const int y : {40, -20, -70})
    leaves.coordinate(900, y);
  leaves.status(0x00);
  const std::string sound = recordingOf(3) + leaves + stroke(5);
  std::string damaged = sound + "a";
  damaged[placeOf(1, 4) + 4] = '\xC0';
  EXPECT_EQ(rescuePenRecording(damaged).bytes, std::string(sound).erase(placeOf(1, 4), 6));
}

TEST_F(PenRescueTest, FindsPacketsAgainThatAChangedHeadSwallows) {
  std::string damaged = recordingOf(12);
  // 45 points up to a packet's end, see above, and a file that ends inside a packet.
  const std::size_t head = placeOf(3, 2) + 6;
  damaged[head] = 0x75;
  damaged[head + 1] = static_cast<char>(0x80 | 15);
  const PenRescue result = rescuePenRecording(damaged + "a");
  EXPECT_EQ(result.pointsKept, 144U);
}

TEST_F(PenRescueTest, SavesTheOnlyPointOfARecordingThatIsCutBehindIt) {
  const PenFileBuilder point =
      PenFileBuilder().descriptor(0x10, 2, 7, 1).status(0x01).coordinate(100, 200);
  const PenRescue result = rescuePenRecording(textOf(point) + "a");
  EXPECT_EQ(result.bytes, textOf(point));
  EXPECT_EQ(result.pointsKept, 1U);
}

TEST_F(PenRescueTest, KeepsEveryPointOfAFewThatLieFarApart) {
  PenFileBuilder few = PenFileBuilder().descriptor(0x10, 2, 7, 1).status(0x01);
  few.coordinate(0, 10).coordinate(100, 200).coordinate(300, 50).coordinate(2000, 4000);
  for (const std::string& behind : {std::string("\xF1"), std::string("\x42\x40")})
    EXPECT_EQ(rescuePenRecording(textOf(few) + behind).bytes, textOf(few));
}

// Tag 97 with one bit flipped, and the only one of its kind.
TEST_F(PenRescueTest, LeavesOutAPacketOfALoneUnknownTagThatIsAsLongAsAPoint) {
  std::string damaged = recordingOf(4);
  damaged[placeOf(1, 5)] ^= 0x08;
  const PenRescue result = rescuePenRecording(damaged + "a");
  EXPECT_EQ(result.pointsKept, 47U);
  EXPECT_EQ(result.bytes.find("\x69\x06"), std::string::npos);
  EXPECT_THAT(result.leftOut,
              testing::Contains(Stretch{placeOf(1, 5), placeOf(1, 5) + 6, LeftOut::unreadable}));
}

TEST_F(PenRescueTest, KeepsALoneUnknownPacketOfADamagedRecordingThatIsLikeNoOther) {
  const std::string sound =
      recordingOf(2) + PenFileBuilder().unknown(0x21, 5, {0x4B, 0, 1}) + stroke(4);
  EXPECT_EQ(rescuePenRecording(sound + "a").bytes, sound);
}

TEST_F(PenRescueTest, GoesOnBehindAPacketOfLengthZero) {
  std::string damaged = recordingOf(4);
  damaged.insert(placeOf(2, 0) - 3, "\x42\x40");
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(result.bytes, recordingOf(4));
}

TEST_F(PenRescueTest, KeepsUnknownPacketsThatTheRecordingUses) {
  std::string sound = textOf(header());
  for (int number = 0; number < 6; ++number) {
    sound += stroke(number);
    sound += PenFileBuilder().unknown(0x21, 5, {0x4B, 0, 1});
  }
  const std::string damaged =
      sound.substr(0, placeOf(0, 3)) + std::string(9, '\xFF') + sound.substr(placeOf(0, 3));
  const PenRescue result = rescuePenRecording(damaged);
  std::size_t count = 0;
  for (std::size_t i = result.bytes.find("\x21\x05\x4B"); i != std::string::npos;
       i = result.bytes.find("\x21\x05\x4B", i + 1))
    ++count;
  EXPECT_EQ(count, 6U);
}

TEST_F(PenRescueTest, RefusesWhatHoldsNoRecording) {
  std::string noise;
  std::uint32_t state = 1;
  for (int i = 0; i < 50'000; ++i) {
    state = state * 1664525 + 1013904223;
    noise += static_cast<char>(state >> 24);
  }
  for (const std::string& file :
       {std::string(), std::string("a"), std::string(5000, '\0'), std::string(5000, '\xFF'),
        std::string("<?xml version=\"1.0\"?><ink><trace>1 2, 3 4</trace></ink>"), noise}) {
    const PenRescue result = rescuePenRecording(file);
    EXPECT_FALSE(result.saved) << file.substr(0, 20);
    EXPECT_EQ(result.bytes, "");
  }
}

TEST_F(PenRescueTest, ReadsLongRecordingsInParts) {
  std::string sound = recordingOf(60);
  const std::string body = sound.substr(kHeader);
  for (int i = 0; i < 79; ++i)
    sound += body;
  ASSERT_GT(sound.size(), 700'000U);
  const std::size_t gap = kHeader + 2000 * kStroke;
  std::string damaged = sound;
  damaged.replace(gap, 300'000, std::string(300'000, '\xFF'));
  const PenRescue result = rescuePenRecording(damaged);
  // The end of the gap lies 300,000 bytes, 2,000 strokes, further on.
  EXPECT_EQ(result.bytes, sound.substr(0, gap) + sound.substr(gap + 300'000));
  EXPECT_THAT(result.leftOut, ElementsAre(Stretch{gap, gap + 300'000, LeftOut::unreadable}));
}

TEST_F(PenRescueTest, TakesALeapInASoundRecordingForDamageWhereThatIsWanted) {
  std::string recording = recordingOf(12);
  recording[placeOf(5, 6) + 2] = 0x50;
  const PenRescue result = rescuePenRecording(recording, rescue::Mend::doubtful);
  EXPECT_FALSE(result.sound);
  EXPECT_EQ(result.bytes, recordingOf(12).erase(placeOf(5, 6), 6));
  EXPECT_EQ(result.pointsDropped, 1U);
}

TEST_F(PenRescueTest, LeavesASoundRecordingAloneThatLooksSoundEvenWhereDoubtfulOnesAreMended) {
  const PenRescue result = rescuePenRecording(recordingOf(12), rescue::Mend::doubtful);
  EXPECT_TRUE(result.sound);
  EXPECT_EQ(result.bytes, recordingOf(12));
  EXPECT_EQ(result.pointsKept, 144U);
}

// Two bytes are left of the descriptor: they would make one with four bytes of the next packet.
TEST_F(PenRescueTest, MakesNoDescriptorOutOfBytesOfAnotherPacket) {
  const std::string rest = recordingOf(3).substr(6);
  const PenRescue result = rescuePenRecording("\x01\x06" + rest);
  EXPECT_EQ(result.bytes, textOf(PenFileBuilder().descriptor(0, 2, 0, 0)) + rest);
  EXPECT_TRUE(result.descriptorMended);
  EXPECT_THAT(result.leftOut, ElementsAre(Stretch{0, 2, LeftOut::unreadable}));
}

// A stroke without the pen-down in front of it and the pen-up behind it.
std::string pointsOf(int number) {
  const std::string whole = textOf(stroke(number));
  return whole.substr(3, whole.size() - 6);
}

// A recording with a status in front of the points of each of eight strokes.
std::string recordingWithStatuses(const std::vector<unsigned>& statuses) {
  std::string bytes = textOf(header());
  for (int number = 0; number < 8; ++number) {
    bytes += PenFileBuilder().status(statuses[static_cast<std::size_t>(number) % statuses.size()]);
    bytes += pointsOf(number);
  }
  return bytes;
}

TEST_F(PenRescueTest, KeepsTheOrderOfStatusesThatARecordingUsesOften) {
  using Statuses = std::vector<unsigned>;
  // Pen-downs alone; pen-ups alone; layers between pen-downs; a layer of its own kind for each.
  for (const Statuses& statuses : {Statuses{0x01}, Statuses{0x00}, Statuses{0x01, 0x80},
                                   Statuses{0x80, 0x82, 0x84, 0x86, 0x88, 0x8A, 0x8C, 0x8E}}) {
    const std::string sound = recordingWithStatuses(statuses);
    const PenRescue result = rescuePenRecording(sound + "a");
    EXPECT_EQ(result.bytes, sound) << statuses.front() << " and " << statuses.size() - 1;
    EXPECT_EQ(result.statusesMended, 0U);
  }
}

TEST_F(PenRescueTest, LeavesThePenUpBehindAGapWhereTheRecordingDrawsWithThePenUp) {
  std::string damaged = textOf(header());
  for (int i = 0; i < 96; ++i) {
    if (i % 12 == 0) damaged += PenFileBuilder().status(0x00);
    damaged += PenFileBuilder().coordinate(1000 + 37 * i, 2000 + i % 3).pressure(1, 600);
  }
  // As above: four points and the parts of two others, here of the third part of the line.
  constexpr std::size_t kPoint = 12;    // a coordinate and a pressure
  constexpr std::size_t kStatuses = 9;  // three of three bytes
  damaged.erase(kHeader + kStatuses + 28 * kPoint + 3, 4 * kPoint + 5);
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(shapeOf(result.bytes), (Shape{{28, 63}}));
  EXPECT_EQ(result.strokesBroken, 1U);
  EXPECT_EQ(result.statusesMended, 0U);
}

TEST_F(PenRescueTest, DropsALonePointBetweenGapsFarOutsideOfTheDrawing) {
  const std::string zeros(20, '\0');
  const std::string damaged = recordingOf(4) + zeros +
                              PenFileBuilder().status(0x01).coordinate(30000, 30000).status(0x00) +
                              zeros + stroke(5);
  const PenRescue result = rescuePenRecording(damaged);
  EXPECT_EQ(result.bytes, recordingOf(4) + PenFileBuilder().status(0x01).status(0x00) + stroke(5));
  EXPECT_EQ(result.pointsDropped, 1U);
}

std::string withQuestionMarks(std::string bytes) {
  for (char& byte : bytes)
    if (static_cast<unsigned char>(byte) >= 0x80) byte = '?';
  return bytes;
}

// Times and tilts, and no byte from 80 up but in the tags and where it is asked for.
std::string recordingOfLowBytes(int highFrom, int highTo) {
  std::string bytes = textOf(header());
  for (int number = 0; number < 2; ++number) {
    bytes += PenFileBuilder().status(0x01).tilt(20, 30);
    for (int i = 0; i < 12; ++i) {
      const bool isHigh = number == 0 && i >= highFrom && i < highTo;
      const auto time = static_cast<unsigned>(8 * i);
      bytes += PenFileBuilder()
                   .coordinate(1024 + 8 * i + (isHigh ? 128 : 0), 3900 + number)
                   .pressure(1, 800)
                   .time(17, 0, 4, time);
    }
    bytes += PenFileBuilder().status(0x00);
  }
  return bytes;
}

TEST_F(PenRescueTest, RestoresTheTagsOfTimesAndDropsATiltThatHeldAQuestionMark) {
  const std::string sound = recordingOfLowBytes(0, 0);
  const PenFileBuilder tilt = PenFileBuilder().tilt(20, -30);
  const PenRescue result = rescuePenRecording(withQuestionMarks(sound + tilt) + "?");
  EXPECT_EQ(result.bytes, sound);
  EXPECT_EQ(result.transfer, TextTransfer::highBytesReplaced);
  EXPECT_EQ(result.pointsKept, 24U);
  EXPECT_EQ(result.pointsDropped, 0U);
  EXPECT_THAT(result.leftOut,
              ElementsAre(Stretch{sound.size(), sound.size() + 6, LeftOut::madeUp},
                          Stretch{sound.size() + 6, sound.size() + 7, LeftOut::junkBehind}));
}

TEST_F(PenRescueTest, EndsAStrokeInWhichManyPointsInARowHeldAQuestionMark) {
  const PenRescue two = rescuePenRecording(withQuestionMarks(recordingOfLowBytes(4, 6)) + "?");
  EXPECT_EQ(shapeOf(two.bytes), (Shape{{10, 12}}));
  EXPECT_EQ(two.strokesBroken, 0U);
  const PenRescue five = rescuePenRecording(withQuestionMarks(recordingOfLowBytes(4, 9)) + "?");
  EXPECT_EQ(shapeOf(five.bytes), (Shape{{4, 3, 12}}));
  EXPECT_EQ(five.strokesBroken, 1U);
}

// A point of a negative x: its high byte has turned into "?", so that it seems far to the right.
TEST_F(PenRescueTest, DropsAPointWhoseHighByteHeldAQuestionMarkUnlessItFitsItsNeighbours) {
  for (const bool fits : {false, true}) {
    const int shift = fits ? 0x3F00 - 0x0400 : 0;
    std::string sound = textOf(header()) + PenFileBuilder().status(0x01);
    for (int i = 0; i < 12; ++i) {
      const int x = 1024 + shift + 8 * i;
      sound += PenFileBuilder().coordinate(i == 6 && !fits ? -0x7F00 + x % 256 : x, 3900);
    }
    sound += PenFileBuilder().status(0x00);
    const PenRescue result = rescuePenRecording(withQuestionMarks(sound) + "?");
    EXPECT_EQ(result.pointsKept, fits ? 12U : 11U);
    EXPECT_EQ(result.pointsDropped, fits ? 0U : 1U);
  }
}

TEST_F(PenRescueTest, KeepsWhatStandsThereTwiceWhereThatIsUsual) {
  std::string recording = recordingOf(12);
  // The second half of a stroke again behind it, in five strokes.
  constexpr std::size_t kPoint = 12;  // a coordinate and a pressure
  for (const std::size_t stroke : {9U, 7U, 5U, 3U, 1U})
    recording.insert(placeOf(stroke, 12), recording.substr(placeOf(stroke, 6), 6 * kPoint));
  EXPECT_EQ(rescuePenRecording(recording + "a").bytes, recording);
}

// A stroke in which five points hold the two bytes of a word.
std::string recordingWithWords(int word) {
  std::string bytes = textOf(header()) + PenFileBuilder().status(0x01);
  for (int i = 0; i < 12; ++i)
    bytes += PenFileBuilder().coordinate(i < 5 ? word : 3100 + 40 * i, 2100 + 8 * i);
  return bytes + PenFileBuilder().status(0x00);
}

TEST_F(PenRescueTest, TellsAFewAddedCarriageReturnsFromThoseOfTheRecording) {
  const std::string sound = recordingWithWords(0x0C0A);
  const PenRescue undone = rescuePenRecording(replaced(sound, "\n", "\r\n"));
  EXPECT_EQ(undone.bytes, sound);
  EXPECT_EQ(undone.transfer, TextTransfer::carriageReturnsAdded);
  const std::string own = recordingWithWords(0x0D0A);
  const PenRescue kept = rescuePenRecording(own + "a");
  EXPECT_EQ(kept.bytes, own);
  EXPECT_EQ(kept.transfer, TextTransfer::none);
}

TEST(LeftOutBytes, HaveAReasonInWords) {
  using rescue::explain;
  EXPECT_EQ(explain(LeftOut::unreadable), "cannot be read");
  EXPECT_EQ(explain(LeftOut::junkInFront), "stands in front of the recording");
  EXPECT_EQ(explain(LeftOut::junkBehind), "stands behind the last whole packet");
  EXPECT_EQ(explain(LeftOut::doubled), "stands there twice");
  EXPECT_EQ(explain(LeftOut::headerPacket), "is the header of a further recording");
  EXPECT_EQ(explain(LeftOut::madeUp), "holds values that damage made up");
}

}  // namespace
