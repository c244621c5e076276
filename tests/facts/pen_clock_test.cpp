#include "facts/pen_clock.h"

#include <gtest/gtest.h>

#include "tests/facts/bytes.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/pen/pen_file_builder.h"

namespace {

using inktest::makeLayer;
using inktest::makeStroke;
using pentest::PenFileBuilder;

facts::PenTimes timesOf(const PenFileBuilder& recording) {
  facts::PacketReader reader(factstest::partsOf(recording.data()));
  facts::PenTimes times;
  while (const facts::Packet* packet = reader.next())
    times.add(*packet);
  return times;
}

TEST(PenTimes, AreRefusedWhereTheFileHoldsAnotherNumberOfPoints) {
  PenFileBuilder recording;
  recording.descriptor().coordinate(0, 0).time(17, 0, 0, 9).coordinate(0, 0);
  const auto bytes = [&] { return factstest::partsOf(recording.data()); };

  Orvo::Document document;
  document.append(makeLayer({makeStroke({{}}), makeStroke({{}})}));
  EXPECT_TRUE(facts::setPenTimes(document, bytes()));
  EXPECT_EQ(document.back().back().back().timestamp.value, 9U);

  Orvo::Document shorter;
  shorter.append(makeLayer({makeStroke({{}})}));
  EXPECT_FALSE(facts::setPenTimes(shorter, bytes()));
  Orvo::Document longer;
  longer.append(makeLayer({makeStroke({{}, {}, {}})}));
  EXPECT_FALSE(facts::setPenTimes(longer, bytes()));
  EXPECT_FALSE(facts::setPenTimes(document, factstest::partsOf({})));
}

TEST(PenTimes, CountTheBytesPlainlyAndGoOnWhenTheClockStartsAgain) {
  PenFileBuilder recording;
  recording.descriptor().coordinate(0, 0).time(17, 0xFF, 0xFF, 0x80).coordinate(0, 0);
  recording.time(17, 0, 0, 2).coordinate(0, 0);
  EXPECT_EQ(timesOf(recording).points(),
            (std::vector<std::uint32_t>{0xFFFF80, 0x1000002, 0x1000002}));
}

TEST(PenTimes, LackForThePointsBeforeTheOneThatIsStampedFirst) {
  PenFileBuilder recording;
  recording.descriptor().coordinate(0, 0).coordinate(0, 0).time(16, 0, 0, 9);
  EXPECT_EQ(timesOf(recording).untimed(), 2U);
  recording.coordinate(0, 0).time(17, 0, 0, 0).coordinate(0, 0);
  EXPECT_EQ(timesOf(recording).untimed(), 2U);
  EXPECT_EQ(timesOf(recording).points().size(), 4U);
}

TEST(PenTimes, LeaveOutPointsAboveTheSheet) {
  PenFileBuilder recording;
  // y = (-3 + 2.5) / 5 is below 0, (-2 + 2.5) / 5 is not.
  recording.descriptor().coordinate(0, -3).coordinate(0, -2).time(17, 0, 0, 5);
  EXPECT_EQ(timesOf(recording).points(), std::vector<std::uint32_t>{5});
}

}  // namespace
