#include "rescue/pen_mending.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace rescue {
namespace {

constexpr unsigned char kUp = 0x00;
constexpr unsigned char kDown = 0x01;
constexpr unsigned char kLayer = 0x80;
constexpr double kMillimetre = 10;  // In units of the sheet.
// Fewer points do not tell what is far in a recording.
constexpr std::size_t kFewest = 12;

// The bytes of a packet that was put in or put right: none of them is longer than six.
class OwnBytes {
 public:
  OwnBytes() = default;
  explicit OwnBytes(std::string_view bytes) : size_(static_cast<unsigned char>(bytes.size())) {
    std::copy(bytes.begin(), bytes.end(), bytes_.begin());
  }

  bool empty() const { return size_ == 0; }
  std::string_view view() const { return {bytes_.data(), size_}; }
  char operator[](std::size_t i) const { return bytes_[i]; }
  char& operator[](std::size_t i) { return bytes_[i]; }

 private:
  std::array<char, 6> bytes_{};
  unsigned char size_ = 0;
};

// A packet of the mended recording. There are many of them: they are kept small.
struct Packet {
  std::size_t offset = 0;      // In the source; of what was put in, where it was put in.
  std::size_t lostBefore = 0;  // Bytes in front of it that could not be read.
  std::uint32_t length = 0;    // In the source; 0 for what was put in.
  PacketTag tag{};
  bool strange = false;  // Of an unknown tag, and the only one of its kind.
  std::optional<LeftOut> leftOut;
  OwnBytes bytes;  // Of what was put in or put right; the others have the source's.

