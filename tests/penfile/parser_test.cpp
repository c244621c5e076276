#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <utility>

#include "tests/penfile/parsing.h"
#include "tests/support/pen/log_capture.h"

namespace {

using Orvo::Point;
using pentest::Bytes;
using pentest::Parsed;
using pentest::PenFileBuilder;
using pentest::recording;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned kDown = 0x01;
constexpr unsigned kUp = 0x00;
constexpr unsigned kNewLayer = 0x80;

class ParserLog : public testing::Test {
 protected:
  // The lines of a recording that must not open.
  std::vector<std::string> linesOfFailure(const Bytes& bytes) const {
    return log_.linesOfWork([&] {
      const Parsed parsed(bytes);
      EXPECT_FALSE(parsed.result());
      EXPECT_FALSE(parsed.complete());
    });
  }

 private:
  pentest::LogCapture log_;
};

constexpr const char* kBadTag =
    "SEVERE bad packet tag: 1 expected for file descriptor\tFileDescriptor::readFromStream()";
constexpr const char* kInvalidDescriptor = "SEVERE invalid file descriptor\tPnxParser::parse()";
constexpr const char* kSecondDescriptor =
    "SEVERE multipe file descriptors found\tPnxParser::parse()";
constexpr const char* kBadAlgorithm =
    "WARNING invalid pressure algorithm type\tPressureData::readFromStream()";

TEST_F(ParserLog, OfAnEmptyFileHasTwoLines) {
  EXPECT_THAT(linesOfFailure({}), ElementsAre(kBadTag, kInvalidDescriptor));
}

TEST_F(ParserLog, OfTheOneByteOneHasOneLine) {
  EXPECT_THAT(linesOfFailure({1}), ElementsAre(kInvalidDescriptor));
}

TEST_F(ParserLog, OfAnotherFirstTagHasTwoLines) {
  EXPECT_THAT(linesOfFailure({'<', '?', 'x', 'm', 'l', ' '}),
              ElementsAre(kBadTag, kInvalidDescriptor));
}

TEST_F(ParserLog, OfAWrongDescriptorLengthHasOneLine) {
  EXPECT_THAT(linesOfFailure({1, 5, 0, 2, 0, 0}), ElementsAre(kInvalidDescriptor));
}

TEST_F(ParserLog, OfAnotherCoordinateFormatHasTwoLines) {
  EXPECT_THAT(linesOfFailure(PenFileBuilder().descriptor(0, 3).data()),
              ElementsAre("SEVERE Invalid coordinate format - currently only cooridnates are "
                          "supported\tFileDescriptor::readFromStream()",
                          kInvalidDescriptor));
}

TEST_F(ParserLog, OfASecondDescriptorHasOneLine) {
  EXPECT_THAT(linesOfFailure(recording().coordinate(1, 1).descriptor().data()),
              ElementsAre(kSecondDescriptor));
}

TEST_F(ParserLog, OfTagOneAsTheLastByteHasOneLine) {
  EXPECT_THAT(linesOfFailure(recording().bytes({1}).data()), ElementsAre(kSecondDescriptor));
}

TEST_F(ParserLog, OfAWrongLengthIsEmpty) {
  EXPECT_THAT(linesOfFailure(recording().bytes({97, 7, 0, 0, 0, 0, 0}).data()), IsEmpty());
}

TEST_F(ParserLog, OfAKnownTagAsTheLastByteIsEmpty) {
  for (const unsigned tag : {17U, 49U, 97U, 100U, 101U, 194U, 241U}) {
    EXPECT_THAT(linesOfFailure(recording().bytes({tag}).data()), IsEmpty()) << tag;
  }
}

TEST_F(ParserLog, OfAnUnknownPressureAlgorithmHasAWarning) {
  EXPECT_THAT(linesOfFailure(recording().pressure(2, 5).data()), ElementsAre(kBadAlgorithm));
}

TEST_F(ParserLog, OfACutPressurePacketHasAWarning) {
  EXPECT_THAT(linesOfFailure(recording().bytes({100, 6}).data()), ElementsAre(kBadAlgorithm));
}

TEST(Parser, CompletesADescriptorAloneWithoutLayers) {
  const Parsed parsed(recording());
  EXPECT_TRUE(parsed.result());
  EXPECT_TRUE(parsed.complete());
  EXPECT_EQ(parsed.document().size(), 0U);
}

TEST(Parser, CompletesACutDescriptorOfTheRightFormat) {
  EXPECT_TRUE(Parsed(Bytes{1, 6, 0, 2}).complete());
}

TEST(Parser, KeepsTheLastHeaderPacketOfEachKind) {
  const Parsed parsed(PenFileBuilder()
                          .descriptor(7, 2, 8, 9)
                          .physical({1, 2, 3, 4, 5, 6, 7})
                          .dateTime({1, 1, 1, 1, 1, 1, 1})
                          .physical({11, 12, 13, 14, 15, 16, 17})
                          .dateTime({20, 12, 5, 31, 14, 7, 9}));
  EXPECT_THAT(pentest::headerOf(parsed.document()),
              ElementsAre(7, 2, 8, 9, 11, 12, 13, 14, 15, 16, 17, 20, 12, 5, 31, 14, 7, 9));
}

TEST(Parser, StartsALayerAndAStrokeWithAPointBeforeAnyStatus) {
  const Parsed parsed(recording().coordinate(10, 10));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(1)));
  EXPECT_EQ(parsed.points()[0].x.value, 1.5);
  EXPECT_EQ(parsed.points()[0].y.value, 2.5);
  EXPECT_EQ(parsed.points()[0].z.value, 0.0);
}

