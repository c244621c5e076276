#include "rescue/pen_rescue.h"

#include <algorithm>

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
  constexpr size_t kCertain = 16;
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
  if (!mostArePairs || ends.pairs < kCertain) read();
  if (mostArePairs) {
    Rescue undone(*this);
    undone.source_.apply(withoutReturns(bytes));
    undone.read();
    if (ends.pairs < kCertain && undone.lostBytes() >= lostBytes()) return;
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

// Whether there is more than what noise holds by chance. A file that begins as a recording does is
// one, however short it is.
bool Rescue::holdsRecording() const {
  constexpr double kLeast = 60;
  const PenBytes bytes = source_.bytes();
  const bool hasStart =
      bytes.hasHead(0) && bytes.tag(0) == PacketTag::fileDescriptor && bytes.knownPacket(0) != 0;
  const bool hasPoints =
      std::any_of(reading_.packets.begin(), reading_.packets.end(), [&](const ReadPacket& packet) {
        return bytes.tag(packet.offset) == PacketTag::coordinatePoint;
      });
  return hasPoints && (hasStart || reading_.gain > kLeast);
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

// Bytes to the next packet of an unknown tag; the parser takes one without a length for two bytes.
// 0 where there is none, as for zero bytes.
size_t unknownLength(PenBytes bytes, size_t offset) {
  const bool hasNoLength = bytes[offset] != 0 && bytes[offset + 1] == 0;
  return hasNoLength ? 2 : bytes.unknownPacket(offset);
}

// A sound recording in which every byte from 80 up turned into "?": every packet is whole, but all
// strokes and layers are one, and where a coordinate had such a byte, it is wrong.
bool turnedIntoQuestionMarks(string_view recording) {
  if (hasHighBytes(recording)) return false;
  const PenBytes bytes(recording);
  bool anyStatus = false;
  size_t points = 0;
  size_t questionMarks = 0;
  for (size_t i = 0; i < bytes.size(); i += std::max<size_t>(bytes.length(i), 2)) {
    if (bytes[i] == '?' && bytes[i + 1] == 3) {
      anyStatus = anyStatus || bytes[i + 2] <= 1 || bytes[i + 2] == '?';
    } else if (bytes.tag(i) == PacketTag::coordinatePoint) {
      ++points;
      questionMarks += size_t{bytes[i + 3] == '?'} + size_t{bytes[i + 5] == '?'};
    }
  }
  // Every other low byte of a position is from 80 up, and every 256th is a "?" anyway.
  return anyStatus && questionMarks * 16 > points;
}

size_t countPoints(PenBytes bytes) {
  size_t points = 0;
  for (size_t i = 0; i < bytes.size(); i += std::max<size_t>(bytes.length(i), 2)) {
    if (bytes.tag(i) == PacketTag::coordinatePoint) ++points;
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
    const bool isKnown = lengthOf(bytes.tag(i)) != 0;
    const size_t length = isKnown ? bytes.knownPacket(i) : unknownLength(bytes, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

PenRescue rescuePenRecording(string_view recording, Mend mend) {
  const bool isSound = isSoundPenRecording(recording) && !turnedIntoQuestionMarks(recording);
  if (!isSound) return Rescue(recording).run();
  if (mend == Mend::doubtful) {
    PenRescue mended = Rescue(recording).run();
    if (mended.saved && mended.bytes != recording) return mended;
  }
  PenRescue result;
  result.sound = true;
  result.saved = true;
  result.bytes = recording;
  result.pointsKept = countPoints(PenBytes(recording));
  result.pointsAbout = result.pointsKept;
  return result;
}

}  // namespace rescue