  bool isLive() const { return !leftOut; }
  bool is(PacketTag wanted) const { return isLive() && tag == wanted; }
};

// A point that the parser would keep.
struct Dot {
  std::size_t packet;
  double x;
  double y;
  bool startsStroke;
  std::size_t lostBefore;  // Bytes lost since the dot before.
  std::size_t gapPacket;   // The first packet behind those.
  std::size_t dropped;     // Points left out since the dot before.
};

double distance(const Dot& a, const Dot& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

// The value that all but the largest ones stay below: a few are left out, since they may be made
// up.
double upperBound(std::vector<double> values) {
  if (values.empty()) return 0;
  const std::size_t most = values.size() / 2;
  const std::size_t out = std::min(most, std::max<std::size_t>(3, values.size() / 500));
  const auto place = values.begin() + static_cast<std::ptrdiff_t>(values.size() - 1 - out);
  std::nth_element(values.begin(), place, values.end());
  return *place;
}

class Mending {
 public:
  Mending(const PenMendingInput& input, PenRescue& result);
  void run();

 private:
  // The steps, in order.
  void findDescriptor();
  void turnFurtherRecordingsIntoLayers();
  void dropReplacedBytes();
  void mendStatuses();
  void dropHalfPackets();
  void dropLeaps();
  void dropPointsFarAboveTheSheet();
  void dropStrayStrokes();
  void breakStrokes();
  void dropStrangePackets();
  void write();

  std::optional<Packet> mendedDescriptor() const;
  Packet statusPacket(unsigned char value, const Packet& near) const;
  unsigned char statusOf(const Packet& packet) const;
  bool pointsFollow(std::size_t index) const;
  bool gapFollows(std::size_t index) const;
  struct StatusHabits;
  StatusHabits statusHabits() const;
  std::vector<Dot> dots() const;
  bool holdsHead(const Packet& packet) const;
  bool endsLikeTheGap(const Packet& packet) const;
  bool isFarOut(const std::vector<Dot>& dots, std::size_t index) const;
  bool mayJoin(const std::vector<Dot>& dots, std::size_t index) const;
  bool mayJoinOverDropped(const std::vector<Dot>& dots, std::size_t index) const;
  double stepAround(const std::vector<Dot>& dots, std::size_t index) const;
  bool timeLeaps(std::size_t index) const;
  bool gapHoldsStatus(std::size_t index) const;
  void drop(Packet& packet, LeftOut reason);
  void leaveOut(std::size_t begin, std::size_t end, LeftOut reason);

  const Source& source_;
  PenBytes bytes_;
  const PenHabits& habits_;
  std::optional<std::string_view> withQuestionMarks_;
  PenRescue& result_;
  std::vector<Packet> packets_;
  std::size_t lostBehind_ = 0;
  bool descriptorRead_ = false;
};

Mending::Mending(const PenMendingInput& input, PenRescue& result)
    : source_(input.source),
      bytes_(input.source.bytes()),
      habits_(input.habits),
      withQuestionMarks_(input.withQuestionMarks),
      result_(result) {
  packets_.reserve(input.reading.packets.size() + 8);
  std::size_t end = 0;
  for (const ReadPacket& read : input.reading.packets) {
    Packet packet;
    packet.tag = bytes_.tag(read.offset);
    packet.offset = read.offset;
    packet.length = static_cast<std::uint32_t>(read.length);
    packet.lostBefore = read.offset - end;
    packet.strange = habits_.isStrange(bytes_, read.offset);
    packets_.push_back(packet);
    end = read.offset + read.length;
  }
  lostBehind_ = bytes_.size() - end;
}

void Mending::run() {
  findDescriptor();
  turnFurtherRecordingsIntoLayers();
  dropReplacedBytes();
  mendStatuses();
  dropHalfPackets();
  dropLeaps();
  dropPointsFarAboveTheSheet();
  dropStrayStrokes();
  breakStrokes();
  dropStrangePackets();
  write();
}

void Mending::drop(Packet& packet, LeftOut reason) {
  if (packet.tag == PacketTag::coordinatePoint && reason == LeftOut::madeUp)
    ++result_.pointsDropped;
  packet.leftOut = reason;
}

// -- the descriptor -------------------------------------------------------------

// The first six bytes as a descriptor, where most of what is fixed in it is there.
std::optional<Packet> Mending::mendedDescriptor() const {
  constexpr std::size_t kLength = 6;
  if (bytes_.size() < kLength) return std::nullopt;
  const bool hasTag = bytes_.tag(0) == PacketTag::fileDescriptor;
  const bool hasLength = bytes_.length(0) == kLength;
  const bool hasFormat = bytes_[3] == 2;
  if (int{hasTag} + int{hasLength} + int{hasFormat} < 2) return std::nullopt;
  const bool isFree = packets_.empty() || packets_.front().offset >= kLength ||
                      (packets_.front().strange && packets_.front().length == kLength);
  if (!isFree) return std::nullopt;
  Packet packet;
  packet.tag = PacketTag::fileDescriptor;
  packet.length = kLength;
  packet.bytes = OwnBytes(bytes_.view().substr(0, kLength));
  packet.bytes[0] = 1;
  if (!hasLength) packet.bytes[1] = static_cast<char>(habits_.sixBytes());
  packet.bytes[3] = 2;
  return packet;
}

// What stands in front of the first descriptor is junk, unless it holds points.
void Mending::findDescriptor() {
  constexpr std::size_t kFewPoints = 3;
  std::size_t points = 0;
  std::size_t index = 0;
  for (; index < packets_.size() && points < kFewPoints; ++index) {
    if (packets_[index].is(PacketTag::fileDescriptor)) break;
    if (packets_[index].is(PacketTag::coordinatePoint)) ++points;
  }
  if (index < packets_.size() && packets_[index].is(PacketTag::fileDescriptor)) {
    packets_[index].lostBefore = packets_[index].offset;
    packets_.erase(packets_.begin(), packets_.begin() + static_cast<std::ptrdiff_t>(index));
    descriptorRead_ = true;
    return;
  }
  result_.descriptorMended = true;
  std::optional<Packet> mended = mendedDescriptor();
  if (mended) {
    if (!packets_.empty() && packets_.front().offset == 0) {
      packets_.erase(packets_.begin());
    } else if (!packets_.empty()) {
      packets_.front().lostBefore -= mended->length;
    } else {
      lostBehind_ -= mended->length;
    }
    packets_.insert(packets_.begin(), *mended);
    return;
  }
  Packet made;
  made.tag = PacketTag::fileDescriptor;
  const char bytes[] = {1, static_cast<char>(habits_.sixBytes()), 0, 2, 0, 0};
  made.bytes = OwnBytes({bytes, sizeof bytes});
  packets_.insert(packets_.begin(), made);
}

void Mending::turnFurtherRecordingsIntoLayers() {
  std::vector<Packet> packets;
  packets.reserve(packets_.size() + 8);
  bool inHeader = false;
  bool penIsDown = false;
  for (std::size_t i = 0; i < packets_.size(); ++i) {
    Packet& packet = packets_[i];
    if (i > 0 && packet.is(PacketTag::fileDescriptor)) {
      if (penIsDown) packets.push_back(statusPacket(kUp, packet));
      packets.push_back(statusPacket(kLayer, packet));
      penIsDown = false;
      ++result_.furtherRecordings;
      inHeader = true;
    }
    const bool isHeader = packet.tag == PacketTag::fileDescriptor ||
                          packet.tag == PacketTag::physicalParams ||
                          packet.tag == PacketTag::fileDateTime;
    inHeader = inHeader && isHeader;
    if (inHeader) drop(packet, LeftOut::headerPacket);
    if (packet.is(PacketTag::status) && (statusOf(packet) & kLayer) == 0) {
      penIsDown = (statusOf(packet) & kDown) != 0;
    }
    packets.push_back(packet);
  }
  packets_ = std::move(packets);
}

// -- "?" for bytes from 80 up -----------------------------------------------------

// A "?" in a position, a tilt or a time may have been any byte from 80 up. In the high byte of x it
// would have meant a negative one, which shows in the neighbours.
void Mending::dropReplacedBytes() {
  if (!withQuestionMarks_) return;
  constexpr double kNear = 15 * kMillimetre;
  const auto replaced = [&](const Packet& packet, std::size_t byte) {
    return (*withQuestionMarks_)[packet.offset + byte] == '?';
  };
  for (Packet& packet : packets_) {
    if (!packet.isLive() || packet.length == 0) continue;
    const bool isPlaceOrTime =
        packet.tag == PacketTag::coordinatePoint || packet.tag == PacketTag::timestampData;
    const bool isHurt =
        isPlaceOrTime
            ? replaced(packet, 3) || replaced(packet, 4) || replaced(packet, 5)
            : packet.tag == PacketTag::tiltData && (replaced(packet, 2) || replaced(packet, 3));
    if (isHurt) drop(packet, LeftOut::madeUp);
  }
  const std::vector<Dot> all = dots();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (!replaced(packets_[all[i].packet], 2)) continue;
    const bool fits = (i > 0 && distance(all[i - 1], all[i]) < kNear) ||
                      (i + 1 < all.size() && distance(all[i], all[i + 1]) < kNear);
    if (!fits) drop(packets_[all[i].packet], LeftOut::madeUp);
  }
}

// -- statuses -----------------------------------------------------------------------

unsigned char Mending::statusOf(const Packet& packet) const {
  return packet.bytes.empty() ? bytes_[packet.offset + 2]
                              : static_cast<unsigned char>(packet.bytes[2]);
}

Packet Mending::statusPacket(unsigned char value, const Packet& near) const {
  Packet packet;
  packet.tag = PacketTag::status;
  packet.offset = near.offset;
  const char bytes[] = {static_cast<char>(PacketTag::status), 3, static_cast<char>(value)};
  packet.bytes = OwnBytes({bytes, sizeof bytes});
  return packet;
}

// Whether a point comes behind this packet before the next status.
bool Mending::pointsFollow(std::size_t index) const {
  for (++index; index < packets_.size(); ++index) {
    if (packets_[index].is(PacketTag::coordinatePoint)) return true;
    if (packets_[index].is(PacketTag::status)) return false;
  }
  return false;
}

// Whether bytes are lost between this packet and the next point or status.
bool Mending::gapFollows(std::size_t index) const {
  for (++index; index < packets_.size(); ++index) {
    if (packets_[index].lostBefore > 0) return true;
    if (packets_[index].is(PacketTag::coordinatePoint)) return false;
    if (packets_[index].is(PacketTag::status)) return false;
  }
  return lostBehind_ > 0;
}

// What seems to be a mistake is none where the recording does it often.
struct Mending::StatusHabits {
  std::size_t downs = 0;
  std::size_t downsWhileDown = 0;
  std::size_t pointsWhileUp = 0;
  std::size_t layersWhileDown = 0;
  std::size_t pointsAfterLayer = 0;

