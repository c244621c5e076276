#include "cli/packet_words.h"

#include "penfile/packet_format.h"

namespace cli {

const char* nameOfPacket(unsigned char tag) {
  switch (static_cast<Orvo::PacketTag>(tag)) {
    case Orvo::PacketTag::fileDescriptor:
      return "file descriptor";
    case Orvo::PacketTag::physicalParams:
      return "physical parameters";
    case Orvo::PacketTag::fileDateTime:
      return "date and time";
    case Orvo::PacketTag::coordinatePoint:
      return "coordinate";
    case Orvo::PacketTag::pressureData:
      return "pressure";
    case Orvo::PacketTag::tiltData:
      return "tilt";
    case Orvo::PacketTag::timestampData:
      return "time stamp";
    case Orvo::PacketTag::status:
      return "status";
  }
  return "unknown";
}

}  // namespace cli
