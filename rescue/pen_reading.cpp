#include "rescue/pen_reading.h"

#include <algorithm>
#include <array>
#include <limits>

namespace rescue {
namespace {

constexpr std::size_t kNowhere = PenHabits::kNowhere;

// A stretch that cannot be read must spare so many bits: as many as one or two packets of a likely
// kind bring, so that single ones are not found by chance in noise.
constexpr double kStretchCost = 48;
// A packet that is a byte short.
constexpr double kMissingReturnCost = 10;

// The bytes are read in windows, for the sake of memory. What is read in the last part of a window
// may still change with what follows; it is longer than several of the longest packets.
constexpr std::size_t kWindow = std::size_t{1} << 18;
constexpr std::size_t kUnsettled = std::size_t{1} << 16;

// The last packets of their kind before a place, as offsets.
struct Before {
  std::size_t point = kNowhere;
  std::size_t pressure = kNowhere;
  std::size_t time = kNowhere;
};

double gainOf(PenBytes bytes, const PenHabits& habits, std::size_t offset, const Before& before) {
  const double head = habits.headGain(bytes, offset);
  switch (bytes.tag(offset)) {
    case PacketTag::coordinatePoint:
      return head + habits.pointGain(bytes, offset, before.point);
    case PacketTag::pressureData:
      return head + habits.pressureGain(bytes, offset, before.pressure);
    case PacketTag::timestampData:
      return head + habits.timeGain(bytes, offset, before.time);
    case PacketTag::status:
      return head + habits.statusGain(bytes[offset + 2]);
    case PacketTag::fileDescriptor:
      return head + 8;  // Its format is always 2.
    default:
      return head;
  }
}

void remember(PacketTag tag, std::size_t offset, Before& before) {
  switch (tag) {
    case PacketTag::coordinatePoint:
      before.point = offset;
      break;
    case PacketTag::pressureData:
      before.pressure = offset;
      break;
    case PacketTag::timestampData:
      before.time = offset;
      break;
    case PacketTag::status:
      before.point = kNowhere;
      break;
    default:
      break;
  }
}

// The best way to come to a place.
struct Node {
  double gain = -std::numeric_limits<double>::infinity();
  std::size_t from = 0;
  std::size_t missingReturn = 0;
  bool lost = false;  // The bytes since `from` were not read.
  Before before;
};

class Window {
 public:
  Window(PenBytes bytes, const PenHabits& habits, bool returnsWereRemoved)
      : bytes_(bytes), habits_(habits), returnsWereRemoved_(returnsWereRemoved) {}

  // Reads from `start`, where `before` holds, up to `end`.
  void read(std::size_t start, std::size_t end, const Before& before);
  // The way to the end of the window, in order. Each step is a packet or a lost stretch.
  struct Step {
    std::size_t from;
    std::size_t to;
    bool lost;
    std::size_t missingReturn;
  };
  std::vector<Step> steps() const;
  const Node& at(std::size_t offset) const { return nodes_[offset - start_]; }

 private:
  void leaveOut(std::size_t offset);
  void tryPackets(std::size_t offset);
  void tryShortPacket(std::size_t offset);
  double gainOfMended(PenBytes packet, const Before& before) const;
  void arrive(const Node& node, std::size_t at);

