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

void explainFailure(PenFileStream& stream, std::int64_t offset, ParseReport& report) {
  report.failedPacket.offset = offset;
  if (!stream.isOpen()) {
    report.failure = ParseFailure::cannotOpen;
    return;
  }
  const bool cut = stream.atEnd();
  stream.seek(offset);
  const bool hasTag = stream.readByte(report.failedPacket.tag);
  if (stream.failed()) {
    report.failure = ParseFailure::readError;
    return;
  }
  if (!hasTag) {
    report.failure = ParseFailure::emptyFile;
    return;
  }
  if (cut) report.cutPacket = offset;
  unsigned char code = 0;
  if (stream.readByte(code)) report.failedPacket.lengthCode = code;
  report.failure =
      offset == 0 ? descriptorFailure(report.failedPacket) : packetFailure(report.failedPacket);
}

}  // namespace Orvo