TEST(Parser, StartsAStrokeWhenThePenGoesDownAgain) {
  const Parsed parsed(recording()
                          .status(kDown)
                          .coordinate(1, 1)
                          .coordinate(2, 2)
                          .status(kUp)
                          .status(kDown)
                          .coordinate(3, 3));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(2, 1)));
}

TEST(Parser, ContinuesTheStrokeWhenThePenIsAlreadyDown) {
  const Parsed parsed(recording().status(kDown).coordinate(1, 1).status(kDown).coordinate(2, 2));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(2)));
}

TEST(Parser, ContinuesTheStrokeWhenThePenIsUp) {
  const Parsed parsed(recording().status(kDown).coordinate(1, 1).status(kUp).coordinate(2, 2));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(2)));
}

TEST(Parser, StartsALayerWithTheNextPointAfterTheLayerBit) {
  const Parsed parsed(
      recording().status(kDown).coordinate(1, 1).status(kNewLayer).coordinate(2, 2));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(1), ElementsAre(1)));
}

TEST(Parser, StartsOneLayerForSeveralLayerBitsInARow) {
  const Parsed parsed(recording()
                          .coordinate(1, 1)
                          .status(kNewLayer)
                          .status(kNewLayer)
                          .coordinate(2, 2)
                          .coordinate(3, 3)
                          .status(kNewLayer));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(1), ElementsAre(2)));
}

TEST(Parser, LeavesThePenAsItWasWhenALayerStarts) {
  // The pen stays down throughout: the last status does not start a stroke.
  const Parsed wasDown(recording()
                           .status(kDown)
                           .coordinate(1, 1)
                           .status(kNewLayer)
                           .coordinate(2, 2)
                           .status(kDown)
                           .coordinate(3, 3));
  EXPECT_THAT(wasDown.shape(), ElementsAre(ElementsAre(1), ElementsAre(2)));
  // Bit 0 beside the layer bit does not count: the pen is still up, so it goes down later.
  const Parsed wasUp(
      recording().status(kNewLayer | kDown).coordinate(2, 2).status(kDown).coordinate(3, 3));
  EXPECT_THAT(wasUp.shape(), ElementsAre(ElementsAre(1, 1)));
}

TEST(Parser, IgnoresTheOtherStatusBits) {
  const Parsed parsed(
      recording().status(0x7F).coordinate(1, 1).status(0x7E).status(0x03).coordinate(2, 2));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(1, 1)));
}

