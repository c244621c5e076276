// How reading a pen recording went.
#pragma once

#include <cstdint>
#include <optional>

#include "penfile/pen_file_stream.h"

namespace Orvo {

/// Why reading a pen recording failed.
enum class ParseFailure {
  none,
  cannotOpen,
  readError,  ///< A folder, or a device that fails in the middle of the file.
  emptyFile,
  badFirstTag,  ///< The file does not begin with tag 1: it is not a pen recording.
  badDescriptorLength,
  badCoordinateFormat,
  secondDescriptor,  ///< Tag 1 a second time.
  wrongLength,       ///< A known tag with a length code that is not its own.
  badPressureAlgorithm,
};

/// A packet and where it starts.
struct PacketPlace {
  std::int64_t offset = 0;  ///< In bytes from the start of the file.
  unsigned char tag = 0;
  /// Nothing when the file ends right after the tag, or when the tag alone was wrong.
  std::optional<unsigned char> lengthCode;
};

/// How reading one pen recording went: why a file does not open, or what was left out of one that
/// did.
struct ParseReport {
  ParseFailure failure = ParseFailure::none;
  PacketPlace failedPacket;  ///< Where it failed; unset for a file that did not open or was empty.

  std::uint64_t droppedPoints = 0;                ///< Points above the sheet: y below 0.
  std::optional<std::int64_t> firstDroppedPoint;  ///< Offset of its packet, like the offsets below.
  std::uint64_t unknownPackets = 0;               ///< Packets of unknown tags that were skipped.
  std::optional<std::int64_t> firstUnknownPacket;
  std::optional<std::int64_t> cutPacket;      ///< The last packet, if the file ends inside it.
  std::optional<std::int64_t> endlessPacket;  ///< A packet of length 0, where reading got stuck.
};

/// Records in `report` why the packet at `offset`, the last one that the stream began to read,
/// could not be read.
void explainFailure(const PenFileStream& stream, std::int64_t offset, ParseReport& report);

}  // namespace Orvo