  bool isUsual(std::size_t count) const { return count > 2 && count * 4 > downs; }
};

Mending::StatusHabits Mending::statusHabits() const {
  StatusHabits habits;
  bool isDown = false;
  bool hasPoints = false;
  for (std::size_t i = 0; i < packets_.size(); ++i) {
    if (packets_[i].is(PacketTag::coordinatePoint)) hasPoints = true;
    if (!packets_[i].is(PacketTag::status)) continue;
    const unsigned char status = statusOf(packets_[i]);
    if ((status & kLayer) != 0) {
      if (isDown) ++habits.layersWhileDown;
      if (!isDown && pointsFollow(i)) ++habits.pointsAfterLayer;
      continue;
    }
    const bool goesDown = (status & kDown) != 0;
    if (goesDown) ++habits.downs;
    if (goesDown && isDown && hasPoints) ++habits.downsWhileDown;
    if (!goesDown && pointsFollow(i)) ++habits.pointsWhileUp;
    isDown = goesDown;
    hasPoints = false;
  }
  return habits;
}

// Up and down take turns: where one is missing, it was lost, or another status stands in its place.
void Mending::mendStatuses() {
  const StatusHabits habits = statusHabits();
  std::vector<Packet> packets;
  packets.reserve(packets_.size() + 8);
  bool isDown = false;
  bool hasPoints = false;
  for (std::size_t i = 0; i < packets_.size(); ++i) {
    Packet& packet = packets_[i];
    if (packet.is(PacketTag::coordinatePoint)) hasPoints = true;
    if (!packet.is(PacketTag::status)) {
      packets.push_back(packet);
      continue;
    }
    unsigned char status = statusOf(packet);
    const auto correct = [&](unsigned char right) {
      status = right;
      packet.bytes = statusPacket(right, packet).bytes;
      ++result_.statusesMended;
    };
    if ((status & kLayer) != 0) {
      const bool isRare = packet.length != 0 && habits_.statusCount(status) < 2;
      if (isDown && !habits.isUsual(habits.layersWhileDown)) {
        correct(kUp);
      } else if (!isDown && isRare && pointsFollow(i) && !gapFollows(i) &&
                 !habits.isUsual(habits.pointsAfterLayer)) {
        correct(kDown);
      } else {
        packets.push_back(packet);
        continue;
      }
    }
    const bool goesDown = (status & kDown) != 0;
    if (goesDown && isDown && hasPoints && !habits.isUsual(habits.downsWhileDown)) {
      packets.push_back(statusPacket(kUp, packet));
      ++result_.statusesMended;
    }
    packets.push_back(packet);
    isDown = goesDown;
    hasPoints = false;
    if (!goesDown && pointsFollow(i) && !habits.isUsual(habits.pointsWhileUp)) {
      packets.push_back(statusPacket(kDown, packet));
      ++result_.statusesMended;
      isDown = true;
    }
  }
  packets_ = std::move(packets);
}

// -- points that damage made up -------------------------------------------------------

std::vector<Dot> Mending::dots() const {
  std::vector<Dot> all;
  bool isDown = false;
  bool starts = true;
  std::size_t lost = 0;
  std::size_t dropped = 0;
  std::size_t gapPacket = 0;
  for (std::size_t i = 0; i < packets_.size(); ++i) {
    const Packet& packet = packets_[i];
    const bool isStrange = packet.isLive() && packet.strange;
    const std::size_t more = packet.lostBefore + (isStrange ? packet.length : 0);
    if (more > 0 && lost == 0) gapPacket = i;
    lost += more;
    if (packet.is(PacketTag::status)) {
      const unsigned char status = statusOf(packet);
      if ((status & kLayer) != 0) {
        starts = true;
      } else {
        starts = starts || (!isDown && (status & kDown) != 0);
        isDown = (status & kDown) != 0;
      }
    }
    if (packet.leftOut == LeftOut::madeUp && packet.tag == PacketTag::coordinatePoint) ++dropped;
    if (!packet.is(PacketTag::coordinatePoint)) continue;
    const double x = (bytes_.word(packet.offset + 2) + 5.0) / 10.0;
    const double y = (bytes_.word(packet.offset + 4) + 2.5) / 5.0;
    if (y < 0) continue;
    all.push_back({i, x, y, starts, lost, gapPacket, dropped});
    starts = false;
    lost = 0;
    dropped = 0;
  }
  return all;
}

// Whether the head of another packet shows inside the payload.
bool Mending::holdsHead(const Packet& packet) const {
  for (std::size_t i = packet.offset + 2; i + 1 < packet.offset + packet.length; ++i) {
    if (lengthOf(bytes_.tag(i)) != 0 && habits_.count(bytes_[i], bytes_[i + 1]) > 2) return true;
  }
  return false;
}

// Whether the payload ends in the byte that fills what was lost behind it.
bool Mending::endsLikeTheGap(const Packet& packet) const {
  const std::size_t end = packet.offset + packet.length;
  if (end + 2 > bytes_.size()) return false;
  return bytes_[end - 1] == bytes_[end] && bytes_[end] == bytes_[end + 1];
}

// The usual step near a point, but not the steps to the point itself.
double Mending::stepAround(const std::vector<Dot>& dots, std::size_t index) const {
  constexpr std::size_t kReach = 5;
  double sum = 0;
  std::size_t count = 0;
  const std::size_t first = index > kReach ? index - kReach : 1;
  for (std::size_t i = first; i < dots.size() && i <= index + kReach; ++i) {
    if (i == index || i == index + 1 || dots[i].startsStroke) continue;
    if (dots[i].lostBefore > 0 || dots[i].dropped > 0) continue;
    sum += distance(dots[i - 1], dots[i]);
    ++count;
  }
  const double usual = std::hypot(habits_.stepX() / 10, habits_.stepY() / 5);
  return count < 3 ? std::max(usual, count == 0 ? 0.0 : sum / static_cast<double>(count))
                   : sum / static_cast<double>(count);
}

// Whether a point lies away from both of its neighbours, and from where the line before it leads.
bool Mending::isFarOut(const std::vector<Dot>& dots, std::size_t index) const {
  const Dot& dot = dots[index];
  const double step = stepAround(dots, index);
  const double limit = 1.8 * step + 4;
  const bool hasBefore = index > 0 && !dot.startsStroke;
  const bool hasAfter = index + 1 < dots.size() && !dots[index + 1].startsStroke;
  const bool farAfter = !hasAfter || distance(dot, dots[index + 1]) > limit;
  if (!hasBefore) return hasAfter && distance(dot, dots[index + 1]) > 4 * limit;
  if (!farAfter) return false;
  if (distance(dots[index - 1], dot) > limit) return true;
  if (index < 2 || dots[index - 1].startsStroke) return false;
  const Dot& a = dots[index - 2];
  const Dot& b = dots[index - 1];
  return std::hypot(2 * b.x - a.x - dot.x, 2 * b.y - a.y - dot.y) > limit;
}

// The packet in front of a gap is often half of one packet and half of another.
void Mending::dropHalfPackets() {
  std::vector<bool> isLast(packets_.size());
  for (std::size_t i = 0; i < packets_.size(); ++i) {
    const bool lostNext = i + 1 < packets_.size()
                              ? packets_[i + 1].lostBefore > 0 || packets_[i + 1].strange
                              : lostBehind_ > 0;
    isLast[i] = lostNext && packets_[i].length != 0;
    if (!isLast[i] || !packets_[i].isLive()) continue;
    const PacketTag tag = packets_[i].tag;
    const bool isValue = tag == PacketTag::coordinatePoint || tag == PacketTag::pressureData ||
                         tag == PacketTag::tiltData || tag == PacketTag::timestampData;
    if (isValue && (holdsHead(packets_[i]) || endsLikeTheGap(packets_[i]))) {
      drop(packets_[i], LeftOut::madeUp);
    }
  }
  const std::vector<Dot> all = dots();
  if (all.size() < kFewest) return;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (isLast[all[i].packet] && isFarOut(all, i)) drop(packets_[all[i].packet], LeftOut::madeUp);
  }
}