TEST(Parser, DropsAPointAboveTheSheetWithoutChangingAnyFlag) {
  const Parsed parsed(recording()
                          .coordinate(1, -3)
                          .status(kDown)
                          .coordinate(1, 1)
                          .status(kUp)
                          .status(kDown)
                          .coordinate(5, -3)
                          .coordinate(6, 6)
                          .coordinate(7, -3)
                          .coordinate(8, 8)
                          .status(kNewLayer)
                          .coordinate(9, -4)
                          .coordinate(9, 9));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(1, 2), ElementsAre(1)));
  EXPECT_TRUE(parsed.complete());
}

TEST(Parser, KeepsPointsLeftOfTheSheetAndOnItsEdge) {
  const Parsed parsed(recording().coordinate(-1000, -2));
  ASSERT_EQ(parsed.points().size(), 1U);
  EXPECT_EQ(parsed.points()[0].x.value, -99.5);
  EXPECT_EQ(parsed.points()[0].y.value, 0.1);
}

TEST(Parser, GivesEachPointTheCurrentPressureTiltAndTime) {
  const Parsed parsed(
      recording().pressure(6, 100).tilt(-3, 4).time(17, 0, 1, 0).coordinate(1, 1).coordinate(2, 2));
  for (const Point& point : parsed.points()) {
    EXPECT_EQ(point.pressure.value, 100U);
    EXPECT_EQ(point.tiltX.value, -3);
    EXPECT_EQ(point.tiltY.value, 4);
    EXPECT_EQ(point.timestamp.value, 256U);
  }
  EXPECT_EQ(parsed.points().size(), 2U);
}

TEST(Parser, KeepsTheBitPatternOfANegativePressure) {
  const Parsed parsed(recording().pressure(6, -1).coordinate(1, 1).pressure(6, -2));
  EXPECT_EQ(parsed.points()[0].pressure.value, 4294967294U);
  EXPECT_EQ(Parsed(recording().pressure(6, -1).coordinate(1, 1)).points()[0].pressure.value,
            4294967295U);
}

TEST(Parser, WritesPressureAndTiltBackIntoTheOnlyPointOfAStroke) {
  const Parsed parsed(recording().coordinate(1, 1).pressure(1, 400).tilt(5, 6));
  EXPECT_EQ(parsed.points()[0].pressure.value, 100U);
  EXPECT_EQ(parsed.points()[0].tiltX.value, 5);
  EXPECT_EQ(parsed.points()[0].tiltY.value, 6);
}

TEST(Parser, NeverWritesPressureAndTiltBackIntoASecondPoint) {
  const Parsed parsed(
      recording().coordinate(1, 1).coordinate(2, 2).pressure(6, 9).tilt(5, 6).coordinate(3, 3));
  EXPECT_EQ(parsed.points()[0].pressure.value, 0U);
  EXPECT_EQ(parsed.points()[1].pressure.value, 0U);
  EXPECT_EQ(parsed.points()[1].tiltX.value, 0);
  EXPECT_EQ(parsed.points()[2].pressure.value, 9U);
  EXPECT_EQ(parsed.points()[2].tiltY.value, 6);
}

TEST(Parser, WritesTheTimeBackIntoWhateverPointIsLast) {
  const Parsed parsed(recording()
                          .coordinate(1, 1)
                          .coordinate(2, 2)
                          .coordinate(3, 3)
                          .coordinate(4, 4)
                          .coordinate(5, 5)
                          .time(17, 0, 0, 77));
  EXPECT_EQ(parsed.points()[4].timestamp.value, 77U);
  EXPECT_EQ(parsed.points()[3].timestamp.value, 0U);
}

TEST(Parser, WritesBackTimeZeroForAnotherKind) {
  const Parsed parsed(
      recording().time(17, 0, 0, 5).coordinate(1, 1).time(16, 0, 0, 9).coordinate(2, 2));
  EXPECT_EQ(parsed.points()[0].timestamp.value, 0U);
  EXPECT_EQ(parsed.points()[1].timestamp.value, 0U);
}

