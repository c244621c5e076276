#include "facts/packet_reader.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>

#include "log/logger.h"
#include "penfile/pnx_parser.h"
#include "penfile/skip_watcher.h"
#include "rescue/pen_rescue.h"
#include "tests/facts/bytes.h"
#include "tests/support/pen/open_bytes.h"
#include "tests/support/pen/text_file.h"

namespace {

using facts::Oddity;
using facts::Packet;
using facts::PacketReader;
using Orvo::ParseFailure;
using pentest::Bytes;
using pentest::PenFileBuilder;

// A packet without its payload, which does not outlive the reader's next step.
struct Place {
  std::int64_t offset;
  unsigned tag;
  std::uint64_t size;
  Oddity oddity = Oddity::none;
  ParseFailure failure = ParseFailure::none;

  bool operator==(const Place&) const = default;
};

void PrintTo(const Place& place, std::ostream* out) {
  *out << "tag " << place.tag << " at " << place.offset << ", " << place.size << " bytes, oddity "
       << static_cast<int>(place.oddity) << ", failure " << static_cast<int>(place.failure);
}

std::vector<Place> placesOf(const Bytes& bytes, std::size_t part = 4096) {
  PacketReader reader(factstest::partsOf(bytes, part));
  std::vector<Place> places;
  while (const Packet* packet = reader.next()) {
    places.push_back({packet->offset, packet->tag, packet->size, packet->oddity, packet->failure});
  }
  return places;
}

std::vector<Place> placesOf(const PenFileBuilder& recording) {
  return placesOf(recording.data());
}

TEST(PacketReader, FindsEveryPacketWithItsPlaceAndSize) {
  PenFileBuilder recording;
  recording.descriptor().dateTime({7, 220, 6, 3, 6, 30, 0}).status(1).coordinate(10, 20);
  recording.unknown(33, 5, {75, 0, 1}).unknown(66, 0x42, {14, 216, 0, 0, 0, 0, 0, 0, 0, 0});
  recording.unknown(34, 0);
  const std::vector<Place> expected{{0, 1, 6},   {6, 49, 9},   {15, 241, 3}, {18, 97, 6},
                                    {24, 33, 5}, {29, 66, 12}, {41, 34, 2}};
  EXPECT_EQ(placesOf(recording), expected);
  EXPECT_EQ(placesOf(recording.data(), 1), expected) << "byte by byte";
}

TEST(PacketReader, ShowsThePayload) {
  PenFileBuilder recording;
  recording.descriptor(9, 2, 8, 7).coordinate(-1, 258);
  PacketReader reader(factstest::partsOf(recording.data(), 3));
  const Packet* packet = reader.next();
  ASSERT_NE(packet, nullptr);
  EXPECT_EQ(Bytes(packet->payload.begin(), packet->payload.end()), (Bytes{9, 2, 8, 7}));
  packet = reader.next();
  ASSERT_NE(packet, nullptr);
  EXPECT_EQ(packet->wordAt(0), 0xFFFF);
  EXPECT_EQ(packet->wordAt(2), 258);
  EXPECT_EQ(packet->lengthCode, 6);
  EXPECT_EQ(reader.next(), nullptr);
  EXPECT_EQ(reader.next(), nullptr);
}

TEST(PacketReader, GivesAPacketAsSoonAsItsBytesAreThere) {
  PenFileBuilder recording;
  recording.descriptor().coordinate(1, 2);
  std::size_t parts = 0;
  PacketReader reader([&]() -> std::string_view {
    if (++parts > 1) ADD_FAILURE() << "waits for more than it needs";
    return {reinterpret_cast<const char*>(recording.data().data()), recording.size()};
  });
  EXPECT_EQ(reader.next()->tag, 1);
  EXPECT_EQ(reader.next()->tag, 97);
  EXPECT_EQ(parts, 1U);
}

TEST(PacketReader, HasNothingInAnEmptyFile) {
  EXPECT_TRUE(placesOf(Bytes{}).empty());
}

TEST(PacketReader, MarksThePacketInWhichTheFileEnds) {
  EXPECT_EQ(placesOf(PenFileBuilder().descriptor().bytes({97, 6, 0})),
            (std::vector<Place>{{0, 1, 6}, {6, 97, 3, Oddity::cut}}));
  EXPECT_EQ(placesOf(PenFileBuilder().descriptor().bytes({33, 5, 1, 2})),
            (std::vector<Place>{{0, 1, 6}, {6, 33, 4, Oddity::cut}}));
  EXPECT_EQ(placesOf(PenFileBuilder().descriptor().bytes({33})),
            (std::vector<Place>{{0, 1, 6}, {6, 33, 1, Oddity::cut}}));
}

TEST(PacketReader, MarksWhereTheParserGivesUpAndGoesOn) {
  // The length code 7 instead of 6; the next two packets show where to go on.
  EXPECT_EQ(
      placesOf(PenFileBuilder().descriptor().bytes({97, 7, 0, 1, 0, 2}).coordinate(3, 4).status(0)),
      (std::vector<Place>{{0, 1, 6},
                          {6, 97, 6, Oddity::none, ParseFailure::wrongLength},
                          {12, 97, 6},
                          {18, 241, 3}}));
  EXPECT_EQ(
      placesOf(PenFileBuilder().descriptor().pressure(2, 100).status(0)),
      (std::vector<Place>{
          {0, 1, 6}, {6, 100, 6, Oddity::none, ParseFailure::badPressureAlgorithm}, {12, 241, 3}}));
  EXPECT_EQ(placesOf(PenFileBuilder().descriptor().descriptor().status(0)),
            (std::vector<Place>{
                {0, 1, 6}, {6, 1, 6, Oddity::none, ParseFailure::secondDescriptor}, {12, 241, 3}}));
  EXPECT_EQ(placesOf(PenFileBuilder().descriptor(0, 3).status(0)),
            (std::vector<Place>{{0, 1, 6, Oddity::none, ParseFailure::badCoordinateFormat},
                                {6, 241, 3}}));
  EXPECT_EQ(placesOf(PenFileBuilder().bytes({1, 7, 0, 2, 0, 0}).status(0)),
            (std::vector<Place>{{0, 1, 6, Oddity::none, ParseFailure::badDescriptorLength},
                                {6, 241, 3}}));
}

TEST(PacketReader, FindsTheRecordingBehindJunk) {
  EXPECT_EQ(placesOf(PenFileBuilder().bytes({'j', 'u', 'n', 'k'}).descriptor().status(0)),
            (std::vector<Place>{
                {0, 'j', 4, Oddity::none, ParseFailure::badFirstTag}, {4, 1, 6}, {10, 241, 3}}));
}

TEST(PacketReader, KeepsTheFirstSixteenBytesOfLongDamage) {
  Bytes bytes{1, 7};
  for (unsigned char i = 0; i < 100; ++i)
    bytes.push_back(static_cast<unsigned char>(i % 10 + 200));
  PacketReader reader(factstest::partsOf(bytes, 7));
  const Packet* packet = reader.next();
  ASSERT_NE(packet, nullptr);
  EXPECT_EQ(packet->size, 102U);
  ASSERT_EQ(packet->payload.size(), 16U);
  EXPECT_EQ(packet->payload.front(), 200);
  EXPECT_EQ(packet->payload.back(), 205);
}

TEST(PacketReader, MarksPacketsOfLengthZeroAndOne) {
  EXPECT_EQ(
      placesOf(PenFileBuilder().descriptor().unknown(33, 0x40, {1, 2, 3}).status(0).status(1)),
      (std::vector<Place>{{0, 1, 6}, {6, 33, 5, Oddity::endless}, {11, 241, 3}, {14, 241, 3}}));
  EXPECT_EQ(placesOf(PenFileBuilder().descriptor().unknown(33, 1).status(0).status(1)),
            (std::vector<Place>{{0, 1, 6},
                                {6, 33, 1, Oddity::tooShort},
                                {7, 1, 1, Oddity::none, ParseFailure::secondDescriptor},
                                {8, 241, 3},
                                {11, 241, 3}}));
}

TEST(PacketReader, TakesZeroBytesTogether) {
  EXPECT_EQ(placesOf(PenFileBuilder().descriptor().bytes({0, 0, 0, 0}).status(0)),
            (std::vector<Place>{{0, 1, 6}, {6, 0, 4, Oddity::zeros}, {10, 241, 3}}));
  EXPECT_EQ(placesOf(PenFileBuilder().descriptor().bytes({0, 0, 0})),
            (std::vector<Place>{{0, 1, 6}, {6, 0, 3, Oddity::zeros}}));
}

TEST(PacketReader, MarksUnknownPacketsThatHideKnownOnes) {
  // The length code 14 instead of 5 swallows a status and a coordinate.
  PenFileBuilder recording;
  recording.descriptor().unknown(33, 14, {1, 2, 3}).status(1).coordinate(5, 6).status(0);
  EXPECT_EQ(placesOf(recording),
            (std::vector<Place>{{0, 1, 6}, {6, 33, 14, Oddity::hidesPackets}, {20, 241, 3}}));
  // Swallows one packet, with the next one right behind it.
  PenFileBuilder one;
  one.descriptor().unknown(33, 8, {1, 2, 3}).status(1).coordinate(5, 6);
  EXPECT_EQ(placesOf(one.data(), 1),
            (std::vector<Place>{{0, 1, 6}, {6, 33, 8, Oddity::hidesPackets}, {14, 97, 6}}));
}

// What the parser reports of every recording in the corpus is what the reader marks.
class Corpus : public testing::Test {
 protected:
  template <class Check>
  static void eachFile(Check check) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PENWICK_CORPUS)) {
      SCOPED_TRACE(entry.path().filename().string());
      check(pentest::readText(entry.path()));
      ++count;
    }
    EXPECT_GT(count, 10);
  }
};