// The longest step near a point, but not the steps to the point itself; nothing where there are too
// few to judge by.
std::optional<double> longestStepAround(const std::vector<Dot>& dots, std::size_t index) {
  constexpr std::size_t kReach = 4;
  constexpr std::size_t kLeast = 2;
  double longest = 0;
  std::size_t count = 0;
  const std::size_t first = index > kReach ? index - kReach : 1;
  for (std::size_t i = first; i < dots.size() && i <= index + kReach; ++i) {
    if (i == index || i == index + 1 || dots[i].startsStroke) continue;
    longest = std::max(longest, distance(dots[i - 1], dots[i]));
    ++count;
  }
  return count < kLeast ? std::nullopt : std::optional(longest);
}

// A changed value makes a point leap out of its stroke and back.
void Mending::dropLeaps() {
  if (withQuestionMarks_) return;
  const std::vector<Dot> all = dots();
  // By how much a point stands out of its neighbours, beyond what the steps around explain.
  constexpr double kNone = -std::numeric_limits<double>::infinity();
  std::vector<double> leaps(all.size(), kNone);
  std::vector<double> honest;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const bool atStart = all[i].startsStroke;
    const bool atEnd = i + 1 == all.size() || all[i + 1].startsStroke;
    if (atStart && atEnd) continue;
    const double before = atStart ? 0 : distance(all[i - 1], all[i]);
    const double behind = atEnd ? 0 : distance(all[i], all[i + 1]);
    // At an end there is one neighbour only: the leap must be twice as far.
    const double out = atStart ? behind / 2 : atEnd ? before / 2 : std::min(before, behind);
    const std::optional<double> usual = longestStepAround(all, i);
    if (!usual) continue;
    leaps[i] = out - 1.2 * *usual;
    honest.push_back(leaps[i]);
  }
  if (honest.size() < kFewest) return;
  const double limit = 1.5 * std::max(0.0, upperBound(honest)) + 4;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (leaps[i] > limit) drop(packets_[all[i].packet], LeftOut::madeUp);
  }
}

