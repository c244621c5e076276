#include "rescue/pen_rescue.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "rescue/pen_doubles.h"
#include "rescue/pen_habits.h"
#include "rescue/pen_mending.h"
#include "rescue/pen_reading.h"
#include "rescue/pen_source.h"

namespace rescue {
namespace {

using std::size_t;
using std::string_view;

// -- transfers as text ------------------------------------------------------------

struct LineEnds {
  size_t bare = 0;  // 0A without 0D in front of it.
  size_t pairs = 0;

  // Of all bytes before a 0A every 256th would be a 0D. Some are left where there were two.
  bool lackReturns() const { return bare > 0 && pairs <= bare / 512 + (bare > 200 ? 1 : 0); }
};

LineEnds countLineEnds(string_view bytes) {
  LineEnds ends;
  for (size_t i = bytes.find('\n'); i != string_view::npos; i = bytes.find('\n', i + 1))
    ++(i > 0 && bytes[i - 1] == '\r' ? ends.pairs : ends.bare);
  return ends;
}

std::vector<Source::Edit> withoutReturns(string_view bytes) {
  std::vector<Source::Edit> edits;
  for (size_t i = bytes.find("\r\n"); i != string_view::npos; i = bytes.find("\r\n", i + 2))
    edits.push_back({i, i + 1, ""});
  return edits;
}

std::vector<Source::Edit> withReturns(const PenReading& reading) {
  std::vector<Source::Edit> edits;
  for (const ReadPacket& packet : reading.packets) {
    if (packet.missingReturn != 0)
      edits.push_back({packet.missingReturn, packet.missingReturn, "\r"});
  }
  return edits;
}

bool hasHighBytes(string_view bytes) {
  return std::any_of(bytes.begin(), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

// The tags of status and time packets are bytes from 80 up, like the status of a new layer.
std::vector<Source::Edit> withTags(string_view bytes) {
  std::vector<Source::Edit> edits;
  for (size_t i = bytes.find('?'); i != string_view::npos; i = bytes.find('?', i + 1)) {
    const string_view packet = bytes.substr(i, 3);
    if (packet.size() < 3) break;
    if (packet[1] == 3 && packet[2] == '?') {
      edits.push_back({i, i + 3, "\xF1\x03\x80"});
      i += 2;
    } else if (packet[1] == 3 && (packet[2] == 0 || packet[2] == 1)) {
      edits.push_back({i, i + 1, "\xF1"});
    } else if (Orvo::decodeLength(static_cast<unsigned char>(packet[1])) == 6 && packet[2] == 17) {
      edits.push_back({i, i + 1, "\xC2"});
    }
  }
  return edits;
}

// -- the whole ------------------------------------------------------------------------

class Rescue {
 public:
  explicit Rescue(string_view recording) : source_(std::string(recording)) {}

  PenRescue run();
  // Of a recording that is sound packet by packet.
  bool isNotAsThePenWroteIt();

 private:
  void undoTransfer();
  void putReturnsBack();
  void leaveOutDoubles();
  void leaveOut(const std::vector<DoubledRun>& runs);
  void read() {
    habits_ = PenHabits(source_.bytes());
    reading_ = readPlausibly(source_.bytes(), habits_);
  }
  bool holdsRecording() const;
  size_t lostBytes() const;
  size_t lostStretches() const;

  Source source_;
  PenHabits habits_{PenBytes("")};
  PenReading reading_;
  std::string withQuestionMarks_;
  std::vector<Stretch> doubled_;
  PenRescue result_;
};

size_t Rescue::lostBytes() const {
  size_t lost = source_.bytes().size();
  for (const ReadPacket& packet : reading_.packets)
    lost -= packet.length;
  return lost;
}

// Runs of bytes in no packet, or in packets that may be none.
size_t Rescue::lostStretches() const {
  size_t stretches = 0;
  size_t end = 0;
  for (const ReadPacket& packet : reading_.packets) {
    if (habits_.isStrange(source_.bytes(), packet.offset)) continue;
    if (packet.offset > end) ++stretches;
    end = packet.offset + packet.length;
  }
  return stretches + (end < source_.bytes().size() ? 1 : 0);
}

void Rescue::undoTransfer() {
  constexpr size_t certain = 16;
  const string_view bytes = source_.bytes().view();
  if (!hasHighBytes(bytes)) {
    withQuestionMarks_ = bytes;
    source_.apply(withTags(bytes));
    result_.transfer = TextTransfer::highBytesReplaced;
    read();
    return;
  }
  const LineEnds ends = countLineEnds(bytes);
  const bool mostArePairs = ends.pairs > 0 && ends.bare * 50 <= ends.pairs;
  if (!mostArePairs || ends.pairs < certain) read();
  if (mostArePairs) {
    Rescue undone(*this);
    undone.source_.apply(withoutReturns(bytes));
    undone.read();
    if (ends.pairs < certain && undone.lostBytes() >= lostBytes()) return;
    *this = std::move(undone);
    result_.transfer = TextTransfer::carriageReturnsAdded;
  } else if (ends.lackReturns()) {
    putReturnsBack();
  }
}

void Rescue::putReturnsBack() {
  const std::vector<Source::Edit> edits =
      withReturns(readPlausibly(source_.bytes(), habits_, true));
  if (edits.empty()) return;
  source_.apply(edits);
  result_.transfer = TextTransfer::carriageReturnsRemoved;
  read();
}

void Rescue::leaveOut(const std::vector<DoubledRun>& runs) {
  if (runs.empty()) return;
  std::vector<Source::Edit> edits;
  for (const DoubledRun& run : runs) {
    edits.push_back({run.begin, run.end, ""});
    doubled_.push_back(
        {source_.placeOf(run.begin), source_.placeOf(run.end - 1) + 1, LeftOut::doubled});
  }
  source_.apply(edits);
  read();
}

void Rescue::leaveOutDoubles() {
  leaveOut(longDoubledRuns(source_.bytes(), reading_, habits_));
  const std::vector<DoubledRun> runs = doubledRunsAtGaps(source_.bytes(), reading_, habits_);
  if (runs.empty()) return;
  Rescue without(*this);
  without.leaveOut(runs);
  if (without.lostStretches() < lostStretches()) *this = std::move(without);
}

// Whether there is more than what noise holds by chance.
bool Rescue::holdsRecording() const {
  constexpr double least = 60;
  const PenBytes bytes = source_.bytes();
  const bool hasPoints =
      std::any_of(reading_.packets.begin(), reading_.packets.end(), [&](const ReadPacket& packet) {
        return bytes.tag(packet.offset) == PacketTag::coordinatePoint;
      });
  return hasPoints && reading_.gain > least;
}

// Whether a packet of an unknown tag swallows a long run of packets that belong to the drawing, its
// head being changed, or a few, since a 0D before a 0A is missing; or a long run stands there
// twice. Packets that look like others may be the content of an unknown one: the gain must be
// large.
bool Rescue::isNotAsThePenWroteIt() {
  constexpr double muchMore = 1000;
  constexpr double moreForReturn = 25;
  const PenBytes bytes = source_.bytes();
  habits_ = PenHabits(bytes);
  const PenReading asItStands = readAsItStands(bytes, habits_);
  if (!longDoubledRuns(bytes, asItStands, habits_).empty()) return true;
  const bool anyUnknown = std::any_of(
      asItStands.packets.begin(), asItStands.packets.end(),
      [&](const ReadPacket& packet) { return lengthOf(bytes.tag(packet.offset)) == 0; });
  if (!anyUnknown) return false;
  if (readPlausibly(bytes, habits_).gain > asItStands.gain + muchMore) return true;
  const LineEnds ends = countLineEnds(bytes.view());
  if (!ends.lackReturns()) return false;
  const PenReading mended = readPlausibly(bytes, habits_, true);
  const auto returns = static_cast<double>(withReturns(mended).size());
  return returns > 0 && mended.gain > asItStands.gain + moreForReturn * returns;
}

PenRescue Rescue::run() {
  undoTransfer();
  if (!holdsRecording()) return {};
  if (withQuestionMarks_.empty()) leaveOutDoubles();
  PenMendingInput input{source_, habits_, reading_, std::nullopt};
  if (!withQuestionMarks_.empty()) input.withQuestionMarks = withQuestionMarks_;
  mendPenRecording(input, result_);
  if (!isSoundPenRecording(result_.bytes)) return {};
  std::vector<Stretch>& all = result_.leftOut;
  all.insert(all.end(), doubled_.begin(), doubled_.end());
  std::sort(all.begin(), all.end(),
            [](const Stretch& a, const Stretch& b) { return a.begin < b.begin; });
  result_.saved = true;
  return std::move(result_);
}

// Without any byte from 80 up, and with the packets that statuses turn into: every packet is whole,
// but all strokes and layers would be one.
bool holdsQuestionMarksForStatuses(string_view recording) {
  if (hasHighBytes(recording)) return false;
  const PenBytes bytes(recording);
  for (size_t i = 0; i + 2 < bytes.size();) {
    const bool isShort = bytes[i] == '?' && bytes[i + 1] == 3;
    if (isShort && (bytes[i + 2] <= 1 || bytes[i + 2] == '?')) return true;
    const size_t length = bytes[i + 1] == 0 ? 2 : bytes.length(i);
    if (length == 0) return false;
    i += length;
  }
  return false;
}

using Place = std::array<double, 2>;

double distance(const Place& a, const Place& b) {
  return std::hypot(a[0] - b[0], a[1] - b[1]);
}

// Whether one point of a smooth stroke lies far away from the next and the one before it, or even
// further from the only one that it has at an end.
bool leapsWildly(const std::vector<Place>& stroke, size_t i) {
  constexpr double far = 100;
  constexpr double often = 8;
  constexpr size_t reach = 4;
  if (stroke.size() <= reach) return false;
  const size_t last = stroke.size() - 1;
  double usual = i > 0 && i < last ? distance(stroke[i - 1], stroke[i + 1]) : 0;
  for (size_t k = i > reach ? i - reach : 0; k < std::min(i + reach, last); ++k)
    if (k + 1 != i && k != i) usual = std::max(usual, distance(stroke[k], stroke[k + 1]));
  const double limit = std::max(far, often * usual);
  if (i == 0) return distance(stroke[0], stroke[1]) > 2 * limit;
  if (i == last) return distance(stroke[last - 1], stroke[last]) > 2 * limit;
  return std::min(distance(stroke[i - 1], stroke[i]), distance(stroke[i], stroke[i + 1])) > limit;
}

// Whether very few points leap far out of strokes that are smooth otherwise: a changed byte in a
// packet that is whole.
bool holdsWildLeaps(PenBytes bytes) {
  size_t points = 0;
  size_t leaps = 0;
  std::vector<Place> stroke;
  const auto endStroke = [&] {
    for (size_t i = 0; i < stroke.size(); ++i)
      if (leapsWildly(stroke, i)) ++leaps;
    points += stroke.size();
    stroke.clear();
  };
  for (size_t i = 0; i < bytes.size();) {
    if (bytes.tag(i) == PacketTag::status) endStroke();
    // Points above the sheet are not drawn.
    if (bytes.tag(i) == PacketTag::coordinatePoint && bytes.word(i + 4) >= -2) {
      stroke.push_back({bytes.word(i + 2) / 10.0, bytes.word(i + 4) / 5.0});
    }
    i += bytes[i + 1] == 0 ? 2 : bytes.length(i);
  }
  endStroke();
  return leaps > 0 && leaps <= 3 && leaps * 100 <= points;
}

// Every packet is whole, and yet the recording is not as the pen wrote it.
bool showsDamage(string_view recording) {
  return holdsQuestionMarksForStatuses(recording) || holdsWildLeaps(PenBytes(recording)) ||
         Rescue(recording).isNotAsThePenWroteIt();
}

size_t countPoints(PenBytes bytes) {
  size_t points = 0;
  for (size_t i = 0; i < bytes.size();) {
    if (bytes.tag(i) == PacketTag::coordinatePoint) ++points;
    i += bytes.hasHead(i) && bytes[i + 1] != 0 ? bytes.length(i) : 2;
  }
  return points;
}

}  // namespace

bool isSoundPenRecording(string_view recording) {
  const PenBytes bytes(recording);
  if (bytes.size() == 0 || bytes.tag(0) != PacketTag::fileDescriptor) return false;
  size_t i = bytes.knownPacket(0);
  if (i == 0) return false;
  while (i < bytes.size()) {
    if (!bytes.hasHead(i) || bytes.tag(i) == PacketTag::fileDescriptor) return false;
    if (lengthOf(bytes.tag(i)) != 0) {
      const size_t length = bytes.knownPacket(i);
      if (length == 0) return false;
      i += length;
      continue;
    }
    const bool hasNoCode = bytes[i + 1] == 0;
    if (hasNoCode && bytes[i] == 0) return false;
    const size_t length = hasNoCode ? 2 : bytes.length(i);
    if (length == 0 || length > bytes.size() - i) return false;
    i += length;
  }
  return true;
}

PenRescue rescuePenRecording(string_view recording) {
  if (isSoundPenRecording(recording) && !showsDamage(recording)) {
    PenRescue result;
    result.sound = true;
    result.saved = true;
    result.bytes = recording;
    result.pointsKept = countPoints(PenBytes(recording));
    result.pointsAbout = result.pointsKept;
    return result;
  }
  return Rescue(recording).run();
}

}  // namespace rescue
