// The search for damaged packets in a pen recording.
#pragma once

#include <cstdint>
#include <cstdio>

namespace cli {

struct DamagedPackets {
  std::uint64_t count = 0;
  std::int64_t first = 0;  ///< The byte at which the first one starts.
};

/// Finds the packets of unknown tags in a pen recording that are probably damaged rather than of
/// another kind. There are two signs of that: the packet's bytes hide two known packets in a row,
/// which its wrong length skips; or its tag occurs nowhere else in the file and it is as long as a
/// known packet, as when only the tag is wrong. Reads the open file from its start.
DamagedPackets findDamagedPackets(std::FILE* file);

}  // namespace cli
