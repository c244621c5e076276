#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

#include "log/logger.h"
#include "tests/penfile/parsing.h"
#include "tests/penfile/reference_reading.h"
#include "tests/support/pen/log_capture.h"

namespace {

using Orvo::ParseFailure;
using pentest::Bytes;
using pentest::expectReferenceReading;
using pentest::Parsed;
using pentest::PenFileBuilder;
using pentest::readByReferenceModel;

// Every kind of packet, layers, a dropped point, an unknown tag, write-back.
PenFileBuilder fullRecording() {
  return PenFileBuilder()
      .descriptor(3, 2, 4, 5)
      .physical({1, 2, 3, 4, 5, 6, 7})
      .dateTime({20, 12, 5, 31, 14, 7, 9})
      .status(0x01)
      .coordinate(300, 400)
      .pressure(1, 4000)
      .tilt(-20, 30)
      .time(17, 0, 1, 0x80)
      .coordinate(310, 420)
      .time(16, 0, 0, 1)
      .unknown(0x77, 5, {97, 6, 1})
      .coordinate(-5, -3)
      .status(0x00)
      .status(0x01)
      .pressure(6, -100)
      .coordinate(500, 2)
      .status(0x80)
      .coordinate(1, 2)
      .coordinate(3, 4);
}

// Lengths in their second form, unknown packets whose payload looks like known ones, strokes of one
// point, several layer bits in a row, and finally a length of 1, whose code is then read as a tag.
PenFileBuilder oddRecording() {
  return PenFileBuilder()
      .bytes({1, 0x41, 9, 2, 8, 7})
      .unknown(0, 0)
      .status(0x81)
      .bytes({97, 0x41, 1, 2, 3, 4})
      .status(0x01)
      .time(17, 0x80, 0, 0)
      .coordinate(-30000, 30000)
      .unknown(0xFE, 0x42, {97, 6, 0, 9, 0, 9, 241, 3, 0x80, 1})
      .status(0x80)
      .status(0x80)
      .tilt(127, -128)
      .coordinate(7, -2)
      .pressure(5, 0xFFFF)
      .status(0x00)
      .status(0xFF)
      .pressure(6, 0x7FFF)
      .coordinate(8, 8)
      .unknown(0x20, 1)
      .coordinate(5, 6);
}

// A random sequence of packets: most are whole, some have a wrong length, a cut payload or a random
// tag.
Bytes packetSoup(unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  const auto raw = [&] { return static_cast<int>(below(65536)) - 32768; };
  PenFileBuilder soup;
  soup.descriptor(below(256), below(40) == 0 ? below(256) : 2, below(256), below(256));
  const unsigned count = 1 + below(60);
  for (unsigned i = 0; i < count; ++i) {
    switch (below(14)) {
      case 0:
        soup.status(below(256));
        break;
      case 1:
        soup.status(below(2) == 0 ? 0x01 : 0x00);
        break;
      case 2:
        soup.pressure(below(30) == 0 ? below(256) : 5 + below(2), raw());
        break;
      case 3:
        soup.tilt(raw(), raw());
        break;
      case 4:
        soup.time(below(4) == 0 ? below(256) : 17, below(256), below(256), below(256));
        break;
      case 5:
        soup.unknown(102 + below(90), below(8), {97, 6, 241, 3});
        break;
      case 6:
        if (below(6) == 0) soup.unknown(below(256), below(256));
        break;
      case 7:
        soup.physical({below(256), 2, 3, 4, 5, 6, below(256)});
        break;
      case 8:
        soup.dateTime({below(256), 2, 3, 4, 5, 6, below(256)});
        break;
      default:
        soup.coordinate(raw(), raw());
    }
  }
  Bytes bytes = soup.data();
  if (below(3) == 0) bytes.resize(bytes.size() - below(12));
  return bytes;
}

class Sweep : public pentest::SilentTest {};

void expectReferenceReadingOfEveryCut(const Bytes& whole) {
  const pentest::LogCapture log;
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE("cut after " + std::to_string(length) + " bytes");
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const auto lines = log.linesOfWork([&] { expectReferenceReading(cut); });
    ASSERT_FALSE(testing::Test::HasFatalFailure());
    ASSERT_EQ(lines, readByReferenceModel(cut).log);
  }
}

