#include "penfile/packets.h"

#include "log/logger.h"

namespace Orvo {
namespace {

unsigned char readByte(PenFileStream& stream) {
  return static_cast<unsigned char>(stream.readNumber<1>());
}

std::int16_t readSigned16(PenFileStream& stream) {
  return static_cast<std::int16_t>(stream.readNumber<2>());
}

// The byte at `index` of four that were read as one number.
unsigned char byteOf(std::uint32_t payload, unsigned index) {
  return static_cast<unsigned char>(payload >> (24U - 8U * index));
}

}  // namespace

bool FileDescriptor::readFromStream(PenFileStream& stream) {
  if (!stream.isReadable()) return false;
  unsigned char first = 0;
  stream.readTag(first);
  if (first != tag.value) {
    logMessage("FileDescriptor", "readFromStream", "bad packet tag: 1 expected for file descriptor",
               LogLevel::severe);
    return false;
  }
  if (!readLength(stream)) return false;
  const auto payload = stream.read<4>();
  if (stream.failed()) return false;
  descriptorByte0 = payload[0];
  coordinateFormat = payload[1];
  if (coordinateFormat != kCoordinateFormat) {
    // The wording of the log is fixed, spelling included.
    logMessage("FileDescriptor", "readFromStream",
               "Invalid coordinate format - currently only cooridnates are supported",
               LogLevel::severe);
    return false;
  }
  descriptorByte2 = payload[2];
  descriptorByte3 = payload[3];
  return true;
}

bool PhysicalParams::readFromStream(PenFileStream& stream) {
  if (!readLength(stream)) return false;
  paramByte0 = readByte(stream);
  paramWord1 = stream.read<2>();
  paramWord2 = stream.read<2>();
  paramByte5 = readByte(stream);
  paramByte6 = readByte(stream);
  return !stream.failed();
}

bool FileDateTime::readFromStream(PenFileStream& stream) {
  if (!readLength(stream)) return false;
  dateTimeBytes = stream.read<7>();
  return !stream.failed();
}

bool CoordinatePoint::readFromStream(PenFileStream& stream) {
  if (!readLength(stream)) return false;
  x = xOfRaw(readSigned16(stream));
  y = yOfRaw(readSigned16(stream));
  return !stream.failed();
}

bool PressureData::readFromStream(PenFileStream& stream) {
  if (!readLength(stream)) return false;
  const std::uint32_t payload = stream.readNumber<4>();
  if (stream.failed()) return false;
  const auto decoded = pressureOfRaw(byteOf(payload, 0), static_cast<std::uint16_t>(payload));
  if (!decoded) {
    logMessage("PressureData", "readFromStream", "invalid pressure algorithm type",
               LogLevel::warning);
    return false;
  }
  pressure = *decoded;
  return true;
}

bool TiltData::readFromStream(PenFileStream& stream) {
  if (!readLength(stream)) return false;
  const std::uint32_t payload = stream.readNumber<4>();
  tiltX = widenSigned(byteOf(payload, 0));
  tiltY = widenSigned(byteOf(payload, 1));
  return !stream.failed();
}

bool TimestampData::readFromStream(PenFileStream& stream) {
  timestamp = 0;
  if (!readLength(stream)) return false;
  const std::uint32_t payload = stream.readNumber<4>();
  if (byteOf(payload, 0) == kPenTime) {
    timestamp = timeOfBytes(byteOf(payload, 1), byteOf(payload, 2), byteOf(payload, 3));
  }
  return !stream.failed();
}

bool Status::readFromStream(PenFileStream& stream) {
  if (!readLength(stream)) return false;
  status = readByte(stream);
  return !stream.failed();
}

}  // namespace Orvo