TEST(Parser, WritesBackIntoThePreviousStrokeWhileANewOneIsPending) {
  const Parsed parsed(recording()
                          .status(kDown)
                          .coordinate(1, 1)
                          .status(kUp)
                          .status(kDown)
                          .pressure(6, 50)
                          .tilt(7, 8)
                          .time(17, 0, 0, 3));
  ASSERT_EQ(parsed.points().size(), 1U);
  EXPECT_EQ(parsed.points()[0].pressure.value, 50U);
  EXPECT_EQ(parsed.points()[0].tiltX.value, 7);
  EXPECT_EQ(parsed.points()[0].timestamp.value, 3U);
}

TEST(Parser, WritesBackIntoThePreviousLayerWhileANewOneIsPending) {
  const Parsed parsed(recording()
                          .coordinate(1, 1)
                          .status(kNewLayer)
                          .pressure(6, 50)
                          .time(17, 0, 0, 3)
                          .coordinate(2, 2));
  EXPECT_EQ(parsed.points()[0].pressure.value, 50U);
  EXPECT_EQ(parsed.points()[0].timestamp.value, 3U);
  EXPECT_EQ(parsed.points()[1].pressure.value, 50U);
}

TEST(Parser, ResetsPressureAndTiltForAStrokeAndALayerButNeverTheTime) {
  const auto after = [](unsigned status) {
    const Parsed parsed(
        recording().pressure(6, 50).tilt(7, 8).time(17, 0, 0, 3).status(status).coordinate(1, 1));
    return parsed.points()[0];
  };
  for (const unsigned status : {kDown, kNewLayer}) {
    EXPECT_EQ(after(status).pressure.value, 0U);
    EXPECT_EQ(after(status).tiltX.value, 0);
    EXPECT_EQ(after(status).tiltY.value, 0);
    EXPECT_EQ(after(status).timestamp.value, 3U);
  }
  EXPECT_EQ(after(kUp).pressure.value, 50U);
}

TEST(Parser, KeepsPressureWhenThePenIsAlreadyDown) {
  const Parsed parsed(recording().status(kDown).pressure(6, 50).status(kDown).coordinate(1, 1));
  EXPECT_EQ(parsed.points()[0].pressure.value, 50U);
}

TEST(Parser, DoesNotChangeTheBoxesWhenItWritesBack) {
  const Parsed parsed(
      recording().pressure(6, 5).coordinate(1, 1).pressure(6, 50).time(17, 0, 0, 3));
  const Point& corner = parsed.document().bounds().minCorner.value;
  EXPECT_EQ(corner.x.value, 0.6);
  EXPECT_EQ(corner.pressure.value, 5U);
  EXPECT_EQ(corner.timestamp.value, 0U);
  EXPECT_EQ(parsed.document().back().back().bounds().maxCorner.value.pressure.value, 5U);
}

TEST(Parser, ResetsTheOtherFieldsOfACornerThatMoves) {
  const Parsed parsed(recording().pressure(6, 5).coordinate(10, 10).coordinate(0, 20));
  const Point& min = parsed.document().bounds().minCorner.value;
  EXPECT_EQ(min.x.value, 0.5);
  EXPECT_EQ(min.y.value, 2.5);
  EXPECT_EQ(min.pressure.value, 0U);
}

TEST(Parser, AddsAPointForACoordinateThatIsCutAfterItsLength) {
  const Parsed parsed(recording().coordinate(1, 1).bytes({97, 6}));
  EXPECT_TRUE(parsed.complete());
  ASSERT_EQ(parsed.points().size(), 2U);
  EXPECT_EQ(parsed.points()[1].x.value, 0.5);
  EXPECT_EQ(parsed.points()[1].y.value, 0.5);
}

TEST(Parser, CompletesWithAnUnknownTagAsTheLastByte) {
  EXPECT_TRUE(Parsed(recording().bytes({99})).complete());
}

