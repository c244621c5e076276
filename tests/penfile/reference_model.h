// A second reader of pen recordings, which shares no code with the parser.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "penfile/parse_report.h"
#include "tests/penfile/listing.h"
#include "tests/support/pen/pen_file_builder.h"

namespace pentest {

/// What a correct reader makes of the bytes of a pen recording.
struct ReferenceReading {
  Orvo::ParseFailure failure = Orvo::ParseFailure::none;
  std::size_t failedAt = 0;
  bool endless = false;  ///< It is stuck at a packet of length 0.
  std::optional<std::int64_t> cutAt;
  std::uint64_t unknown = 0;
  std::uint64_t dropped = 0;
  std::vector<std::string> log;  ///< Lines without time and thread.
  std::vector<int> header = std::vector<int>(18);
  Rows rows;
};

/// Reads a recording in two steps: the bytes are split into packets, then the packets are replayed.
ReferenceReading readByReferenceModel(const Bytes& bytes);

}  // namespace pentest
