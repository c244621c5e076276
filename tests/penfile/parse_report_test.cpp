#include "penfile/parse_report.h"

#include <gtest/gtest.h>

#include "tests/penfile/parsing.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

using Orvo::ParseFailure;
using Orvo::ParseReport;
using pentest::Bytes;
using pentest::Parsed;
using pentest::recording;

class ParseReportOf : public pentest::SilentTest {};

void expectFailure(const Bytes& bytes, const pentest::Failing& expected) {
  pentest::expectFailure(Parsed(bytes).report(), expected);
}

TEST_F(ParseReportOf, AWholeFileNamesNoFailure) {
  const ParseReport report = Parsed(recording().coordinate(1, 1)).report();
  EXPECT_EQ(report.failure, ParseFailure::none);
  EXPECT_EQ(report.droppedPoints, 0U);
  EXPECT_EQ(report.unknownPackets, 0U);
  EXPECT_FALSE(report.firstDroppedPoint || report.firstUnknownPacket || report.cutPacket ||
               report.endlessPacket);
}

TEST_F(ParseReportOf, AMissingFileSaysThatItCannotBeOpened) {
  const pentest::TemporaryFolder folder;
  Orvo::PnxParser parser((folder / "missing.pnx").wstring().c_str());
  EXPECT_FALSE(parser.parse());
  EXPECT_EQ(parser.report().failure, ParseFailure::cannotOpen);
}

TEST_F(ParseReportOf, AnEmptyFileSaysSo) {
  EXPECT_EQ(Parsed(Bytes{}).report().failure, ParseFailure::emptyFile);
}

TEST_F(ParseReportOf, AnotherFirstTagIsNamed) {
  expectFailure({'<', '?', 'x'}, {ParseFailure::badFirstTag, 0, '<', std::nullopt});
}

TEST_F(ParseReportOf, AWrongDescriptorLengthIsNamed) {
  expectFailure({1, 7, 0, 2, 0, 0}, {ParseFailure::badDescriptorLength, 0, 1, 7});
  expectFailure({1}, {ParseFailure::badDescriptorLength, 0, 1, std::nullopt});
}

TEST_F(ParseReportOf, AnotherCoordinateFormatIsNamed) {
  expectFailure({1, 6, 0, 3, 0, 0}, {ParseFailure::badCoordinateFormat, 0, 1, 6});
}

TEST_F(ParseReportOf, ASecondDescriptorIsNamedWithItsPlace) {
  expectFailure(recording().coordinate(1, 1).descriptor().data(),
                {ParseFailure::secondDescriptor, 12, 1, std::nullopt});
  expectFailure(recording().bytes({1}).data(),
                {ParseFailure::secondDescriptor, 6, 1, std::nullopt});
}

TEST_F(ParseReportOf, AWrongLengthIsNamedWithTagAndCode) {
  expectFailure(recording().bytes({194, 0x46}).data(), {ParseFailure::wrongLength, 6, 194, 0x46});
  expectFailure(recording().bytes({100, 7, 9, 9}).data(), {ParseFailure::wrongLength, 6, 100, 7});
}

TEST_F(ParseReportOf, AKnownTagAsTheLastByteHasNoCodeAndIsCut) {
  const Bytes bytes = recording().bytes({97}).data();
  expectFailure(bytes, {ParseFailure::wrongLength, 6, 97, std::nullopt});
  EXPECT_EQ(Parsed(bytes).report().cutPacket, 6);
}

TEST_F(ParseReportOf, ABadPressureAlgorithmIsNamed) {
  const Bytes bytes = recording().status(1).pressure(7, 1).coordinate(1, 1).data();
  expectFailure(bytes, {ParseFailure::badPressureAlgorithm, 9, 100, 6});
  EXPECT_FALSE(Parsed(bytes).report().cutPacket.has_value());
}

TEST_F(ParseReportOf, ACutPressurePacketIsABadAlgorithmAndCut) {
  const Bytes bytes = recording().bytes({100, 6}).data();
  expectFailure(bytes, {ParseFailure::badPressureAlgorithm, 6, 100, 6});
  EXPECT_EQ(Parsed(bytes).report().cutPacket, 6);
}

TEST_F(ParseReportOf, DroppedPointsAreCountedFromTheFirst) {
  const ParseReport report =
      Parsed(recording().coordinate(1, 1).coordinate(1, -3).coordinate(1, -9)).report();
  EXPECT_EQ(report.droppedPoints, 2U);
  EXPECT_EQ(report.firstDroppedPoint, 12);
}

TEST_F(ParseReportOf, UnknownPacketsAreCountedFromTheFirst) {
  const ParseReport report =
      Parsed(recording().coordinate(1, 1).unknown(7, 3, {0}).unknown(9, 0)).report();
  EXPECT_EQ(report.unknownPackets, 2U);
  EXPECT_EQ(report.firstUnknownPacket, 12);
}

TEST_F(ParseReportOf, ACutLastPacketHasItsPlace) {
  EXPECT_EQ(Parsed(recording().bytes({97, 6, 1})).report().cutPacket, 6);
  EXPECT_EQ(Parsed(recording().unknown(200, 5, {1, 2})).report().cutPacket, 6);
  EXPECT_EQ(Parsed(recording().bytes({200})).report().cutPacket, 6);
  EXPECT_EQ(Parsed(Bytes{1, 6, 0, 2}).report().cutPacket, 0);
  EXPECT_FALSE(Parsed(recording().unknown(200, 5, {1, 2, 3})).report().cutPacket.has_value());
}

TEST_F(ParseReportOf, APacketOfLengthZeroHasItsPlace) {
  const Parsed parsed(recording().coordinate(1, 1).unknown(200, 0xC0).coordinate(2, 2));
  EXPECT_TRUE(parsed.complete());
  EXPECT_EQ(parsed.report().endlessPacket, 12);
  EXPECT_EQ(parsed.report().unknownPackets, 0U);
  EXPECT_EQ(parsed.report().failure, ParseFailure::none);
}

}  // namespace