// A pen that leaves the sheet does so step by step: a single point above it, far from the points
// before and behind it, is made up.
void Mending::dropPointsFarAboveTheSheet() {
  constexpr double kFar = 5 * kMillimetre;
  std::vector<std::size_t> points;
  for (std::size_t i = 0; i < packets_.size(); ++i)
    if (packets_[i].is(PacketTag::coordinatePoint)) points.push_back(i);
  const auto heightOf = [&](std::size_t point) {
    return (bytes_.word(packets_[points[point]].offset + 4) + 2.5) / 5.0;
  };
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    const double y = heightOf(i);
    const double highest = std::min(heightOf(i - 1), heightOf(i + 1));
    if (y < 0 && highest >= 0 && highest - y > kFar) drop(packets_[points[i]], LeftOut::madeUp);
  }
}

// A stroke of one or two points beside a gap, outside of everything else that is drawn.
void Mending::dropStrayStrokes() {
  const std::vector<Dot> all = dots();
  constexpr std::size_t kFewPoints = 2;
  std::vector<bool> isStray(all.size());
  double left = std::numeric_limits<double>::infinity();
  double top = left;
  double right = -left;
  double bottom = -left;
  const auto starts = [&](std::size_t i) {
    return i == all.size() || all[i].startsStroke || all[i].lostBefore > 0;
  };
  for (std::size_t i = 0; i < all.size();) {
    std::size_t end = i + 1;
    while (!starts(end))
      ++end;
    const bool besideGap = all[i].lostBefore > 0 || (end < all.size() && all[end].lostBefore > 0) ||
                           (end == all.size() && lostBehind_ > 0);
    const bool suspect = end - i <= kFewPoints && besideGap;
    for (; i < end; ++i) {
      isStray[i] = suspect;
      if (suspect) continue;
      left = std::min(left, all[i].x);
      right = std::max(right, all[i].x);
      top = std::min(top, all[i].y);
      bottom = std::max(bottom, all[i].y);
    }
  }
  if (left > right) return;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const bool outside = all[i].x < left - kMillimetre || all[i].x > right + kMillimetre ||
                         all[i].y < top - kMillimetre || all[i].y > bottom + kMillimetre;
    if (isStray[i] && outside) drop(packets_[all[i].packet], LeftOut::madeUp);
  }
}

