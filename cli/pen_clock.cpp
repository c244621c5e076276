#include "cli/pen_clock.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "penfile/packets.h"

namespace cli {

namespace {

// The times of the points in file order, without those above the sheet.
class PacketWalk {
 public:
  explicit PacketWalk(std::string bytes) : bytes_(std::move(bytes)) {}

  // Only the length codes are needed to go from packet to packet: those of known packets were
  // checked when the recording was read. A packet of length 0 ends it.
  std::vector<std::uint32_t> pointTimes() {
    std::size_t offset = 0;
    while (offset < bytes_.size()) {
      const auto code = static_cast<unsigned char>(number(offset + 1, 1));
      const unsigned length = code == 0 ? 2 : Orvo::decodeLength(code);
      if (length == 0) break;
      readPacket(number(offset, 1), offset + 2);
      offset += length;
    }
    return std::move(times_);
  }

 private:
  void readPacket(std::uint32_t tag, std::size_t payload) {
    if (tag == static_cast<std::uint32_t>(Orvo::PacketTag::coordinatePoint)) {
      const auto y = static_cast<std::int16_t>(number(payload + 2, 2));
      constexpr std::int16_t kFirstOnTheSheet = -2;
      if (y >= kFirstOnTheSheet) times_.push_back(time_);
    } else if (tag == static_cast<std::uint32_t>(Orvo::PacketTag::timestampData)) {
      constexpr std::uint32_t kPenTime = 17;
      if (number(payload, 1) != kPenTime) return;
      time_ = clock_.count(number(payload + 1, 3));
      if (!times_.empty()) times_.back() = time_;
    }
  }

  // Big-endian; bytes past the end of the file are 0.
  std::uint32_t number(std::size_t offset, std::size_t size) const {
    std::uint32_t value = 0;
    for (std::size_t i = offset; i < offset + size; ++i) {
      value = value << 8U | (i < bytes_.size() ? static_cast<unsigned char>(bytes_[i]) : 0U);
    }
    return value;
  }

  std::string bytes_;
  PenClock clock_;
  std::uint32_t time_ = 0;
  std::vector<std::uint32_t> times_;
};

}  // namespace

std::uint32_t PenClock::count(std::uint32_t shown) {
  if (last_ > shown && last_ - shown > kTurn / 2) turns_ += kTurn;
  last_ = shown;
  constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::uint32_t>(std::min(turns_ + shown, kMost));
}

bool setPenTimes(Orvo::Document& document, const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  const std::vector<std::uint32_t> times = PacketWalk(std::move(bytes)).pointTimes();
  auto next = times.begin();
  for (Orvo::Layer& layer : document) {
    for (Orvo::Stroke& stroke : layer) {
      for (Orvo::Point& point : stroke) {
        if (next == times.end()) return false;
        point.timestamp.value = *next++;
      }
    }
  }
  return next == times.end();
}

}  // namespace cli
