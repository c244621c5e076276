#include "cli/damage.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "facts/packet_reader.h"
#include "penfile/packet_format.h"
#include "platform/file.h"

namespace cli {

namespace {

using Bytes = std::vector<unsigned char>;

Bytes readAll(std::FILE* file) {
  Bytes bytes;
  if (!platform::seekTo(file, 0)) return bytes;
  std::array<unsigned char, 65536> part{};
  while (const std::size_t size = std::fread(part.data(), 1, part.size(), file))
    bytes.insert(bytes.end(), part.begin(), part.begin() + size);
  return bytes;
}

class Search {
 public:
  explicit Search(Bytes bytes) : bytes_(std::move(bytes)) {}

  DamagedPackets run() {
    walk([this](std::size_t place, std::size_t) { ++timesOfTag_[bytes_[place]]; });
    DamagedPackets found;
    walk([&](std::size_t place, std::size_t length) {
      if (!occursOnceWithKnownLength(place, length) && !facts::hidesPackets(bytes_, place, length))
        return;
      if (found.count++ == 0) found.first = static_cast<std::int64_t>(place);
    });
    return found;
  }

 private:
  /// Calls `visit` with the place and the length of every unknown packet, as far as they are read.
  template <class Visit>
  void walk(Visit visit) const {
    for (std::size_t place = 0; place + 1 < bytes_.size();) {
      const unsigned char code = bytes_[place + 1];
      const std::size_t length = code == 0 ? 2 : Orvo::decodeLength(code);
      if (length == 0) return;
      if (Orvo::kLengthOfTag[bytes_[place]] == 0) visit(place, length);
      place += length;
    }
  }

  bool occursOnceWithKnownLength(std::size_t place, std::size_t length) const {
    return timesOfTag_[bytes_[place]] == 1 &&
           std::ranges::find(Orvo::kLengthOfTag, length) != Orvo::kLengthOfTag.end();
  }

  Bytes bytes_;
  std::array<std::uint64_t, 256> timesOfTag_{};
};

}  // namespace

DamagedPackets findDamagedPackets(std::FILE* file) {
  return Search(readAll(file)).run();
}

}  // namespace cli
