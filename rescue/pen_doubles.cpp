#include "rescue/pen_doubles.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>

namespace rescue {
namespace {

using std::size_t;
using std::string_view;

// Runs shorter than this may stand twice in a row by chance.
constexpr size_t kShortest = 8;
constexpr size_t kShortLag = 64;
constexpr size_t kLongest = 16'384;
// The seam lies in the packet before the lost bytes, or at its end.
constexpr size_t kSeam = 16;
// Of the long runs that are looked for everywhere.
constexpr size_t kLeastLong = 48;
constexpr size_t kFewRuns = 3;

// How many bytes up to `end` are the same as those `lag` before them, up to `most`.
size_t sameBefore(string_view bytes, size_t end, size_t lag, size_t most) {
  size_t count = 0;
  while (count < most && end - count > lag &&
         bytes[end - count - 1] == bytes[end - count - 1 - lag])
    ++count;
  return count;
}

size_t sameBehind(string_view bytes, size_t begin, size_t lag, size_t most) {
  size_t count = 0;
  while (count < most && begin + count < bytes.size() &&
         bytes[begin + count] == bytes[begin + count - lag])
    ++count;
  return count;
}

bool isVaried(string_view run) {
  return std::set<char>(run.begin(), run.begin() + kShortest).size() > 2;
}

// Whether the bytes repeat themselves in shorter steps already, as those of a pen at rest do.
bool isPeriodic(string_view run) {
  for (size_t lag = 1; lag * 2 <= std::min(run.size(), kShortLag); ++lag)
    if (sameBehind(run, lag, lag, run.size()) == run.size() - lag) return true;
  return false;
}

// Looks for the second of two equal runs that ends reading at `lost`, up to which all could be
// read.
class SeamSearch {
 public:
  SeamSearch(string_view bytes, size_t lost) : bytes_(bytes), lost_(lost) {}

  // Empty when there is none.
  DoubledRun find() const {
    for (size_t lag = kShortest; lag <= kShortLag; ++lag) {
      for (size_t seam = lost_ > kSeam ? lost_ - kSeam : 0; seam <= lost_ + 2; ++seam) {
        if (lag > seam || seam + lag > bytes_.size()) continue;
        if (bytes_.substr(seam - lag, lag) != bytes_.substr(seam, lag)) continue;
        if (isVaried(bytes_.substr(seam, lag))) return {seam, seam + lag};
      }
    }
    return {0, 0};
  }

 private:
  string_view bytes_;
  size_t lost_;
};

// Where reading stops: the ends of packets behind which bytes could not be read.
std::vector<size_t> gapsOf(PenBytes bytes, const PenReading& reading, const PenHabits& habits) {
  std::vector<size_t> gaps;
  size_t end = 0;
  for (const ReadPacket& packet : reading.packets) {
    if (habits.isStrange(bytes, packet.offset)) continue;
    if (packet.offset > end) gaps.push_back(end);
    end = packet.offset + packet.length;
  }
  if (end < bytes.size()) gaps.push_back(end);
  return gaps;
}

bool stopsReading(const std::vector<size_t>& gaps, size_t seam) {
  const auto gap = std::lower_bound(gaps.begin(), gaps.end(), seam < 2 ? 0 : seam - 2);
  return gap != gaps.end() && *gap <= seam + kSeam;
}

// Whether a run begins where a stroke does: then it may be a drawing's own.
bool beginsWithStroke(PenBytes bytes, size_t begin) {
  constexpr size_t kNear = 3;
  for (size_t i = begin > kNear ? begin - kNear : 0; i <= begin; ++i)
    if (bytes.tag(i) == PacketTag::status && bytes.knownPacket(i) != 0) return true;
  return false;
}

}  // namespace

// Points are held against the last ones with the same bytes: what lies between two such is looked
// at once, so that the time is in proportion to the bytes.
std::vector<DoubledRun> longDoubledRuns(PenBytes bytes, const PenReading& reading,
                                        const PenHabits& habits) {
  constexpr size_t kKey = 16;
  const string_view all = bytes.view();
  const std::vector<size_t> gaps = gapsOf(bytes, reading, habits);
  std::unordered_map<string_view, size_t> last;
  std::vector<DoubledRun> runs;
  for (size_t i = 0; i + kKey <= bytes.size(); ++i) {
    if (bytes.tag(i) != PacketTag::coordinatePoint || bytes[i + 1] != habits.sixBytes()) continue;
    const auto [place, isNew] = last.try_emplace(all.substr(i, kKey), i);
    if (isNew) continue;
    const size_t lag = i - place->second;
    place->second = i;
    if (lag < kLeastLong || lag > kLongest) continue;
    const size_t before = sameBefore(all, i, lag, lag);
    const size_t behind = sameBehind(all, i, lag, lag);
    const size_t seam = i - before;
    if (before + behind < lag || isPeriodic(all.substr(seam, lag)) ||
        (beginsWithStroke(bytes, seam) && !stopsReading(gaps, seam))) {
      i += behind;
      continue;
    }
    if (runs.size() == kFewRuns) return {};
    runs.push_back({seam, seam + lag});
    i = seam + lag - 1;
  }
  return runs;
}

std::vector<DoubledRun> doubledRunsAtGaps(PenBytes bytes, const PenReading& reading,
                                          const PenHabits& habits) {
  std::vector<DoubledRun> runs;
  for (const size_t gap : gapsOf(bytes, reading, habits)) {
    const DoubledRun run = SeamSearch(bytes.view(), gap).find();
    const bool isFree = runs.empty() || run.begin >= runs.back().end;
    if (run.end != 0 && isFree) runs.push_back(run);
  }
  return runs;
}

}  // namespace rescue
