// The layout of the packets of a pen recording: their tags, their lengths and their numbers.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

/// A pen recording is a plain sequence of packets: no file header, no padding, no trailer. The
/// first packet is a file descriptor, the only one of its kind. All numbers are big-endian.
///
///     offset  size        field
///     0       1           tag: selects the packet
///     1       1           length code: bytes of the whole packet, these two included
///     2       length - 2  payload
///
/// The records in packets.h say what the payload of each known tag holds. A packet of any other tag
/// is skipped by its length code. With the code 0 it is two bytes long. A length of 1 lands on the
/// packet's own length code, which is then read as the next tag, and a length of 0 (the codes 0x40,
/// 0x80 and 0xC0) on its own tag, again and again.
namespace Orvo {

/// The first byte of a packet.
enum class PacketTag : unsigned char {
  fileDescriptor = 1,
  physicalParams = 17,
  fileDateTime = 49,
  coordinatePoint = 97,
  pressureData = 100,
  tiltData = 101,
  timestampData = 194,
  status = 241,
};

constexpr std::array<std::uint16_t, 256> lengthsOfCodes() {
  std::array<std::uint16_t, 256> lengths{};
  unsigned powerOfSix = 1;
  for (unsigned code = 0; code < lengths.size(); ++code) {
    lengths[code] = static_cast<std::uint16_t>(powerOfSix * (code % 64));
    if (code % 64 == 63) powerOfSix *= 6;
  }
  return lengths;
}

/// The length that each code stands for, in a table because every packet needs one.
inline constexpr std::array<std::uint16_t, 256> kLengthOfCode = lengthsOfCodes();

/// The length in bytes that a length code stands for: its low six bits (0 to 63) times 6 (not 2,
/// not 4) to the power of its top two bits, that is times 1, 6, 36 or 216. Both 0x06 and 0x41
/// mean 6.
constexpr unsigned decodeLength(unsigned char code) {
  return kLengthOfCode[code];
}

constexpr std::array<unsigned char, 256> lengthsOfTags() {
  std::array<unsigned char, 256> lengths{};
  const auto set = [&lengths](PacketTag tag, unsigned char length) {
    lengths[static_cast<unsigned char>(tag)] = length;
  };
  set(PacketTag::fileDescriptor, 6);
  set(PacketTag::physicalParams, 9);
  set(PacketTag::fileDateTime, 9);
  set(PacketTag::coordinatePoint, 6);
  set(PacketTag::pressureData, 6);
  set(PacketTag::tiltData, 6);
  set(PacketTag::timestampData, 6);
  set(PacketTag::status, 3);
  return lengths;
}

/// The length in bytes that every packet of a known tag has; 0 for an unknown tag.
inline constexpr std::array<unsigned char, 256> kLengthOfTag = lengthsOfTags();

constexpr unsigned char knownLength(PacketTag tag) {
  return kLengthOfTag[static_cast<unsigned char>(tag)];
}

/// The coordinate format that a file descriptor must name.
inline constexpr unsigned char kCoordinateFormat = 2;

/// The two axes have different scales.
constexpr double xOfRaw(std::int16_t raw) {
  return (raw + 5.0) / 10.0;
}
constexpr double yOfRaw(std::int16_t raw) {
  return (raw + 2.5) / 5.0;
}

/// The pressure that `raw` means by one of the algorithms 1, 5 and 6; nothing by any other.
constexpr std::optional<std::int32_t> pressureOfRaw(unsigned char algorithm, std::uint16_t raw) {
  if (algorithm == 1 || algorithm == 5) return raw / 4;
  if (algorithm == 6) return static_cast<std::int16_t>(raw);
  return std::nullopt;
}

/// A byte as a signed number, widened.
constexpr std::int32_t widenSigned(unsigned char byte) {
  return static_cast<std::int32_t>(static_cast<signed char>(byte));
}

/// The kind of a time stamp whose time counts.
inline constexpr unsigned char kPenTime = 17;

/// The time of such a stamp as it goes into the points: its three bytes, each widened as signed
/// before they are put together.
constexpr std::uint32_t timeOfBytes(unsigned char high, unsigned char middle, unsigned char low) {
  const auto bits = [](unsigned char byte) {
    return static_cast<std::uint32_t>(widenSigned(byte));
  };
  return ((bits(high) << 8U | bits(middle)) << 8U) | bits(low);
}

}  // namespace Orvo
