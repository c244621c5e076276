#include "web/replay_data.h"

namespace web {

namespace {

class Packer {
 public:
  void number(std::uint64_t value) {
    for (; value > 127; value >>= 7U)
      bytes_ += static_cast<char>((value & 127U) | 128U);
    bytes_ += static_cast<char>(value);
  }

  void withSign(std::int64_t value) {
    const auto twice = static_cast<std::uint64_t>(value) << 1U;
    number(value < 0 ? ~twice : twice);
  }

  std::string take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

}  // namespace

std::string packed(const std::vector<ReplayStroke>& strokes) {
  Packer packer;
  std::size_t expected = 0;
  render::Spot last;
  for (const ReplayStroke& stroke : strokes) {
    packer.withSign(static_cast<std::int64_t>(stroke.path) - static_cast<std::int64_t>(expected));
    expected = stroke.path + 1;
    packer.number(static_cast<std::uint64_t>(stroke.width));
    packer.number(stroke.line.size());
    for (std::size_t i = 0; i < stroke.line.size(); ++i) {
      const render::Spot& spot = stroke.line[i];
      packer.withSign(std::int64_t{spot.h} - last.h);
      packer.withSign(std::int64_t{spot.v} - last.v);
      packer.number(stroke.waits[i]);
      last = spot;
    }
  }
  return packer.take();
}

}  // namespace web