TEST_F(Corpus, FailsInTheReaderWhereItFailsInTheParser) {
  Orvo::Logger::silence();
  eachFile([](const std::string& text) {
    const Bytes bytes(text.begin(), text.end());
    Orvo::PnxParser parser(pentest::openBytes(bytes));
    Orvo::EndlessSkipGuard guard(parser);
    parser.parse();
    const Orvo::ParseReport& report = parser.report();

    const std::vector<Place> places = placesOf(bytes);
    const auto stop = std::find_if(places.begin(), places.end(), [](const Place& place) {
      return place.failure != ParseFailure::none || place.oddity == Oddity::endless;
    });
    if (report.failure == ParseFailure::emptyFile) {
      EXPECT_TRUE(places.empty());
    } else if (stop == places.end()) {
      EXPECT_EQ(report.failure, ParseFailure::none);
      EXPECT_FALSE(report.endlessPacket);
    } else {
      EXPECT_EQ(report.failure, stop->failure);
      EXPECT_EQ(report.endlessPacket.value_or(report.failedPacket.offset), stop->offset);
    }
  });
}

TEST_F(Corpus, IsSoundInTheReaderWhereItIsSoundForTheRescue) {
  eachFile([](const std::string& text) {
    const std::vector<Place> places = placesOf(Bytes(text.begin(), text.end()));
    const bool isSound = !places.empty() && std::ranges::all_of(places, [](const Place& place) {
      return place.failure == ParseFailure::none &&
             (place.oddity == Oddity::none || place.oddity == Oddity::hidesPackets);
    });
    EXPECT_EQ(isSound, rescue::isSoundPenRecording(text));
  });
}

}  // namespace
