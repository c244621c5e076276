#include "penfile/parse_report.h"

#include "penfile/packets.h"

namespace Orvo {
namespace {

ParseFailure descriptorFailure(const PacketPlace& packet) {
  if (packet.tag != static_cast<unsigned char>(PacketTag::fileDescriptor)) {
    return ParseFailure::badFirstTag;
  }
  const bool rightLength = packet.lengthCode && decodeLength(*packet.lengthCode) ==
                                                    FileDescriptor().expectedLength.value;
  return rightLength ? ParseFailure::badCoordinateFormat : ParseFailure::badDescriptorLength;
}

ParseFailure packetFailure(const PacketPlace& packet) {
  const auto tag = static_cast<PacketTag>(packet.tag);
  if (tag == PacketTag::fileDescriptor) return ParseFailure::secondDescriptor;
  const bool rightLength =
      packet.lengthCode && decodeLength(*packet.lengthCode) == PressureData().expectedLength.value;
  return tag == PacketTag::pressureData && rightLength ? ParseFailure::badPressureAlgorithm
                                                       : ParseFailure::wrongLength;
}

}  // namespace

void explainFailure(const PenFileStream& stream, std::int64_t offset, ParseReport& report) {
  report.failedPacket.offset = offset;
  if (!stream.isOpen()) {
    report.failure = ParseFailure::cannotOpen;
    return;
  }
  if (stream.failed()) {
    report.failure = ParseFailure::readError;
    return;
  }
  const PacketHead& head = stream.head();
  if (!head.tag) {
    report.failure = ParseFailure::emptyFile;
    return;
  }
  if (stream.atEnd()) report.cutPacket = offset;
  report.failedPacket.tag = *head.tag;
  report.failedPacket.lengthCode = head.lengthCode;
  report.failure =
      offset == 0 ? descriptorFailure(report.failedPacket) : packetFailure(report.failedPacket);
}

}  // namespace Orvo
