#include "facts/packet_reader.h"

#include <algorithm>

namespace facts {

namespace {

using Orvo::PacketTag;
using Orvo::ParseFailure;

constexpr std::size_t kHead = 2;
// A known packet that begins with the last byte of a packet, and the head of the one behind it.
constexpr std::size_t kLookAhead = 11;

bool isTag(unsigned char tag, PacketTag wanted) {
  return static_cast<PacketTag>(tag) == wanted;
}

}  // namespace

bool isKnownPacketAt(std::span<const unsigned char> bytes, std::size_t place) {
  if (place + kHead > bytes.size()) return false;
  const unsigned length = Orvo::kLengthOfTag[bytes[place]];
  return length != 0 && Orvo::decodeLength(bytes[place + 1]) == length;
}

bool hidesPackets(std::span<const unsigned char> bytes, std::size_t place, std::size_t length) {
  const std::size_t end = std::min(place + length, bytes.size());
  for (std::size_t inside = place + kHead; inside < end; ++inside) {
    if (!isKnownPacketAt(bytes, inside)) continue;
    if (isKnownPacketAt(bytes, inside + Orvo::kLengthOfTag[bytes[inside]])) return true;
  }
  return false;
}

const Packet* PacketReader::next() {
  drop(taken_);
  taken_ = 0;
  if (!has(1)) return nullptr;
  packet_ = {};
  packet_.offset = offset_;
  packet_.tag = bytes()[0];
  if (has(kHead)) packet_.lengthCode = bytes()[1];
  if (offset_ == 0) {
    readDescriptor();
  } else if (packet_.isKnown()) {
    readKnown();
  } else {
    readUnknown();
  }
  return &packet_;
}

// Whether so many bytes are at hand; waits for them.
bool PacketReader::has(std::size_t count) {
  while (buffer_.size() - start_ < count && !atEnd_) {
    buffer_.erase(0, start_);
    start_ = 0;
    const std::string_view more = nextBytes_();
    buffer_ += more;
    atEnd_ = more.empty();
  }
  return buffer_.size() - start_ >= count;
}

void PacketReader::drop(std::size_t count) {
  start_ += count;
  offset_ += static_cast<std::int64_t>(count);
}

std::span<const unsigned char> PacketReader::bytes() const {
  const auto* const first = reinterpret_cast<const unsigned char*>(buffer_.data());
  return std::span(first, buffer_.size()).subspan(start_);
}

void PacketReader::readDescriptor() {
  if (isTag(packet_.tag, PacketTag::fileDescriptor)) return readKnown();
  packet_.failure = ParseFailure::badFirstTag;
  searchNextPacket();
}

void PacketReader::readKnown() {
  const std::size_t length = Orvo::kLengthOfTag[packet_.tag];
  const bool isDescriptor = isTag(packet_.tag, PacketTag::fileDescriptor);
  if (isDescriptor && hasDescriptor_) packet_.failure = ParseFailure::secondDescriptor;
  if (!packet_.lengthCode || Orvo::decodeLength(*packet_.lengthCode) != length) {
    if (packet_.failure == ParseFailure::none) {
      packet_.failure =
          isDescriptor ? ParseFailure::badDescriptorLength : ParseFailure::wrongLength;
    }
    return searchNextPacket();
  }
  take(length);
  if (isDescriptor && packet_.byteAt(1) != Orvo::kCoordinateFormat &&
      packet_.failure == ParseFailure::none) {
    packet_.failure = ParseFailure::badCoordinateFormat;
  }
  if (isTag(packet_.tag, PacketTag::pressureData) && !Orvo::pressureOfRaw(packet_.byteAt(0), 0)) {
    packet_.failure = ParseFailure::badPressureAlgorithm;
  }
  hasDescriptor_ = hasDescriptor_ || isDescriptor;
}

void PacketReader::readUnknown() {
  const unsigned char code = packet_.lengthCode.value_or(0);
  if (packet_.tag == 0 && code == 0) return readZeros();
  const std::size_t length = code == 0 ? kHead : Orvo::decodeLength(code);
  if (length == 0) {
    packet_.oddity = Oddity::endless;
    return searchNextPacket();
  }
  if (length == 1) {
    packet_.oddity = Oddity::tooShort;
    packet_.size = taken_ = 1;
    return;
  }
  has(length + kLookAhead);
  take(length);
  if (packet_.oddity == Oddity::none && hidesPackets(bytes(), 0, length)) {
    packet_.oddity = Oddity::hidesPackets;
  }
}

void PacketReader::readZeros() {
  packet_.oddity = Oddity::zeros;
  while (has(kHead) && bytes()[0] == 0 && bytes()[1] == 0) {
    drop(kHead);
    packet_.size += kHead;
  }
  if (has(kHead) || !has(1) || bytes()[0] != 0) return;
  drop(1);
  ++packet_.size;
}

// The packet is as long as its length code says, or ends with the recording.
void PacketReader::take(std::size_t length) {
  if (!has(length)) packet_.oddity = Oddity::cut;
  taken_ = std::min(length, bytes().size());
  packet_.size = taken_;
  if (taken_ > kHead) packet_.payload = bytes().subspan(kHead, taken_ - kHead);
}

// The packet reaches to the next place where packets follow, or to the end.
void PacketReader::searchNextPacket() {
  std::size_t kept = 0;
  do {
    if (packet_.size >= kHead && kept < kept_.size()) kept_[kept++] = bytes()[0];
    drop(1);
    ++packet_.size;
  } while (has(1) && !packetsFollow());
  packet_.payload = std::span(kept_).first(kept);
}

// Whether two known packets in a row begin here, or one that is the last.
bool PacketReader::packetsFollow() {
  if (!has(kHead) || !isKnownPacketAt(bytes(), 0)) return false;
  const std::size_t length = Orvo::kLengthOfTag[bytes()[0]];
  if (!has(length)) return false;
  if (!has(length + 1)) return true;
  return has(length + kHead) && isKnownPacketAt(bytes(), length);
}

}  // namespace facts
