#include "facts/pen_facts.h"

#include <array>
#include <gtest/gtest.h>

#include "tests/facts/bytes.h"

namespace {

using facts::Date;
using facts::PenFacts;
using pentest::PenFileBuilder;

using SevenBytes = std::array<unsigned char, 7>;

PenFacts factsOf(const PenFileBuilder& recording) {
  return facts::penFactsOf(factstest::partsOf(recording.data()));
}

TEST(PenFacts, CountUnknownPacketsByTag) {
  PenFileBuilder recording;
  recording.descriptor()
      .unknown(33, 5, {1, 2, 3})
      .unknown(66, 0x42, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  recording.status(1).unknown(33, 4, {1, 2}).unknown(34, 0);
  const PenFacts facts = factsOf(recording);
  EXPECT_EQ(facts.unknown, (std::map<unsigned char, facts::UnknownPackets>{
                               {33, {2, 9}}, {34, {1, 2}}, {66, {1, 12}}}));
  EXPECT_EQ(facts.zeroBytes, 0U);
  EXPECT_FALSE(facts.firstZeros);
}

TEST(PenFacts, CountZeroBytesThatAreNoPackets) {
  PenFileBuilder recording;
  recording.descriptor().bytes({0, 0}).status(1).bytes({0, 0, 0, 0, 0});
  EXPECT_EQ(factsOf(recording).zeroBytes, 7U);
  EXPECT_EQ(factsOf(recording).firstZeros, 6);
  EXPECT_TRUE(factsOf(recording).endsInZeros);
  EXPECT_TRUE(factsOf(recording).unknown.empty());

  PenFileBuilder inside;
  inside.descriptor().bytes({0, 0}).status(1);
  EXPECT_EQ(factsOf(inside).zeroBytes, 2U);
  EXPECT_FALSE(factsOf(inside).endsInZeros);
}

TEST(PenFacts, EndWhereTheParserStops) {
  PenFileBuilder recording;
  recording.descriptor().coordinate(1, 1).pressure(2, 1).coordinate(2, 2).unknown(33, 2);
  EXPECT_EQ(factsOf(recording).times.points().size(), 1U);
  EXPECT_TRUE(factsOf(recording).unknown.empty());

  PenFileBuilder endless;
  endless.descriptor().coordinate(1, 1).unknown(33, 0x40).coordinate(2, 2).coordinate(3, 3);
  EXPECT_EQ(factsOf(endless).times.points().size(), 1U);
}

TEST(RecordingDate, IsYearMonthDayHourMinuteSecond) {
  // 0x07DC is 2012.
  EXPECT_EQ(facts::dateOf(SevenBytes{0x07, 0xDC, 2, 29, 23, 59, 58}),
            (Date{2012, 2, 29, 23, 59, 58}));
}

TEST(RecordingDate, IsMissingWhereTheBytesAreNoDate) {
  EXPECT_FALSE(facts::dateOf(SevenBytes{}));
  EXPECT_FALSE(facts::dateOf(SevenBytes{0x07, 0xDD, 2, 29, 0, 0, 0}));  // 2013 had no such day
  EXPECT_FALSE(facts::dateOf(SevenBytes{0x07, 0xDC, 13, 1, 0, 0, 0}));
  EXPECT_FALSE(facts::dateOf(SevenBytes{0x07, 0xDC, 1, 0, 0, 0, 0}));
  EXPECT_FALSE(facts::dateOf(SevenBytes{0x07, 0xDC, 1, 1, 24, 0, 0}));
  EXPECT_FALSE(facts::dateOf(SevenBytes{0x07, 0xDC, 1, 1, 0, 60, 0}));
  EXPECT_FALSE(facts::dateOf(SevenBytes{0x07, 0xDC, 1, 1, 0, 0, 60}));
  EXPECT_FALSE(facts::dateOf(SevenBytes{0xFF, 0xFF, 1, 1, 0, 0, 0}));
}

}  // namespace
