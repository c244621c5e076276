#include "tests/rescue/figures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>

namespace figures {
namespace {

using damage::Damaged;
using std::size_t;
using std::string_view;

constexpr double kMillimetre = 10;
constexpr double kFar = 2.5 * kMillimetre;

// Which of the points have all bytes of their packets in the damaged file, in order.
std::vector<bool> reachablePoints(const Damaged& file, const std::vector<Drawn>& points) {
  std::map<std::int64_t, size_t> byOffset;
  for (size_t i = 0; i < points.size(); ++i)
    byOffset[static_cast<std::int64_t>(points[i].offset)] = i;
  std::vector<bool> reachable(points.size());
  for (size_t i = 0; i < file.origin.size(); ++i) {
    const auto point = byOffset.find(file.origin[i]);
    if (file.origin[i] == Damaged::kNowhere || point == byOffset.end()) continue;
    std::int64_t wanted = file.origin[i] + 1;
    const size_t length = points[point->second].length;
    const std::int64_t end = file.origin[i] + static_cast<std::int64_t>(length);
    const size_t most = std::min(i + 2 * length, file.origin.size());
    for (size_t j = i + 1; j < most && wanted < end; ++j) {
      if (file.origin[j] == wanted) {
        ++wanted;
      } else if (file.bytes[j] != '\r') {
        break;
      }
    }
    if (wanted == end) reachable[point->second] = true;
  }
  return reachable;
}

constexpr size_t kNone = static_cast<size_t>(-1);

// For each point that came out which one it is of those that were drawn.
std::vector<size_t> align(const std::vector<Drawn>& mended, const std::vector<Drawn>& drawn) {
  std::map<std::pair<int, int>, std::vector<size_t>> places;
  for (size_t i = 0; i < drawn.size(); ++i)
    places[{drawn[i].rawX, drawn[i].rawY}].push_back(i);
  std::vector<bool> used(drawn.size());
  std::vector<size_t> result(mended.size(), kNone);
  size_t expected = 0;
  for (size_t i = 0; i < mended.size(); ++i) {
    const auto found = places.find({mended[i].rawX, mended[i].rawY});
    if (found == places.end()) continue;
    size_t best = kNone;
    for (const size_t place : found->second) {
      if (used[place]) continue;
      if (best == kNone || (best < expected && place >= expected)) best = place;
      if (place >= expected) break;
    }
    if (best == kNone) continue;
    used[best] = true;
    result[i] = best;
    expected = best + 1;
  }
  return result;
}

// The distance from a made-up point to where the pen was about then.
double distanceFrom(const Drawn& point, const std::vector<Drawn>& drawn, size_t from, size_t to) {
  double least = std::numeric_limits<double>::infinity();
  for (size_t i = from; i <= to && i < drawn.size(); ++i)
    least = std::min(least, std::hypot(point.x - drawn[i].x, point.y - drawn[i].y));
  return least;
}

// Whether a line between two points leaves out what was drawn between them.
bool cutsCorner(const std::vector<Drawn>& drawn, size_t from, size_t to) {
  const double dx = drawn[to].x - drawn[from].x;
  const double dy = drawn[to].y - drawn[from].y;
  const double length = dx * dx + dy * dy;
  for (size_t i = from + 1; i < to; ++i) {
    const double px = drawn[i].x - drawn[from].x;
    const double py = drawn[i].y - drawn[from].y;
    const double along = length == 0 ? 0 : std::clamp((px * dx + py * dy) / length, 0.0, 1.0);
    if (std::hypot(px - along * dx, py - along * dy) > kFar) return true;
  }
  return false;
}

bool isFalseJoin(const std::vector<Drawn>& drawn, size_t from, size_t to) {
  if (drawn[from].stroke != drawn[to].stroke || to <= from) return true;
  return cutsCorner(drawn, from, to);
}

struct Box {
  double left = std::numeric_limits<double>::infinity();
  double top = left;
  double right = -left;
  double bottom = -left;

