// Reads a pen recording packet by packet, also past its damage.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "penfile/packet_format.h"
#include "penfile/parse_report.h"

namespace facts {

/// Gives the next bytes of a recording, as many as are at hand; none at its end. They stay until
/// the next call.
using NextBytes = std::function<std::string_view()>;

/// What is strange about a packet that the parser gets past, or to which it comes again and again.
enum class Oddity : std::uint8_t {
  none,
  cut,           ///< The file ends inside it.
  endless,       ///< Its length is 0: the parser reads it for ever.
  tooShort,      ///< Its length is 1: its own length code is the next tag.
  zeros,         ///< No packet but a run of zero bytes, over which the parser steps two by two.
  hidesPackets,  ///< Of an unknown tag, with known packets inside: its length is probably damaged.
};

/// A packet of a recording, with the bytes up to the next one.
struct Packet {
  std::int64_t offset = 0;  ///< In bytes from the start of the recording.
  unsigned char tag = 0;
  /// Nothing where the file ends right after the tag.
  std::optional<unsigned char> lengthCode;
  /// The bytes that the recording has of it, tag and length code included. Where the length code
  /// cannot be trusted, they reach to the next place where two known packets follow each other.
  std::uint64_t size = 0;
  /// What follows the length code, as far as the recording has it; the first 16 bytes at most where
  /// the length code cannot be trusted. Gone with the next packet.
  std::span<const unsigned char> payload;
  /// Why the parser gives up the whole recording here, if it does.
  Orvo::ParseFailure failure = Orvo::ParseFailure::none;
  Oddity oddity = Oddity::none;

  bool isKnown() const { return Orvo::kLengthOfTag[tag] != 0; }
  /// One byte of the payload, or two as one number; bytes that the file does not have are 0.
  unsigned char byteAt(std::size_t index) const {
    return index < payload.size() ? payload[index] : 0;
  }
  std::uint16_t wordAt(std::size_t index) const {
    return static_cast<std::uint16_t>(byteAt(index) << 8U | byteAt(index + 1));
  }
};

/// Whether a known packet of the right length begins at `place`; its two first bytes decide.
bool isKnownPacketAt(std::span<const unsigned char> bytes, std::size_t place);

/// Whether two known packets in a row begin inside the packet of `length` bytes at `place`, behind
/// its two first ones.
bool hidesPackets(std::span<const unsigned char> bytes, std::size_t place, std::size_t length);

/// Reads a recording from its start, in one pass and in little memory. Where the parser gives up,
/// this goes on. It reads ahead only behind packets of unknown tags (11 bytes at most), in damage
/// and in zero bytes.
class PacketReader {
 public:
  explicit PacketReader(NextBytes nextBytes) : nextBytes_(std::move(nextBytes)) {}

  /// The next packet, until the next call; null at the end.
  const Packet* next();

 private:
  bool has(std::size_t count);
  void drop(std::size_t count);
  std::span<const unsigned char> bytes() const;

  void readDescriptor();
  void readKnown();
  void readUnknown();
  void readZeros();
  void take(std::size_t length);
  void searchNextPacket();
  bool packetsFollow();

  NextBytes nextBytes_;
  bool atEnd_ = false;
  std::string buffer_;
  std::size_t start_ = 0;    // Of what is not dropped yet, in the buffer ...
  std::int64_t offset_ = 0;  // ... and in the recording.
  std::size_t taken_ = 0;    // Bytes at `start_` that belong to the packet.
  bool hasDescriptor_ = false;
  std::array<unsigned char, 16> kept_{};
  Packet packet_;
};

}  // namespace facts
