#include "cli/damage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "facts/packet_reader.h"
#include "penfile/packet_format.h"
#include "platform/file.h"

namespace cli {

namespace {

using Bytes = std::span<const unsigned char>;

// A file of any size, of which a part is in memory.
class Window {
 public:
  explicit Window(std::FILE* file) : file_(file), hasMore_(platform::seekTo(file, 0)) {}

  // Up to `size` bytes from `place` on, fewer at the end of the file. `place` is not before that of
  // the last call, and not behind what it gave.
  Bytes at(std::size_t place, std::size_t size) {
    if (place + size > start_ + bytes_.size()) read(place, size);
    const Bytes behind = Bytes(bytes_).subspan(place - start_);
    return behind.first(std::min(size, behind.size()));
  }

 private:
  void read(std::size_t place, std::size_t size) {
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(place - start_));
    start_ = place;
    std::array<unsigned char, 65536> part;
    while (hasMore_ && bytes_.size() < size) {
      const std::size_t count = std::fread(part.data(), 1, part.size(), file_);
      bytes_.insert(bytes_.end(), part.begin(), part.begin() + count);
      hasMore_ = count > 0;
    }
  }

  std::FILE* file_;
  bool hasMore_;
  std::size_t start_ = 0;  // the place of the first byte in memory
  std::vector<unsigned char> bytes_;
};

// Calls `visit` with the place and the length of every unknown packet, as far as they are read, and
// with its bytes and what two known packets take behind it.
template <class Visit>
void walk(std::FILE* file, Visit visit) {
  constexpr std::size_t kHead = 2;
  constexpr std::size_t kTwoPackets = 18;  // The longest known packet has 9 bytes.
  Window window(file);
  for (std::size_t place = 0;;) {
    const Bytes head = window.at(place, kHead);
    if (head.size() < kHead) return;
    const unsigned char code = head[1];
    const std::size_t length = code == 0 ? kHead : Orvo::decodeLength(code);
    if (length == 0) return;
    const Bytes bytes = window.at(place, length + kTwoPackets);
    if (Orvo::kLengthOfTag[bytes[0]] == 0) visit(place, length, bytes);
    if (bytes.size() < length) return;
    place += length;
  }
}

class Search {
 public:
  explicit Search(std::FILE* file) : file_(file) {}

  DamagedPackets run() {
    walk(file_, [this](std::size_t, std::size_t, Bytes bytes) { ++timesOfTag_[bytes[0]]; });
    DamagedPackets found;
    walk(file_, [&](std::size_t place, std::size_t length, Bytes bytes) {
      if (!occursOnceWithKnownLength(bytes[0], length) && !facts::hidesPackets(bytes, 0, length)) {
        return;
      }
      if (found.count++ == 0) found.first = static_cast<std::int64_t>(place);
    });
    return found;
  }

 private:
  bool occursOnceWithKnownLength(unsigned char tag, std::size_t length) const {
    return timesOfTag_[tag] == 1 &&
           std::ranges::find(Orvo::kLengthOfTag, length) != Orvo::kLengthOfTag.end();
  }

  std::FILE* file_;
  std::array<std::uint64_t, 256> timesOfTag_{};
};

}  // namespace

DamagedPackets findDamagedPackets(std::FILE* file) {
  return Search(file).run();
}

}  // namespace cli
