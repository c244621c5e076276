// The packets of a pen recording.
#pragma once

#include <array>
#include <cstdint>

#include "model/property.h"
#include "penfile/packet_format.h"
#include "penfile/pen_file_stream.h"

namespace Orvo {

/// What all packets share (offsets in the tables below count from the first payload byte): a tag
/// and a fixed length.
class BasePacket {
 public:
  /// Reads the rest of one packet, with the stream right after its tag, and stores its fields.
  /// False when the length code does not mean the fixed length, and on a read error. A payload cut
  /// off by the end of the file is not an error: the missing bytes are zero.
  virtual bool readFromStream(PenFileStream& stream) = 0;

  Property<unsigned char> expectedLength;  ///< Bytes of the whole packet.
  Property<unsigned char> tag;

 protected:
  explicit BasePacket(PacketTag packetTag)
      : expectedLength(knownLength(packetTag)), tag(static_cast<unsigned char>(packetTag)) {}
  BasePacket(const BasePacket&) = default;
  BasePacket& operator=(const BasePacket&) = default;
  ~BasePacket() = default;

  /// Reads the length code; true when it means the fixed length.
  bool readLength(PenFileStream& stream) const {
    unsigned char code = 0;
    return stream.readLengthCode(code) && decodeLength(code) == expectedLength.value;
  }
};

/// Tag 1, 6 bytes: opens the file.
///
///     0  1  descriptorByte0   unsigned; kept, no known meaning
///     1  1  coordinateFormat  must be 2
///     2  1  descriptorByte2   unsigned; kept, no known meaning
///     3  1  descriptorByte3   unsigned; kept, no known meaning
class FileDescriptor final : public BasePacket {
 public:
  FileDescriptor() : BasePacket(PacketTag::fileDescriptor) {}

  /// Unlike the other packets, reads its tag too. Any other tag and any other format fail with a
  /// SEVERE line in the log; bytes 2 and 3 are stored only when the format is right.
  bool readFromStream(PenFileStream& stream) override;

  unsigned char descriptorByte0 = 0;
  unsigned char coordinateFormat = 0;
  unsigned char descriptorByte2 = 0;
  unsigned char descriptorByte3 = 0;
};

/// Tag 17, 9 bytes: kept unchanged, no known meaning.
///
///     0  1  paramByte0
///     1  2  paramWord1  two bytes in file order
///     3  2  paramWord2  two bytes in file order
///     5  1  paramByte5
///     6  1  paramByte6
class PhysicalParams final : public BasePacket {
 public:
  PhysicalParams() : BasePacket(PacketTag::physicalParams) {}
  bool readFromStream(PenFileStream& stream) override;

  unsigned char paramByte0 = 0;
  std::array<unsigned char, 2> paramWord1{};
  std::array<unsigned char, 2> paramWord2{};
  unsigned char paramByte5 = 0;
  unsigned char paramByte6 = 0;
};

/// Tag 49, 9 bytes: seven bytes kept in file order, no known meaning.
class FileDateTime final : public BasePacket {
 public:
  FileDateTime() : BasePacket(PacketTag::fileDateTime) {}
  bool readFromStream(PenFileStream& stream) override;

  std::array<unsigned char, 7> dateTimeBytes{};
};

/// Tag 97, 6 bytes: a position of the pen tip.
///
///     0  2  signed r: x = (r + 5.0) / 10.0, so -3276.3 to 3277.2
///     2  2  signed r: y = (r + 2.5) / 5.0, so -6553.1 to 6553.9
///
/// The plug-in draws one unit of x or y as 0.2834 points, a
/// tenth of a millimetre; y grows downwards on the sheet.
class CoordinatePoint final : public BasePacket {
 public:
  CoordinatePoint() : BasePacket(PacketTag::coordinatePoint) {}
  bool readFromStream(PenFileStream& stream) override;

  double x = 0.0;
  double y = 0.0;
};

/// Tag 100, 6 bytes: the pressure from here on.
///
///     0  1  pressureAlgorithm: 1, 5 or 6
///     1  1  ignored
///     2  2  raw, unsigned: with 1 and 5 the pressure is raw / 4 (0 to 16383);
///           with 6 raw is taken as signed (-32768 to 32767)
class PressureData final : public BasePacket {
 public:
  PressureData() : BasePacket(PacketTag::pressureData) {}

  /// Any other algorithm fails with a WARNING line in the log and leaves the pressure as it was.
  bool readFromStream(PenFileStream& stream) override;

  std::int32_t pressure = 0;
};

/// Tag 101, 6 bytes: the tilt from here on.
///
///     0  1  tilt x, signed (-128 to 127)
///     1  1  tilt y, signed
///     2  2  ignored
class TiltData final : public BasePacket {
 public:
  TiltData() : BasePacket(PacketTag::tiltData) {}
  bool readFromStream(PenFileStream& stream) override;

  std::int32_t tiltX = 0;
  std::int32_t tiltY = 0;
};

/// Tag 194, 6 bytes: the time from here on.
///
///     0  1  kind: 17, or the time is 0
///     1  3  time, each byte widened as signed before they are put together: 00 01 00 is 256, but
///           00 01 80 is 0xFFFFFF80 and 80 00 00 is 0xFF800000
class TimestampData final : public BasePacket {
 public:
  TimestampData() : BasePacket(PacketTag::timestampData) {}

  /// Sets the time to 0 before anything else.
  bool readFromStream(PenFileStream& stream) override;

  std::uint32_t timestamp = 0;
};

/// Tag 241, 3 bytes: what the pen does.
///
///     0  1  bit 7: a new layer starts; bit 0: the pen is down when set, up when clear;
///           the other bits are ignored
///
/// Bit 7 wins: bit 0 beside it is ignored, and the pen stays up or down as it was.
class Status final : public BasePacket {
 public:
  Status() : BasePacket(PacketTag::status) {}
  bool readFromStream(PenFileStream& stream) override;

  bool startsLayer() const { return (status & 0x80U) != 0; }
  bool penIsDown() const { return (status & 0x01U) != 0; }

  unsigned char status = 0;
};

}  // namespace Orvo