TEST(Parser, SkipsAnUnknownPacketByItsLength) {
  const Parsed parsed(recording().unknown(200, 5, {97, 6, 0}).coordinate(1, 1));
  EXPECT_THAT(parsed.shape(), ElementsAre(ElementsAre(1)));
  EXPECT_TRUE(parsed.complete());
}

TEST(Parser, ConsumesTwoBytesOfAnUnknownPacketOfLengthTwoOrCodeZero) {
  EXPECT_THAT(Parsed(recording().unknown(200, 2).coordinate(1, 1)).shape(),
              ElementsAre(ElementsAre(1)));
  EXPECT_THAT(Parsed(recording().unknown(200, 0).coordinate(1, 1)).shape(),
              ElementsAre(ElementsAre(1)));
}

TEST(Parser, ReadsTheLengthCodeOneAsTheNextTag) {
  // The code 1 is then the tag of a second descriptor.
  EXPECT_FALSE(Parsed(recording().unknown(200, 1).coordinate(1, 1)).result());
}

TEST(Parser, SkipsBeyondTheEnd) {
  EXPECT_TRUE(Parsed(recording().coordinate(1, 1).unknown(200, 0xFF)).complete());
}

TEST(Parser, SkipsFarInALongFile) {
  PenFileBuilder builder = recording().unknown(200, 0xFF);
  for (int i = 0; i < 13606; ++i)
    builder.bytes({97});
  EXPECT_THAT(Parsed(builder.coordinate(1, 1)).shape(), ElementsAre(ElementsAre(1)));
}

// A layer of strokes with the given numbers of points, all at the origin.
Orvo::Layer layerOf(std::initializer_list<int> pointsOfStrokes) {
  Orvo::Layer layer;
  for (const int count : pointsOfStrokes) {
    Orvo::Stroke stroke;
    for (int i = 0; i < count; ++i)
      stroke.append(Point());
    layer.append(stroke);
  }
  return layer;
}

// Does something at the first skip.
class AtFirstSkip final : public Orvo::SkipWatcher {
 public:
  AtFirstSkip(Orvo::PnxParser& parser, std::function<void()> work) : work_(std::move(work)) {
    parser.watchSkips(*this);
  }
  void skippedTo(std::int64_t) override {
    if (work_) std::exchange(work_, nullptr)();
  }

 private:
  std::function<void()> work_;
};

TEST(Parser, WritesBackIntoALayerThatWasThereBefore) {
  Orvo::PnxParser parser(
      pentest::openBytes(recording().pressure(6, 50).tilt(7, 8).time(17, 0, 0, 3).data()));
  parser.document->append(layerOf({1}));
  ASSERT_TRUE(parser.parse());
  const Point& point = parser.document->back().back().back();
  EXPECT_EQ(point.pressure.value, 50U);
  EXPECT_EQ(point.tiltX.value, 7);
  EXPECT_EQ(point.tiltY.value, 8);
  EXPECT_EQ(point.timestamp.value, 3U);
}

TEST(Parser, WritesTheTimeAloneIntoALongStrokeThatWasThereBefore) {
  Orvo::PnxParser parser(
      pentest::openBytes(recording().pressure(6, 50).tilt(7, 8).time(17, 0, 0, 3).data()));
  parser.document->append(layerOf({1, 2}));
  ASSERT_TRUE(parser.parse());
  const Orvo::Layer& layer = parser.document->back();
  EXPECT_EQ(layer.begin()->back().timestamp.value, 0U);
  EXPECT_EQ(layer.back().back().pressure.value, 0U);
  EXPECT_EQ(layer.back().back().tiltX.value, 0);
  EXPECT_EQ(layer.back().back().timestamp.value, 3U);
  EXPECT_EQ(layer.back().begin()->timestamp.value, 0U);
}

