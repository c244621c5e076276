#pragma once

#include <cstdint>
#include <optional>

#include "penfile/pen_file_stream.h"

namespace Orvo {

/// Why a pen recording is not whole.
enum class ParseFailure {
  none,
  cannotOpen,
  readError,  ///< A folder, or a device that fails in the middle of the file.
  emptyFile,
  badFirstTag,  ///< The file does not begin with tag 1: no pen recording.
  badDescriptorLength,
  badCoordinateFormat,
  secondDescriptor,  ///< Tag 1 once more.
  wrongLength,       ///< A known tag with a length code that is not its own.
  badPressureAlgorithm,
};

/// A packet by the byte where it starts.
struct PacketPlace {
  std::int64_t offset = 0;
  unsigned char tag = 0;
  /// Nothing when the file ends right after the tag, or when the tag alone was wrong.
  std::optional<unsigned char> lengthCode;
};

/// How the reading of one pen recording went: for people who ask why a file does not open, or what
/// was left out of one that did.
struct ParseReport {
  ParseFailure failure = ParseFailure::none;
  PacketPlace failedPacket;  ///< Where it failed; unset for a file that did not open or was empty.

  std::uint64_t droppedPoints = 0;                ///< Points above the sheet: y below 0.
  std::optional<std::int64_t> firstDroppedPoint;  ///< Offset of the packet, as all that follow.
  std::uint64_t unknownPackets = 0;               ///< Packets of unknown tags that were skipped.
  std::optional<std::int64_t> firstUnknownPacket;
  std::optional<std::int64_t> cutPacket;      ///< The last packet, where the file ends inside it.
  std::optional<std::int64_t> endlessPacket;  ///< A packet of length 0, where reading stood still.
};

/// Says why the packet at `offset`, the last one of which the stream has read something, could not
/// be read.
void explainFailure(const PenFileStream& stream, std::int64_t offset, ParseReport& report);

}  // namespace Orvo
