#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "penfile/packets.h"

namespace rescue {

using Orvo::PacketTag;

/// Reads numbers and packet heads out of the bytes of a recording.
class PenBytes {
 public:
  explicit PenBytes(std::string_view bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size(); }
  std::string_view view() const { return bytes_; }

  unsigned char operator[](std::size_t offset) const {
    return static_cast<unsigned char>(bytes_[offset]);
  }
  /// Two bytes, signed, high byte first.
  int word(std::size_t offset) const {
    return static_cast<std::int16_t>((*this)[offset] << 8 | (*this)[offset + 1]);
  }
  int count24(std::size_t offset) const {
    return (*this)[offset] << 16 | (*this)[offset + 1] << 8 | (*this)[offset + 2];
  }

  /// Whether there is room for a tag and a length code.
  bool hasHead(std::size_t offset) const { return offset + 2 <= bytes_.size(); }
  PacketTag tag(std::size_t offset) const { return static_cast<PacketTag>((*this)[offset]); }
  /// What the length code says; `hasHead` must hold.
  std::size_t length(std::size_t offset) const { return Orvo::decodeLength((*this)[offset + 1]); }

  /// The length of the packet of a known tag that stands whole at `offset`, with a payload that the
  /// parser takes; 0 where there is none.
  std::size_t knownPacket(std::size_t offset) const;

  /// The same for an unknown tag and any length from 2 up.
  std::size_t unknownPacket(std::size_t offset) const;

 private:
  std::string_view bytes_;
};

/// The length that packets of this tag have; 0 for an unknown tag.
std::size_t lengthOf(PacketTag tag);

/// The bytes of a file, with those changes already made that undo what happened to all of it, and
/// where each byte stood in the file.
class Source {
 public:
  explicit Source(std::string bytes) : bytes_(std::move(bytes)) {}

  PenBytes bytes() const { return PenBytes(bytes_); }
  /// The place in the file of the byte at `offset`; one behind the end is allowed.
  std::size_t placeOf(std::size_t offset) const;

  /// A change: from `begin` up to `end` the bytes are left out, and `text` stands there instead.
  struct Edit {
    std::size_t begin;
    std::size_t end;
    std::string_view text;
  };
  /// Makes changes, which must be in order and not overlap.
  void apply(const std::vector<Edit>& edits);

 private:
  struct Shift {
    std::size_t offset;  ///< From this byte on ...
    std::size_t place;   ///< ... the file's bytes from here on.
  };

  std::string bytes_;
  std::vector<Shift> shifts_{{0, 0}};
};

}  // namespace rescue
