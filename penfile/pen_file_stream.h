// The bytes of a pen recording, read in order.
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
/// The end of the file, like a read error, is noticed only when a read falls short: a stream right
/// after the last byte is not yet at the end. From then on nothing more is read.
class PenFileStream {
 public:
  /// Opens the file; `isOpen` tells whether that succeeded.
  explicit PenFileStream(const wchar_t* path);

  /// Takes ownership of an open file positioned at its start; null is a file that could not be
  /// opened.
  explicit PenFileStream(platform::File file)
      : file_(std::move(file)), state_(file_ ? State::good : State::closed) {}

  PenFileStream(const PenFileStream&) = delete;
  PenFileStream& operator=(const PenFileStream&) = delete;

  bool isOpen() const { return file_ != nullptr; }
  bool atEnd() const { return state_ == State::atEnd; }
  /// True after a read error, which is never taken for the end.
  bool failed() const { return state_ == State::failed; }
  bool isReadable() const { return state_ == State::good; }

  /// Reads `size` bytes; bytes that the file does not have are zero.
  template <std::size_t size>
  std::array<unsigned char, size> read() {
    std::array<unsigned char, size> bytes{};
    for (unsigned char& byte : bytes)
      byte = next();
    return bytes;
  }

  /// Reads `size` bytes, 1 to 4, as one big-endian number; bytes that the file does not have are
  /// zero. The number is not put together in an array: loading bytes together that were stored one
  /// by one stalls the processor.
  template <std::size_t size>
  requires(1 <= size && size <= sizeof(std::uint32_t)) std::uint32_t readNumber() {
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
    const bool wasRead = readByte(tag);
    head_ = {};
    if (wasRead) head_.tag = tag;
    return wasRead;
  }

  /// Reads one byte as the length code of that packet.
  bool readLengthCode(unsigned char& code) {
    const bool wasRead = readByte(code);
    if (wasRead) head_.lengthCode = code;
    return wasRead;
  }

  /// The beginning of the packet that is being read. It is kept because a pipe cannot go back to
  /// it.
  const PacketHead& head() const { return head_; }

  /// Moves to `position` bytes from the start; beyond the end is allowed. A stream at the end is
  /// readable again. A file that cannot be positioned counts as failed.
  void seek(std::int64_t position);

  /// The position in bytes from the start, or -1 when it is not known, as in a pipe.
  std::int64_t position() const { return isOpen() ? platform::tell(file_.get()) : -1; }

  /// The size of the file in bytes, or -1 when it is not known. Leaves the position undefined:
  /// `seek` before the next read.
  std::int64_t measure();

 private:
  enum class State { good, closed, atEnd, failed };

  unsigned char next() {
    if (!isReadable()) return 0;
    const int byte = platform::readByte(file_.get());
    if (byte != EOF) return static_cast<unsigned char>(byte);
    fallShort();
    return 0;
  }

  void fallShort();

  platform::File file_;
  State state_;
  PacketHead head_;
};

}  // namespace Orvo