// -- gaps -------------------------------------------------------------------------------

// Whether something like a status stands in the lost bytes before a packet.
bool Mending::gapHoldsStatus(std::size_t index) const {
  const Packet& packet = packets_[index];
  const std::size_t begin = packet.offset - packet.lostBefore;
  if (packet.lostBefore == lengthOf(PacketTag::status)) return true;
  for (std::size_t i = begin; i < packet.offset; ++i) {
    if (bytes_.tag(i) == PacketTag::status) return true;
    if (i + 1 < packet.offset && bytes_[i] == 3 && bytes_[i + 1] <= kDown) return true;
  }
  return false;
}

// Whether the pen's clock runs backwards over the gap before a packet, or further than it does in a
// few points. A recording need not hold times.
bool Mending::timeLeaps(std::size_t index) const {
  constexpr std::size_t kReach = 24;
  constexpr double kFewSteps = 4;
  const auto isTime = [&](const Packet& packet) {
    return packet.is(PacketTag::timestampData) && packet.length != 0;
  };
  std::size_t before = index;
  while (before > 0 && index - before < kReach && !isTime(packets_[before - 1]))
    --before;
  if (before == 0 || !isTime(packets_[before - 1])) return false;
  std::size_t behind = index;
  while (behind < packets_.size() && behind - index < kReach && !isTime(packets_[behind]))
    ++behind;
  if (behind == packets_.size() || !isTime(packets_[behind])) return false;
  const int passed =
      bytes_.count24(packets_[behind].offset + 3) - bytes_.count24(packets_[before - 1].offset + 3);
  return passed < 0 || passed > kFewSteps * habits_.timeStep();
}

