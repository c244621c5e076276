#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

#include "platform/file.h"

namespace Orvo {

/// The two bytes that begin a packet, as far as they were read.
struct PacketHead {
  std::optional<unsigned char> tag;
  std::optional<unsigned char> lengthCode;
};

/// A pen recording opened for reading its bytes in order, through the C library's buffer.
///
/// The end of the file, like a read error, is known only after a read came short: a stream that
/// stands right behind the last byte is not yet at the end. From then on nothing more is read.
class PenFileStream {
 public:
  /// Opens the file; `isOpen` tells whether that succeeded.
  explicit PenFileStream(const wchar_t* path);

  /// Takes over an open file that stands at its start; null is a file that could not be opened.
  explicit PenFileStream(platform::File file)
      : file_(std::move(file)), state_(file_ ? State::good : State::closed) {}

  PenFileStream(const PenFileStream&) = delete;
  PenFileStream& operator=(const PenFileStream&) = delete;

  bool isOpen() const { return file_ != nullptr; }
  bool atEnd() const { return state_ == State::atEnd; }
  /// True after a read error, which is never taken for the end.
  bool failed() const { return state_ == State::failed; }
  bool isReadable() const { return state_ == State::good; }

  /// Reads `size` bytes; what the file does not have is zero.
  template <std::size_t size>
  std::array<unsigned char, size> read() {
    std::array<unsigned char, size> bytes{};
    for (unsigned char& byte : bytes)
      byte = next();
    return bytes;
  }

  /// Reads `size` bytes as one big-endian number; what the file does not have is zero. Processors
  /// wait where bytes that were stored one by one are loaded together, as from an array.
  template <std::size_t size>
  std::uint32_t readNumber() {
    if constexpr (size == 1) {
      return next();
    } else {
      const std::uint32_t front = readNumber<size - 1>();
      return front << 8U | next();
    }
  }

  /// Reads one byte; false, and the byte zero, when there is none.
  bool readByte(unsigned char& byte) {
    byte = next();
    return isReadable();
  }

  /// Reads one byte as the tag that begins a packet.
  bool readTag(unsigned char& tag) {
    const bool there = readByte(tag);
    head_ = {};
    if (there) head_.tag = tag;
    return there;
  }

  /// Reads one byte as the length code of that packet.
  bool readLengthCode(unsigned char& code) {
    const bool there = readByte(code);
    if (there) head_.lengthCode = code;
    return there;
  }

  /// How the packet begins that is being read. Kept since a pipe has no way back to it.
  const PacketHead& head() const { return head_; }

  /// Moves to `position` bytes from the start; beyond the end is allowed. Forgets the end if it was
  /// met. A file that cannot be positioned counts as failed.
  void seek(std::int64_t position);

  /// The size of the file in bytes, or -1 when it is not known. Leaves the position undefined:
  /// `seek` before the next read.
  std::int64_t measure();

 private:
  enum class State { good, closed, atEnd, failed };

  unsigned char next() {
    if (!isReadable()) return 0;
    const int byte = platform::readByte(file_.get());
    if (byte != EOF) return static_cast<unsigned char>(byte);
    comeShort();
    return 0;
  }

  void comeShort();

  platform::File file_;
  State state_;
  PacketHead head_;
};

}  // namespace Orvo
