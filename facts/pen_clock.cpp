#include "facts/pen_clock.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace facts {

using Orvo::PacketTag;

std::uint32_t PenClock::count(std::uint32_t shown) {
  if (last_ > shown && last_ - shown > kTurn / 2) turns_ += kTurn;
  last_ = shown;
  constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::uint32_t>(std::min(turns_ + shown, kMost));
}

bool isOnSheet(const Packet& coordinate) {
  return Orvo::yOfRaw(static_cast<std::int16_t>(coordinate.wordAt(2))) >= 0.0;
}

void PenTimes::add(const Packet& packet) {
  if (packet.failure != Orvo::ParseFailure::none) return;
  const auto tag = static_cast<PacketTag>(packet.tag);
  if (tag == PacketTag::coordinatePoint) {
    if (isOnSheet(packet)) points_.push_back(time_);
  } else if (tag == PacketTag::timestampData && packet.byteAt(0) == Orvo::kPenTime) {
    const unsigned high = packet.byteAt(1);
    time_ = clock_.count(high << 16U | packet.wordAt(2));
    if (!hasTime_) untimed_ = points_.empty() ? 0 : points_.size() - 1;
    hasTime_ = true;
    if (!points_.empty()) points_.back() = time_;
  }
}

bool setPenTimes(Orvo::Document& document, const PenTimes& times) {
  auto next = times.points().begin();
  for (Orvo::Layer& layer : document) {
    for (Orvo::Stroke& stroke : layer) {
      for (Orvo::Point& point : stroke) {
        if (next == times.points().end()) return false;
        point.timestamp.value = *next++;
      }
    }
  }
  return next == times.points().end();
}

bool setPenTimes(Orvo::Document& document, NextBytes recording) {
  PacketReader reader(std::move(recording));
  PenTimes times;
  while (const Packet* packet = reader.next()) {
    if (packet->oddity == Oddity::endless) break;
    times.add(*packet);
  }
  return setPenTimes(document, times);
}

}  // namespace facts