  explicit Box(const std::vector<Drawn>& points) {
    for (const Drawn& point : points) {
      left = std::min(left, point.x);
      right = std::max(right, point.x);
      top = std::min(top, point.y);
      bottom = std::max(bottom, point.y);
    }
  }
  bool isLargerThan(const Box& other, double by) const {
    return left < other.left - by || top < other.top - by || right > other.right + by ||
           bottom > other.bottom + by;
  }
};

}  // namespace

double Outcome::share() const {
  return reachable == 0 ? 1 : static_cast<double>(recovered) / static_cast<double>(reachable);
}

Outcome judge(const Damaged& file, const std::vector<Drawn>& mended,
              const std::vector<Drawn>& drawn) {
  const std::vector<bool> reachable = reachablePoints(file, drawn);
  Outcome outcome;
  outcome.reachable = static_cast<size_t>(std::count(reachable.begin(), reachable.end(), true));
  const std::vector<size_t> which = align(mended, drawn);
  std::optional<size_t> last;
  for (size_t i = 0; i < mended.size(); ++i) {
    const bool joined = i > 0 && mended[i].stroke == mended[i - 1].stroke;
    if (!joined && which[i] != kNone) last.reset();
    if (which[i] == kNone) {
      ++outcome.madeUp;
      size_t before = 0;
      size_t behind = drawn.size();
      for (size_t j = i; j-- > 0;)
        if (which[j] != kNone) {
          before = which[j];
          break;
        }
      for (size_t j = i + 1; j < mended.size(); ++j)
        if (which[j] != kNone) {
          behind = which[j];
          break;
        }
      if (behind < before) std::swap(before, behind);
      if (distanceFrom(mended[i], drawn, before, behind) > kFar) ++outcome.madeUpFar;
      continue;
    }
    if (reachable[which[i]]) ++outcome.recovered;
    if (last && isFalseJoin(drawn, *last, which[i])) ++outcome.falseJoins;
    last = which[i];
  }
  outcome.grows = Box(mended).isLargerThan(Box(drawn), kMillimetre);
  return outcome;
}

Outcome rescueAndJudge(const Subject& subject, const Damaged& file, string_view sound,
                       string_view other, rescue::Mend mend) {
  std::vector<Drawn> drawn = subject.pointsOf(sound);
  const size_t strokes = drawn.empty() ? 0 : drawn.back().stroke;
  for (Drawn point : subject.pointsOf(other)) {
    point.offset += sound.size();
    point.stroke += strokes;
    drawn.push_back(point);
  }
  const Rescued rescued = subject.rescue(file.bytes, mend);
  Outcome outcome = judge(file, subject.pointsOf(rescued.bytes), drawn);
  outcome.asItWas = rescued.sound;
  outcome.opens = rescued.saved ? subject.opensWhole(rescued.bytes) : outcome.reachable == 0;
  return outcome;
}

void Figures::add(const Outcome& outcome) {
  outcomes_.push_back(outcome);
}

void Figures::addAll(const Figures& other) {
  outcomes_.insert(outcomes_.end(), other.outcomes_.begin(), other.outcomes_.end());
}

Figures Figures::withoutSound() const {
  Figures some;
  for (const Outcome& outcome : outcomes_)
    if (!outcome.asItWas) some.add(outcome);
  return some;
}

double Figures::shareAt(double part) const {
  std::vector<double> shares;
  for (const Outcome& outcome : outcomes_)
    shares.push_back(outcome.share());
  std::sort(shares.begin(), shares.end());
  const auto place = static_cast<size_t>(part * static_cast<double>(shares.size()));
  return shares.empty() ? 0 : shares[std::min(place, shares.size() - 1)];
}

double Figures::perHundred(size_t Outcome::*count) const {
  size_t sum = 0;
  for (const Outcome& outcome : outcomes_)
    sum += outcome.*count;
  return 100.0 * static_cast<double>(sum) / static_cast<double>(outcomes_.size());
}

double Figures::part(bool Outcome::*holds) const {
  const auto count = std::count_if(outcomes_.begin(), outcomes_.end(),
                                   [&](const Outcome& outcome) { return outcome.*holds; });
  return static_cast<double>(count) / static_cast<double>(outcomes_.size());
}

std::vector<Figures> measure(const Subject& subject, std::span<const std::string> files,
                             size_t times, std::uint64_t seed, rescue::Mend mend) {
  std::vector<Figures> all;
  damage::Random random(seed);
  for (const damage::Kind& kind : damage::allKinds()) {
    Figures figures;
    for (size_t i = 0; i < files.size(); ++i) {
      for (size_t time = 0; time < times; ++time) {
        const std::string& other = files[(i + 1 + time) % files.size()];
        const Damaged file = kind.apply(files[i], other, random);
        figures.add(rescueAndJudge(subject, file, files[i],
                                   kind.name == "two recordings joined" ? string_view(other) : "",
                                   mend));
      }
    }
    all.push_back(figures);
  }
  return all;
}

}  // namespace figures