TEST(Parser, WritesNothingBackWhenTheLastLayerOrStrokeIsEmpty) {
  const auto parse = [](const Orvo::Layer& last) {
    Orvo::PnxParser parser(
        pentest::openBytes(recording().pressure(6, 50).tilt(7, 8).time(17, 0, 0, 3).data()));
    parser.document->append(layerOf({1}));
    parser.document->append(last);
    EXPECT_TRUE(parser.parse());
    const Point& untouched = parser.document->begin()->back().back();
    EXPECT_EQ(untouched.pressure.value, 0U);
    EXPECT_EQ(untouched.tiltX.value, 0);
    EXPECT_EQ(untouched.timestamp.value, 0U);
  };
  parse(layerOf({}));
  parse(layerOf({0}));
}

TEST(Parser, PutsItsPointsIntoANewLayerAfterThoseThatWereThereBefore) {
  Orvo::PnxParser parser(pentest::openBytes(recording().coordinate(1, 1).coordinate(2, 2).data()));
  parser.document->append(layerOf({1}));
  ASSERT_TRUE(parser.parse());
  ASSERT_EQ(parser.document->size(), 2U);
  EXPECT_EQ(parser.document->begin()->back().size(), 1U);
  EXPECT_EQ(parser.document->back().back().size(), 2U);
}

TEST(Parser, ContinuesInADocumentThatReplacesItsOwn) {
  Orvo::PnxParser parser(pentest::openBytes(recording()
                                                .coordinate(1, 1)
                                                .unknown(200, 2)
                                                .pressure(6, 50)
                                                .tilt(7, 8)
                                                .time(17, 0, 0, 3)
                                                .coordinate(2, 2)
                                                .data()));
  const Orvo::SharedRef<Orvo::PnxDocument> fresh(new Orvo::PnxDocument());
  fresh->append(layerOf({1}));
  const AtFirstSkip replacing(parser, [&] { parser.document = fresh; });
  ASSERT_TRUE(parser.parse());
  EXPECT_TRUE(fresh->complete.value);
  ASSERT_EQ(fresh->size(), 1U);
  ASSERT_EQ(fresh->back().back().size(), 2U);
  EXPECT_EQ(fresh->back().back().begin()->pressure.value, 50U);
  EXPECT_EQ(fresh->back().back().back().x.value, 0.7);
}

TEST(Parser, StartsALayerOrAStrokeWhenTheReplacementHasNone) {
  const auto parseInto = [](const Orvo::PnxDocument& replacement) {
    Orvo::PnxParser parser(pentest::openBytes(
        recording().coordinate(1, 1).unknown(200, 2).coordinate(2, 2).coordinate(3, 3).data()));
    const AtFirstSkip replacing(parser, [&] {
      parser.document = Orvo::SharedRef<Orvo::PnxDocument>(new Orvo::PnxDocument(replacement));
    });
    EXPECT_TRUE(parser.parse());
    EXPECT_EQ(parser.document->size(), 1U);
    EXPECT_EQ(parser.document->back().size(), 1U);
    EXPECT_EQ(parser.document->back().back().size(), 2U);
    EXPECT_EQ(parser.document->bounds().maxCorner.value.x.value, 0.8);
  };
  Orvo::PnxDocument empty;
  parseInto(empty);
  empty.append(Orvo::Layer());
  parseInto(empty);
}

TEST(Parser, CarriesNothingFromOneParseToTheNext) {
  // The first parse ends after the skipped packet with the pen down in a stroke; the second reads
  // on from there.
  Orvo::PnxParser parser(pentest::openBytes(recording()
                                                .status(kDown)
                                                .coordinate(1, 1)
                                                .unknown(200, 3, {0})
                                                .descriptor()
                                                .coordinate(2, 2)
                                                .unknown(200, 4, {0, 0})
                                                .status(kDown)
                                                .coordinate(3, 3)
                                                .data()));
  AtFirstSkip ending(parser, [&] { parser.finished = true; });
  ASSERT_TRUE(parser.parse());
  EXPECT_EQ(parser.report().unknownPackets, 1U);
  parser.finished = false;
  ASSERT_TRUE(parser.parse());
  EXPECT_EQ(parser.report().unknownPackets, 1U);
  EXPECT_EQ(parser.report().firstUnknownPacket, 30);
  ASSERT_EQ(parser.document->size(), 2U);
  EXPECT_EQ(parser.document->begin()->size(), 1U);
  EXPECT_EQ(parser.document->back().size(), 2U);
}

