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

std::int32_t widenSigned(unsigned char byte) {
  return static_cast<std::int32_t>(static_cast<signed char>(byte));
}

std::uint32_t widenedBits(unsigned char byte) {
  return static_cast<std::uint32_t>(widenSigned(byte));
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
  if (coordinateFormat != 2) {
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
  x = (readSigned16(stream) + 5.0) / 10.0;
  y = (readSigned16(stream) + 2.5) / 5.0;
  return !stream.failed();
}

bool PressureData::readFromStream(PenFileStream& stream) {
  if (!readLength(stream)) return false;
  const std::uint32_t payload = stream.readNumber<4>();
  if (stream.failed()) return false;
  const unsigned char pressureAlgorithm = byteOf(payload, 0);
  const auto raw = static_cast<std::int16_t>(payload);
  if (pressureAlgorithm == 1 || pressureAlgorithm == 5) {
    pressure = static_cast<std::uint16_t>(raw) / 4;
  } else if (pressureAlgorithm == 6) {
    pressure = raw;
  } else {
    logMessage("PressureData", "readFromStream", "invalid pressure algorithm type",
               LogLevel::warning);
    return false;
  }
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
  constexpr unsigned char kPenTime = 17;
  timestamp = 0;
  if (!readLength(stream)) return false;
  const std::uint32_t payload = stream.readNumber<4>();
  if (byteOf(payload, 0) == kPenTime) {
    const std::uint32_t high = widenedBits(byteOf(payload, 1));
    const std::uint32_t middle = widenedBits(byteOf(payload, 2));
    timestamp = ((high << 8U | middle) << 8U) | widenedBits(byteOf(payload, 3));
  }
  return !stream.failed();
}

bool Status::readFromStream(PenFileStream& stream) {
  if (!readLength(stream)) return false;
  status = readByte(stream);
  return !stream.failed();
}

}  // namespace Orvo