// Whether a stroke goes on over lost bytes: only one point can have stood there, and the jump is as
// long as so many steps.
bool Mending::mayJoin(const std::vector<Dot>& dots, std::size_t index) const {
  constexpr double kMostLost = 1;
  const Dot& dot = dots[index];
  const double lost = std::round(static_cast<double>(dot.lostBefore) / habits_.bytesPerPoint());
  if (lost > kMostLost || timeLeaps(dot.gapPacket)) return false;
  for (std::size_t i = dot.gapPacket; i <= dot.packet; ++i) {
    if (packets_[i].lostBefore > 0 && gapHoldsStatus(i)) return false;
  }
  const double step = stepAround(dots, index);
  return distance(dots[index - 1], dot) <= 1.6 * (lost + 1) * step + 1;
}

// The same where points are missing since they held a "?": that many, and in one stroke.
bool Mending::mayJoinOverDropped(const std::vector<Dot>& dots, std::size_t index) const {
  constexpr std::size_t kMostDropped = 3;
  constexpr double kFarthest = 4 * kMillimetre;
  if (dots[index].dropped > kMostDropped) return false;
  const double way = static_cast<double>(dots[index].dropped + 1) * stepAround(dots, index);
  return way <= kFarthest && distance(dots[index - 1], dots[index]) <= 1.6 * way + 1;
}