  PenBytes bytes_;
  const PenHabits& habits_;
  bool returnsWereRemoved_;
  std::size_t start_ = 0;
  std::size_t end_ = 0;
  std::vector<Node> nodes_;
  double stretchGain_ = 0;
  std::size_t stretchStart_ = 0;
};

void Window::read(std::size_t start, std::size_t end, const Before& before) {
  start_ = start;
  end_ = end;
  nodes_.assign(end - start + 1, Node{});
  nodes_[0].gain = 0;
  nodes_[0].before = before;
  stretchGain_ = -std::numeric_limits<double>::infinity();
  for (std::size_t offset = start; offset <= end; ++offset) {
    leaveOut(offset);
    if (offset < end) tryPackets(offset);
  }
}

// One stretch that is lost up to here is enough to keep: the best one.
void Window::leaveOut(std::size_t offset) {
  Node& node = nodes_[offset - start_];
  if (stretchGain_ > node.gain) {
    node = Node{stretchGain_, stretchStart_, 0, true, nodes_[stretchStart_ - start_].before};
    node.before.point = kNowhere;
  }
  if (node.gain - kStretchCost > stretchGain_) {
    stretchGain_ = node.gain - kStretchCost;
    stretchStart_ = offset;
  }
}

void Window::tryPackets(std::size_t offset) {
  const Node& here = nodes_[offset - start_];
  std::size_t length = bytes_.knownPacket(offset);
  if (length == 0) {
    // Behind a lost stretch an unknown packet is never better than a longer stretch.
    if (!here.lost) length = bytes_.unknownPacket(offset);
  }
  if (length != 0 && offset + length <= end_) {
    Node there{here.gain + gainOf(bytes_, habits_, offset, here.before), offset, 0, false,
               here.before};
    remember(bytes_.tag(offset), offset, there.before);
    arrive(there, offset + length);
  }
  if (returnsWereRemoved_) tryShortPacket(offset);
}

// A known packet that is one byte short since a 0D before one of its 0A is missing.
void Window::tryShortPacket(std::size_t offset) {
  if (!bytes_.hasHead(offset)) return;
  const std::size_t length = lengthOf(bytes_.tag(offset));
  if (length == 0 || bytes_.length(offset) != length || offset + length - 1 > end_) return;
  const std::string_view cut = bytes_.view().substr(offset, length - 1);
  const Node here = nodes_[offset - start_];
  for (std::size_t i = 2; i < cut.size(); ++i) {
    if (cut[i] != '\n') continue;
    std::string whole(cut);
    whole.insert(i, 1, '\r');
    const PenBytes packet(whole);
    if (packet.knownPacket(0) == 0) continue;
    const double gain = gainOfMended(packet, here.before) - kMissingReturnCost;
    arrive(Node{here.gain + gain, offset, offset + i, false, here.before}, offset + length - 1);
  }
}

// The packet before it stands in other bytes.
double Window::gainOfMended(PenBytes packet, const Before& before) const {
  constexpr std::size_t kX = 2;
  constexpr std::size_t kY = 4;
  if (packet.tag(0) != PacketTag::coordinatePoint || before.point == kNowhere) {
    return gainOf(packet, habits_, 0, Before{});
  }
  return habits_.headGain(packet, 0) +
         habits_.stepGain(packet.word(kX) - bytes_.word(before.point + kX),
                          packet.word(kY) - bytes_.word(before.point + kY));
}

void Window::arrive(const Node& node, std::size_t at) {
  if (node.gain > nodes_[at - start_].gain) nodes_[at - start_] = node;
}

std::vector<Window::Step> Window::steps() const {
  std::vector<Step> way;
  for (std::size_t place = end_; place != start_;) {
    const Node& node = nodes_[place - start_];
    way.push_back({node.from, place, node.lost, node.missingReturn});
    place = node.from;
  }
  std::reverse(way.begin(), way.end());
  return way;
}

}  // namespace

PenReading readPlausibly(PenBytes bytes, const PenHabits& habits, bool returnsWereRemoved) {
  PenReading reading;
  Window window(bytes, habits, returnsWereRemoved);
  Before before;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t end = std::min(start + kWindow, bytes.size());
    window.read(start, end, before);
    const bool isLast = end == bytes.size();
    const std::size_t settled = isLast ? end : end - kUnsettled;
    std::size_t next = start;
    for (const Window::Step& step : window.steps()) {
      if (step.from >= settled) break;
      next = step.to;
      if (step.lost) {
        if (!isLast) next = std::min(next, std::max(settled, step.from + 1));
        if (next != step.to) break;
        continue;
      }
      reading.packets.push_back({step.from, step.to - step.from, step.missingReturn});
    }
    const Node& reached = window.at(next);
    reading.gain += reached.gain;
    before = reached.before;
    start = next;
  }
  return reading;
}

}  // namespace rescue
