#include "rescue/pen_habits.h"

#include <algorithm>
#include <cmath>

namespace rescue {
namespace {

// What numbers cost in bits where nothing is known of them.
constexpr double kWordBits = 16;
constexpr double kTimeBits = 24;
// A position on the sheet: few recordings use a tenth of the range.
constexpr double kPlaceBits = 13;

constexpr std::size_t kTags = 256;

// The cost of a number that mostly lies about `step` from the one before and now and then far away.
double costOfStep(int difference, double step) {
  const double ratio = difference / step;
  return std::log2(3.2 * step) + std::log2(1 + ratio * ratio);
}

int median(std::vector<int>& values) {
  if (values.empty()) return 1;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return std::max(1, *middle);
}

bool isHeader(PacketTag tag) {
  return tag == PacketTag::fileDescriptor || tag == PacketTag::physicalParams ||
         tag == PacketTag::fileDateTime;
}

}  // namespace

// The steps between neighbours, and where the last packets stood that they are measured from.
struct PenHabits::Steps {
  std::vector<int> x, y, pressure, time;
  std::size_t lastPoint = kNowhere;
  std::size_t lastPressure = kNowhere;
  std::size_t lastTime = kNowhere;

  void breakOff() { lastPoint = lastPressure = lastTime = kNowhere; }
};

PenHabits::PenHabits(PenBytes bytes) {
  Steps steps;
  learn(bytes, steps);
  stepX_ = median(steps.x);
  stepY_ = median(steps.y);
  pressureStep_ = median(steps.pressure);
  timeStep_ = median(steps.time);
  const auto tag = static_cast<unsigned char>(PacketTag::coordinatePoint);
  sixBytes_ = count(tag, 0x41) > count(tag, 0x06) ? 0x41 : 0x06;
  weighHeads();
  weighStatuses();
}

// A packet counts when another one follows right behind it; one of an unknown tag only between
// packets of known ones, since any two bytes could be its head.
void PenHabits::learn(PenBytes bytes, Steps& steps) {
  std::size_t seen = 0;
  bool inStep = false;
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t known = bytes.knownPacket(i);
    const std::size_t unknown = inStep && known == 0 ? bytes.unknownPacket(i) : 0;
    const std::size_t length = std::max(known, unknown);
    const std::size_t next = length == 0 ? 0 : bytes.knownPacket(i + length);
    const bool counts = known != 0 ? next != 0 || (inStep && bytes.unknownPacket(i + length) != 0)
                                   : next != 0 && bytes.knownPacket(i + length + next) != 0;
    inStep = counts;
    if (!counts) {
      steps.breakOff();
      ++i;
      continue;
    }
    learnPacket(bytes, i, steps);
    seen += length;
    i += length;
  }
  const auto tag = static_cast<unsigned char>(PacketTag::coordinatePoint);
  const std::uint32_t points = count(tag, 0x06) + count(tag, 0x41);
  if (points > 0) bytesPerPoint_ = std::max(6.0, static_cast<double>(seen) / points);
}

void PenHabits::learnPacket(PenBytes bytes, std::size_t offset, Steps& steps) {
  ++counts_[static_cast<std::size_t>(bytes[offset]) << 8 | bytes[offset + 1]];
  switch (bytes.tag(offset)) {
    case PacketTag::coordinatePoint:
      if (steps.lastPoint != kNowhere) {
        steps.x.push_back(std::abs(bytes.word(offset + 2) - bytes.word(steps.lastPoint + 2)));
        steps.y.push_back(std::abs(bytes.word(offset + 4) - bytes.word(steps.lastPoint + 4)));
      }
      steps.lastPoint = offset;
      break;
    case PacketTag::pressureData:
      if (steps.lastPressure != kNowhere) {
        steps.pressure.push_back(
            std::abs(bytes.word(offset + 4) - bytes.word(steps.lastPressure + 4)));
      }
      steps.lastPressure = offset;
      break;
    case PacketTag::timestampData:
      if (steps.lastTime != kNowhere) {
        steps.time.push_back(
            std::abs(bytes.count24(offset + 3) - bytes.count24(steps.lastTime + 3)));
      }
      steps.lastTime = offset;
      break;
    case PacketTag::status:
      ++statuses_[bytes[offset + 2]];
      steps.lastPoint = steps.lastPressure = kNowhere;
      break;
    default:
      break;
  }
}

// Nearly all of the 65,536 heads never occur: what they have in common is worked out once for each
// tag.
void PenHabits::weighHeads() {
  constexpr std::size_t kCodes = 256;
  std::uint64_t seen = 1;
  double strange = 0.5;  // Unknown packets of a head that is there only once.
  for (std::size_t tag = 0; tag < kTags; ++tag) {
    const bool known = lengthOf(static_cast<PacketTag>(tag)) != 0;
    for (std::size_t head = tag * kCodes; head < (tag + 1) * kCodes; ++head) {
      seen += counts_[head];
      if (!known && counts_[head] == 1) ++strange;
    }
  }
  const auto all = static_cast<double>(seen);
  // One of some 16,000 unlikely heads; where little is known, not likelier for that.
  const double strangeCost = std::max(22.0, std::log2(all / strange) + 14);
  for (std::size_t number = 0; number < kTags; ++number) {
    const auto tag = static_cast<PacketTag>(number);
    const bool known = lengthOf(tag) != 0;
    const double most = known ? 10 : strangeCost;
    for (std::size_t head = number * kCodes; head < (number + 1) * kCodes; ++head) {
      const bool isUsual = !isHeader(tag) && counts_[head] > (known ? 0U : 1U);
      const double cost = isUsual ? std::min(std::log2(all / counts_[head]), most) : most;
      headGains_[head] = static_cast<float>(kWordBits - cost);
    }
  }
}

void PenHabits::weighStatuses() {
  double all = 1;
  for (const std::uint32_t count : statuses_)
    all += count;
  for (std::size_t status = 0; status < statuses_.size(); ++status) {
    statusGains_[status] = 8 - std::min(12.0, std::log2(all / (statuses_[status] + 0.1)));
  }
}

double PenHabits::stepGain(int x, int y) const {
  return 2 * kWordBits - std::min(costOfStep(x, stepX_), kWordBits + 1) -
         std::min(costOfStep(y, stepY_), kWordBits + 1);
}

double PenHabits::pointGain(PenBytes bytes, std::size_t offset, std::size_t previous) const {
  if (previous == kNowhere) return 2 * (kWordBits - kPlaceBits);
  return stepGain(bytes.word(offset + 2) - bytes.word(previous + 2),
                  bytes.word(offset + 4) - bytes.word(previous + 4));
}

double PenHabits::pressureGain(PenBytes bytes, std::size_t offset, std::size_t previous) const {
  constexpr double kAlgorithmGain = 6;
  if (previous == kNowhere) return kAlgorithmGain;
  const double cost = costOfStep(bytes.word(offset + 4) - bytes.word(previous + 4), pressureStep_);
  return kAlgorithmGain + kWordBits - std::min(cost, kWordBits + 1);
}

double PenHabits::timeGain(PenBytes bytes, std::size_t offset, std::size_t previous) const {
  constexpr unsigned char kPenTime = 17;
  const double kindGain = bytes[offset + 2] == kPenTime ? 7 : -2;
  if (previous == kNowhere) return kindGain;
  const double cost =
      costOfStep(bytes.count24(offset + 3) - bytes.count24(previous + 3), timeStep_);
  return kindGain + kTimeBits - std::min(cost, kTimeBits + 1);
}

}  // namespace rescue
