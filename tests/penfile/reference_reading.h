// Comparing the parser with the reference model.
#pragma once

#include <gtest/gtest.h>

#include "tests/penfile/parsing.h"
#include "tests/penfile/reference_model.h"

namespace pentest {

/// Writes two drawings as text only where they differ.
inline void expectSameDrawing(const std::vector<Line>& found, const std::vector<Line>& expected) {
  if (found == expected) return;
  ASSERT_EQ(textOf(found), textOf(expected));
}

/// Recordings by the thousand are read and compared with the reference model. Stops at the first
/// difference, so that thousands of recordings do not fail thousands of times.
inline void expectReferenceReading(const Bytes& bytes, const Parsed& parsed) {
  const ReferenceReading expected = readByReferenceModel(bytes);
  const bool whole = expected.failure == Orvo::ParseFailure::none;
  ASSERT_EQ(parsed.result(), whole);
  ASSERT_EQ(parsed.complete(), whole);
  expectSameDrawing(linesOf(parsed.document()), linesOf(expected.rows));
  ASSERT_FALSE(testing::Test::HasFatalFailure());
  ASSERT_EQ(headerOf(parsed.document()), expected.header);

  const Orvo::ParseReport& report = parsed.report();
  ASSERT_EQ(report.failure, expected.failure);
  ASSERT_EQ(report.failedPacket.offset, static_cast<std::int64_t>(expected.failedAt));
  ASSERT_EQ(report.cutPacket, expected.cutAt);
  ASSERT_EQ(report.endlessPacket.has_value(), expected.endless);
  ASSERT_EQ(report.unknownPackets, expected.unknown);
  ASSERT_EQ(report.droppedPoints, expected.dropped);
}

inline void expectReferenceReading(const Bytes& bytes) {
  expectReferenceReading(bytes, Parsed(bytes));
}

}  // namespace pentest
