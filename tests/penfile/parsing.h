// Parsing recordings in tests.
#pragma once

#include <gtest/gtest.h>
#include <optional>

#include "log/logger.h"
#include "penfile/pnx_parser.h"
#include "tests/penfile/listing.h"
#include "tests/support/pen/open_bytes.h"
#include "tests/support/pen/pen_file_builder.h"

namespace pentest {

/// A recording with nothing but its file descriptor, which takes 6 bytes.
inline PenFileBuilder recording() {
  return PenFileBuilder().descriptor();
}

/// A test with the log turned off.
class SilentTest : public testing::Test {
 protected:
  void SetUp() override { Orvo::Logger::silence(); }
  void TearDown() override { Orvo::Logger::silence(false); }
};

/// Why reading a recording fails, and in which packet.
struct Failing {
  Orvo::ParseFailure failure;
  std::int64_t offset;
  int tag;
  std::optional<unsigned char> lengthCode;
};

inline void expectFailure(const Orvo::ParseReport& report, const Failing& expected) {
  EXPECT_EQ(report.failure, expected.failure);
  EXPECT_EQ(report.failedPacket.offset, expected.offset);
  EXPECT_EQ(report.failedPacket.tag, expected.tag);
  EXPECT_EQ(report.failedPacket.lengthCode, expected.lengthCode);
}

/// Stops a parser at the second skip to the same place, so that endless recordings cost nothing.
class Impatient final : public Orvo::SkipWatcher {
 public:
  explicit Impatient(Orvo::PnxParser& parser) : parser_(parser) { parser.watchSkips(*this); }
  void skippedTo(std::int64_t position) override {
    if (position == place_) parser_.finished = true;
    place_ = position;
  }

 private:
  Orvo::PnxParser& parser_;
  std::int64_t place_ = -1;
};

/// A recording that was parsed.
class Parsed {
 public:
  explicit Parsed(const Bytes& bytes) : parser_(openBytes(bytes)), impatient_(parser_) {
    result_ = parser_.parse();
  }
  explicit Parsed(const PenFileBuilder& recording) : Parsed(recording.data()) {}

  bool result() const { return result_; }
  const Orvo::PnxDocument& document() const { return *parser_.document; }
  const Orvo::ParseReport& report() const { return parser_.report(); }
  bool complete() const { return document().complete.value; }

  /// The points of all strokes of all layers.
  std::vector<Orvo::Point> points() const {
    std::vector<Orvo::Point> all;
    for (const Orvo::Layer& layer : document()) {
      for (const Orvo::Stroke& stroke : layer) {
        for (const Orvo::Point& point : stroke)
          all.push_back(point);
      }
    }
    return all;
  }

  /// How many points each stroke has, layer by layer.
  std::vector<std::vector<std::size_t>> shape() const {
    std::vector<std::vector<std::size_t>> layers;
    for (const Orvo::Layer& layer : document()) {
      layers.emplace_back();
      for (const Orvo::Stroke& stroke : layer)
        layers.back().push_back(stroke.size());
    }
    return layers;
  }

 private:
  Orvo::PnxParser parser_;
  Impatient impatient_;
  bool result_ = false;
};

}  // namespace pentest