TEST(Parser, LeavesItsOwnStatusAlone) {
  Orvo::PnxParser parser(
      pentest::openBytes(recording().status(kNewLayer).status(kDown).coordinate(1, 1).data()));
  EXPECT_EQ(parser.status.status, 0);
  parser.status.status = 0x5A;
  EXPECT_TRUE(parser.parse());
  EXPECT_EQ(parser.status.status, 0x5A);
}

TEST(Parser, SucceedsWhenFinishedBeforehandEvenWithoutAFile) {
  Orvo::PnxParser parser{platform::File()};
  EXPECT_FALSE(parser.parse());
  parser.finished = true;
  EXPECT_TRUE(parser.parse());
  EXPECT_FALSE(parser.document->complete.value);
}

TEST(Parser, DoesNothingWhenFinishedBeforehand) {
  Orvo::PnxParser parser(pentest::openBytes(recording().data()));
  parser.finished = true;
  EXPECT_TRUE(parser.parse());
  EXPECT_FALSE(parser.document->complete.value);
}

TEST(Parser, CanBeStoppedByAnotherThreadAtAPacketOfLengthZero) {
  Orvo::PnxParser parser(pentest::openBytes(recording().unknown(200, 0x40).data()));
  std::thread other([&] { parser.finished = true; });
  EXPECT_TRUE(parser.parse());
  other.join();
}

TEST(Parser, CompletesAfterThePacketDuringWhichItIsFinished) {
  class AtOnce final : public Orvo::SkipWatcher {
   public:
    explicit AtOnce(Orvo::PnxParser& parser) : parser_(parser) { parser.watchSkips(*this); }
    void skippedTo(std::int64_t position) override {
      place = position;
      parser_.finished = true;
    }
    std::int64_t place = 0;

   private:
    Orvo::PnxParser& parser_;
  };
  Orvo::PnxParser parser(pentest::openBytes(
      recording().coordinate(1, 1).unknown(200, 4, {0, 0}).coordinate(2, 2).data()));
  AtOnce atOnce(parser);
  EXPECT_TRUE(parser.parse());
  EXPECT_TRUE(parser.document->complete.value);
  EXPECT_EQ(parser.document->back().back().size(), 1U);
  EXPECT_EQ(atOnce.place, 16);  // Six of the descriptor, six of the point, four skipped.
}

TEST(EndlessSkipGuard, StopsAtThe65536thReadingOfAPacketOfLengthZero) {
  class Counting final : public Orvo::SkipWatcher {
   public:
    explicit Counting(Orvo::PnxParser& parser) : guard_(parser) { parser.watchSkips(*this); }
    void skippedTo(std::int64_t position) override {
      ++count;
      guard_.skippedTo(position);
    }
    int count = 0;

   private:
    Orvo::EndlessSkipGuard guard_;
  };
  Orvo::PnxParser parser(
      pentest::openBytes(recording().coordinate(1, 1).unknown(200, 0x80).coordinate(2, 2).data()));
  Counting counting(parser);
  EXPECT_TRUE(parser.parse());
  EXPECT_EQ(counting.count, 65536);
  EXPECT_TRUE(parser.document->complete.value);
  EXPECT_EQ(parser.document->back().back().size(), 1U);
}

TEST(EndlessSkipGuard, AllowsAnyNumberOfSkipsThatMoveOn) {
  Orvo::PnxParser parser(pentest::openBytes(recording().data()));
  Orvo::EndlessSkipGuard guard(parser);
  for (int round = 0; round < 70'000; ++round)
    guard.skippedTo(round);
  for (int round = 0; round < 65'535; ++round)
    guard.skippedTo(5);
  guard.skippedTo(6);
  for (int round = 0; round < 65'535; ++round)
    guard.skippedTo(5);
  EXPECT_FALSE(parser.finished);
  guard.skippedTo(5);
  EXPECT_TRUE(parser.finished);
}

}  // namespace
