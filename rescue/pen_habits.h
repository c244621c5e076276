#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "rescue/pen_source.h"

namespace rescue {

/// What is usual in one recording: which packets it has, how far the pen moves from point to point,
/// which statuses it writes. Learned from stretches that read well, so that damage hardly shows.
///
/// The gains say, in bits, how much better a run of bytes is described as this packet than as bytes
/// without any order.
class PenHabits {
 public:
  explicit PenHabits(PenBytes bytes);

  /// The step between two points of a stroke that half of all steps stay below, along each axis in
  /// the units of the packet.
  double stepX() const { return stepX_; }
  double stepY() const { return stepY_; }
  /// The difference of neighbouring times that half of all stay below.
  double timeStep() const { return timeStep_; }
  /// Bytes of the recording for each point.
  double bytesPerPoint() const { return bytesPerPoint_; }
  /// The length code that packets of six bytes have.
  unsigned char sixBytes() const { return sixBytes_; }
  /// How often packets of this tag and length code were seen.
  std::uint32_t count(unsigned char tag, unsigned char code) const {
    return counts_[static_cast<std::size_t>(tag) << 8 | code];
  }
  /// Whether a packet has an unknown tag and is the only one of its kind: it may be damage.
  bool isStrange(PenBytes bytes, std::size_t offset) const {
    return lengthOf(bytes.tag(offset)) == 0 && count(bytes[offset], bytes[offset + 1]) < 2;
  }
  std::uint32_t statusCount(unsigned char status) const { return statuses_[status]; }

  /// Gain of the head of a packet of a known tag, or of an unknown one.
  double headGain(PenBytes bytes, std::size_t offset) const {
    return headGains_[static_cast<std::size_t>(bytes[offset]) << 8 | bytes[offset + 1]];
  }
  /// Gain of the position of a coordinate packet. `previous` is the offset of the one before in the
  /// same stroke; `kNowhere` at a stroke's start or behind a gap.
  double pointGain(PenBytes bytes, std::size_t offset, std::size_t previous) const;
  /// Gain of a position that lies so far from the one before, in the units of the packet.
  double stepGain(int x, int y) const;
  /// The same for the value of a pressure or time packet.
  double pressureGain(PenBytes bytes, std::size_t offset, std::size_t previous) const;
  double timeGain(PenBytes bytes, std::size_t offset, std::size_t previous) const;
  double statusGain(unsigned char status) const { return statusGains_[status]; }

  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

 private:
  struct Steps;
  void learn(PenBytes bytes, Steps& steps);
  void learnPacket(PenBytes bytes, std::size_t offset, Steps& steps);
  void weighHeads();
  void weighStatuses();

  std::vector<std::uint32_t> counts_ = std::vector<std::uint32_t>(65'536);
  std::vector<float> headGains_ = std::vector<float>(65'536);
  std::array<std::uint32_t, 256> statuses_{};
  std::array<double, 256> statusGains_{};
  double stepX_ = 1;
  double stepY_ = 1;
  double pressureStep_ = 1;
  double timeStep_ = 1;
  double bytesPerPoint_ = 14;
  unsigned char sixBytes_ = 6;
};

}  // namespace rescue
