#include "translate/packed.h"

#include <algorithm>
#include <limits>
#include <new>
#include <zlib.h>

namespace translate {
namespace {

constexpr std::size_t kMostBytes = std::numeric_limits<int>::max();
constexpr std::size_t kFreeGrowth = std::size_t{8} << 20;
constexpr std::size_t kMostGrowth = 100;

class Unpacker {
 public:
  Unpacker() {
    constexpr int kGzipOnly = 16 + MAX_WBITS;
    if (inflateInit2(&stream_, kGzipOnly) != Z_OK) throw std::bad_alloc();
  }
  Unpacker(const Unpacker&) = delete;
  Unpacker& operator=(const Unpacker&) = delete;
  ~Unpacker() { inflateEnd(&stream_); }

  Unpacked unpack(std::string_view bytes) {
    if (bytes.size() > kMostBytes) return {{}, "it is larger than 2 GiB"};
    const std::size_t limit =
        std::min(kMostBytes, std::max(kFreeGrowth, kMostGrowth * bytes.size()));
    // The library takes bytes that may be changed, but changes none.
    stream_.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes.data()));
    stream_.avail_in = static_cast<uInt>(bytes.size());
    Unpacked result;
    while (true) {
      const int status = inflateSome(result.bytes);
      if (status == Z_MEM_ERROR) throw std::bad_alloc();
      if (result.bytes.size() > limit) return {{}, "its gzip grows more than a hundredfold"};
      if (status == Z_STREAM_END) {
        // Zeros may fill up the end, and another member may follow.
        if (!beginsMember()) return result;
        inflateReset(&stream_);
      } else if (status != Z_OK) {
        return {{}, "its gzip is damaged or breaks off"};
      }
    }
  }

 private:
  // There is always room, so that an error of the buffers means that the input breaks off.
  int inflateSome(std::string& out) {
    constexpr std::size_t kLeastRoom = std::size_t{1} << 16;
    constexpr std::size_t kMostRoom = std::size_t{1} << 24;
    const std::size_t before = out.size();
    const std::size_t room = std::clamp(before, kLeastRoom, kMostRoom);
    out.resize(before + room);
    stream_.next_out = reinterpret_cast<Bytef*>(out.data() + before);
    stream_.avail_out = static_cast<uInt>(room);
    const int status = inflate(&stream_, Z_NO_FLUSH);
    out.resize(before + room - stream_.avail_out);
    return status;
  }

  bool beginsMember() const {
    return stream_.avail_in >= 2 && stream_.next_in[0] == 0x1F && stream_.next_in[1] == 0x8B;
  }

  z_stream stream_{};
};

}  // namespace

bool isPacked(std::string_view bytes) {
  return bytes.starts_with("\x1F\x8B");
}

Unpacked unpack(std::string_view bytes) {
  return Unpacker().unpack(bytes);
}

}  // namespace translate