void Mending::breakStrokes() {
  const std::vector<Dot> all = dots();
  std::vector<bool> breakBefore(packets_.size());
  bool any = false;
  for (std::size_t i = 1; i < all.size(); ++i) {
    if (all[i].startsStroke) continue;
    if (all[i].lostBefore > 0 && !mayJoin(all, i)) {
      breakBefore[all[i].gapPacket] = true;
    } else if (withQuestionMarks_ && all[i].dropped > 0 && !mayJoinOverDropped(all, i)) {
      breakBefore[all[i].packet] = true;
    } else {
      continue;
    }
    any = true;
  }
  if (!any) return;
  std::vector<Packet> packets;
  packets.reserve(packets_.size() + 64);
  bool isDown = false;
  std::optional<Packet> pressure;
  std::optional<Packet> tilt;
  const auto copy = [&](const std::optional<Packet>& packet, const Packet& near) {
    if (!packet) return;
    Packet again = *packet;
    again.bytes = OwnBytes(bytes_.view().substr(packet->offset, packet->length));
    again.offset = near.offset;
    again.length = 0;
    again.lostBefore = 0;
    packets.push_back(again);
  };
  for (std::size_t i = 0; i < packets_.size(); ++i) {
    const Packet& packet = packets_[i];
    if (breakBefore[i]) {
      // The pen ends in the state in which it was.
      packets.push_back(statusPacket(isDown ? kUp : kDown, packet));
      packets.push_back(statusPacket(isDown ? kDown : kUp, packet));
      copy(pressure, packet);
      copy(tilt, packet);
      ++result_.strokesBroken;
    }
    if (packet.is(PacketTag::pressureData)) pressure = packet;
    if (packet.is(PacketTag::tiltData)) tilt = packet;
    if (packet.is(PacketTag::status)) {
      const unsigned char status = statusOf(packet);
      const bool isLayer = (status & kLayer) != 0;
      const bool goesDown = !isLayer && (status & kDown) != 0;
      if (isLayer || (goesDown && !isDown)) {
        pressure.reset();
        tilt.reset();
      }
      if (!isLayer) isDown = goesDown;
    }
    packets.push_back(packet);
  }
  packets_ = std::move(packets);
}

// -- unknown packets ----------------------------------------------------------------------

// A packet of a tag that occurs nowhere else is kept, unless it is as long as a known one: then it
// is more likely one of those, with a changed tag. Either way it counts as a gap.
void Mending::dropStrangePackets() {
  std::array<std::size_t, 256> times{};
  for (const Packet& packet : packets_)
    if (packet.isLive()) ++times[static_cast<unsigned char>(packet.tag)];
  for (Packet& packet : packets_) {
    const bool isOnly = packet.strange && times[static_cast<unsigned char>(packet.tag)] == 1;
    const bool isAsLong = packet.length == lengthOf(PacketTag::status) ||
                          packet.length == lengthOf(PacketTag::coordinatePoint) ||
                          packet.length == lengthOf(PacketTag::physicalParams);
    if (packet.isLive() && isOnly && isAsLong) drop(packet, LeftOut::unreadable);
  }
}

// -- the result ---------------------------------------------------------------------------

void Mending::leaveOut(std::size_t begin, std::size_t end, LeftOut reason) {
  if (begin == end) return;
  const std::size_t from = source_.placeOf(begin);
  const std::size_t to = source_.placeOf(end - 1) + 1;
  std::vector<Stretch>& all = result_.leftOut;
  if (!all.empty() && all.back().end == from && all.back().reason == reason) {
    all.back().end = to;
  } else {
    all.push_back({from, to, reason});
  }
}

void Mending::write() {
  std::string& out = result_.bytes;
  out.clear();
  double lostPoints = static_cast<double>(result_.pointsDropped);
  bool isFirst = true;
  for (const Packet& packet : packets_) {
    if (packet.lostBefore > 0) {
      const bool isJunk = isFirst && descriptorRead_;
      leaveOut(packet.offset - packet.lostBefore, packet.offset,
               isJunk ? LeftOut::junkInFront : LeftOut::unreadable);
      if (!isJunk) {
        lostPoints += std::round(static_cast<double>(packet.lostBefore) / habits_.bytesPerPoint());
      }
    }
    isFirst = false;
    if (packet.leftOut) {
      leaveOut(packet.offset, packet.offset + packet.length, *packet.leftOut);
      continue;
    }
    if (packet.tag == PacketTag::coordinatePoint) ++result_.pointsKept;
    if (packet.bytes.empty()) {
      out += bytes_.view().substr(packet.offset, packet.length);
    } else {
      out += packet.bytes.view();
    }
  }
  leaveOut(bytes_.size() - lostBehind_, bytes_.size(), LeftOut::junkBehind);
  result_.pointsAbout = result_.pointsKept + static_cast<std::size_t>(lostPoints);
}

}  // namespace

void mendPenRecording(const PenMendingInput& input, PenRescue& result) {
  Mending(input, result).run();
}

}  // namespace rescue