TEST(CutRecording, AgreesWithTheReferenceModelWhereverItIsCut) {
  expectReferenceReadingOfEveryCut(fullRecording().data());
}

TEST(CutRecording, AgreesWithTheReferenceModelWhereverAnOddOneIsCut) {
  expectReferenceReadingOfEveryCut(oddRecording().data());
}

TEST(CutRecording, HoldsWhatItsBytesSayWhenItIsNotCut) {
  // Worked out by hand: two strokes in the first layer, one in the second; the point above the
  // sheet is dropped.
  const Parsed parsed(fullRecording());
  ASSERT_TRUE(parsed.complete());
  EXPECT_EQ(parsed.shape(), (std::vector<std::vector<std::size_t>>{{2, 1}, {2}}));
  const auto points = parsed.points();
  EXPECT_EQ(points[0].x.value, 30.5);
  EXPECT_EQ(points[0].y.value, 80.5);
  EXPECT_EQ(points[0].pressure.value, 1000U);
  EXPECT_EQ(points[0].tiltX.value, -20);
  EXPECT_EQ(points[0].timestamp.value, 0xFFFFFF80U);
  EXPECT_EQ(points[1].timestamp.value, 0U);
  EXPECT_EQ(points[2].pressure.value, 0xFFFFFF9CU);
  EXPECT_EQ(points[3].pressure.value, 0U);
}

TEST_F(Sweep, EveryTagWithEveryLengthCodeAgreesWithTheReferenceModel) {
  for (unsigned tag = 0; tag < 256; ++tag) {
    for (unsigned code = 0; code < 256; ++code) {
      const PenFileBuilder recording = PenFileBuilder()
                                           .descriptor()
                                           .coordinate(10, 10)
                                           .bytes({tag, code, 6, 2, 3, 4, 5, 6, 7})
                                           .coordinate(20, 20)
                                           .bytes({97, 6, 0, 1, 0, 2, 97, 6, 0, 3});
      expectReferenceReading(recording.data());
      ASSERT_FALSE(HasFatalFailure()) << "tag " << tag << ", length code " << code;
    }
  }
}

TEST_F(Sweep, EveryFirstPacketAgreesWithTheReferenceModel) {
  for (unsigned tag = 0; tag < 256; ++tag) {
    for (const unsigned code : {0U, 1U, 5U, 6U, 7U, 0x41U, 0x46U, 0x81U}) {
      for (const unsigned format : {0U, 2U, 3U, 255U}) {
        expectReferenceReading(PenFileBuilder().bytes({tag, code, 1, format, 3, 4, 97, 6}).data());
        ASSERT_FALSE(HasFatalFailure()) << tag << " " << code << " " << format;
      }
    }
  }
}

TEST_F(Sweep, RandomRecordingsAgreeWithTheReferenceModel) {
  unsigned whole = 0;
  for (unsigned seed = 0; seed < 1000; ++seed) {
    const Bytes soup = packetSoup(seed);
    expectReferenceReading(soup);
    ASSERT_FALSE(HasFatalFailure()) << "seed " << seed;
    whole += readByReferenceModel(soup).failure == ParseFailure::none ? 1U : 0U;
  }
  // Some of the random recordings must fail, and some must not.
  EXPECT_GT(whole, 200U);
  EXPECT_LT(whole, 950U);
}

// The inputs that the fuzzer kept.
TEST(Corpus, EveryFileAgreesWithTheReferenceModel) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PENWICK_CORPUS)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    expectReferenceReading(bytes);
    ASSERT_FALSE(testing::Test::HasFailure()) << entry.path();
    ++count;
  }
  EXPECT_GT(count, 100U);
}

}  // namespace
