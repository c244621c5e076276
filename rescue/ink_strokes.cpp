#include "rescue/ink_strokes.h"

#include <algorithm>
#include <cmath>

namespace rescue {
namespace {

using std::size_t;
using std::string_view;

// The value that the given part of all falls short of.
template <class T>
T valueAt(std::vector<T>& values, double part) {
  const auto place = static_cast<size_t>(part * static_cast<double>(values.size() - 1));
  const auto nth = values.begin() + static_cast<std::ptrdiff_t>(place);
  std::nth_element(values.begin(), nth, values.end());
  return *nth;
}

class Judge {
 public:
  Judge(string_view bytes, std::span<const InkPoint> points, PointForm form,
        const InkHabits& habits)
      : bytes_(bytes), points_(points), form_(form), habits_(habits), fates_(points.size()) {}

  void judge(const InkRegion& region) {
    first_ = region.firstPoint;
    last_ = region.lastPoint;
    if (first_ == last_) return;
    fates_[first_].startsStroke = true;
    dropUnsure();
    dropStrays();
    endAtSeams();
    endAtGaps();
  }

  std::vector<PointFate> fates() { return std::move(fates_); }

 private:
  // Whether both are points of the region with nothing between them.
  bool areNeighbours(size_t a, size_t b) const {
    return a >= first_ && b < last_ && b == a + 1 && !points_[b].followsGap;
  }

  // The longest of a few steps that lead to the point, or from it on, as far as the stroke is sure;
  // 0 where there is none.
  double stepBefore(size_t i) const {
    double longest = 0;
    for (size_t left = kReach; left > 0 && i > first_ && isSureStep(i - 1, i); --left, --i)
      longest = std::max(longest, step(i - 1, i));
    return longest;
  }

  double stepBehind(size_t i) const {
    double longest = 0;
    for (size_t left = kReach; left > 0 && i + 1 < last_ && isSureStep(i, i + 1); --left, ++i)
      longest = std::max(longest, step(i, i + 1));
    return longest;
  }

  double stepAround(size_t a, size_t b) const {
    const double longest = std::max(stepBefore(a), stepBehind(b));
    return longest > 0 ? longest : habits_.usualStep();
  }

  bool isSureStep(size_t a, size_t b) const {
    return isGood(a) && isGood(b) && !points_[b].followsGap && clockAgrees(a, b);
  }

  bool isGood(size_t i) const {
    return fates_[i].isKept && points_[i].isSureAtStart && points_[i].isSureAtEnd;
  }

  double step(size_t a, size_t b) const { return distance(points_[a], points_[b]); }

  bool isNear(size_t a, size_t b) const {
    constexpr double kShortest = 15;
    constexpr double kOften = 4;
    return step(a, b) <= std::max(kShortest, kOften * stepAround(a, b));
  }

  // Stricter, for points of which a part may be lost.
  bool isClose(size_t a, size_t b) const {
    constexpr double kShortest = 10;
    constexpr double kOften = 2.5;
    const double before = a > first_ && isSureStep(a - 1, a) ? step(a - 1, a) : 0;
    const double behind = b + 1 < last_ && isSureStep(b, b + 1) ? step(b, b + 1) : 0;
    return step(a, b) <= std::max(kShortest, kOften * std::max(before, behind));
  }

  bool clockAgrees(size_t a, size_t b) const { return habits_.clockAgrees(points_[a], points_[b]); }

  bool goesOn(size_t a, size_t b) const { return clockAgrees(a, b) && isClose(a, b); }

  // The last number of a point has been cut, or not, as the one before it tells; the first number
  // as the one behind it tells.
  bool isProven(size_t i) const {
    const InkPoint& point = points_[i];
    if (!point.isSureAtEnd) {
      if (i == first_ || !areNeighbours(i - 1, i) || !goesOn(i - 1, i)) return false;
      const bool endsInTime = form_.numbers == point.numbers.size();
      if (endsInTime && !habits_.hasClock() && point.time() != points_[i - 1].time()) return false;
    }
    // Behind a gap even a comma may be made up.
    if (point.isSureAtStart) return !areNeighbours(i, i + 1) || isNear(i, i + 1);
    return areNeighbours(i, i + 1) && goesOn(i, i + 1);
  }

  void dropUnsure() {
    for (size_t i = first_; i < last_; ++i) {
      const InkPoint& point = points_[i];
      if (point.isSureAtStart && point.isSureAtEnd && !point.followsGap) continue;
      const bool overlaps =
          i > first_ && fates_[i - 1].isKept && points_[i].begin < points_[i - 1].end;
      if (overlaps || !isProven(i)) fates_[i].isKept = false;
    }
  }

  // The kept points from `from` on that have no gap between them.
  std::vector<size_t> runFrom(size_t& from) const {
    std::vector<size_t> run;
    bool isFirst = true;
    for (; from < last_; ++from) {
      if (!isFirst && points_[from].followsGap) break;
      isFirst = false;
      if (fates_[from].isKept) run.push_back(from);
    }
    return run;
  }

  // A single point far from both its neighbours, by place or time, which fit each other.
  void dropStrays() {
    for (size_t from = first_; from < last_;) {
      const std::vector<size_t> run = runFrom(from);
      for (size_t k = 1; k + 1 < run.size(); ++k)
        if (isStray(run[k - 1], run[k], run[k + 1])) fates_[run[k]].isKept = false;
      dropStrayEnds(run);
    }
  }

  bool isStray(size_t a, size_t b, size_t c) const {
    if (!fates_[a].isKept || !clockAgrees(a, c)) return false;
    if (!clockAgrees(a, b) || !clockAgrees(b, c)) return true;
    constexpr double kShortest = 20;
    constexpr double kOften = 8;
    const double limit =
        std::max(kShortest, kOften * std::max({step(a, c), stepBefore(a), stepBehind(c)}));
    return step(a, b) > limit && step(b, c) > limit;
  }

  // The same at either end of a run, by place alone.
  void dropStrayEnds(const std::vector<size_t>& run) {
    if (run.size() < 4) return;
    const size_t last = run.size() - 1;
    const auto isFarther = [](double length, double usual) {
      constexpr double kShortest = 50;
      constexpr double kOften = 16;
      return length > std::max(kShortest, kOften * usual);
    };
    if (isFarther(step(run[0], run[1]), stepBehind(run[1]))) fates_[run[0]].isKept = false;
    if (isFarther(step(run[last - 1], run[last]), stepBefore(run[last - 1]))) {
      fates_[run[last]].isKept = false;
    }
  }

  // Where the time leaps or runs backwards, bytes are missing or others stand there: inside the
  // point behind it, or the one before it.
  void endAtSeams() {
    for (size_t from = first_; from < last_;) {
      const std::vector<size_t> run = runFrom(from);
      for (size_t k = 1; k < run.size(); ++k) {
        if (clockAgrees(run[k - 1], run[k])) continue;
        fates_[run[k]].startsStroke = true;
        const bool isLast = k + 1 == run.size();
        if (isLast ? isNear(run[k - 1], run[k]) : goesOn(run[k], run[k + 1])) continue;
        fates_[run[k]].isKept = false;
        if (isLast) continue;
        fates_[run[++k]].startsStroke = true;
      }
    }
  }

  // A gap that has cost one point at most is bridged, unless a tag may have stood there.
  void endAtGaps() {
    size_t before = last_;
    bool hasGap = false;
    bool starts = true;
    for (size_t i = first_; i < last_; ++i) {
      hasGap = hasGap || points_[i].followsGap || !points_[i].isSureAtStart;
      starts = starts || fates_[i].startsStroke;
      if (!fates_[i].isKept) continue;
      if (hasGap && before != last_) starts = starts || !canBridge(before, i);
      fates_[i].startsStroke = starts;
      starts = hasGap = false;
      before = i;
    }
  }

  bool canBridge(size_t a, size_t b) const {
    if (!habits_.hasClock() || !habits_.isNextButOne(points_[a], points_[b])) return false;
    const string_view between = bytes_.substr(points_[a].end, points_[b].begin - points_[a].end);
    if (between.find_first_of("<>\"=/") != string_view::npos) return false;
    return step(a, b) <= std::max(10.0, 3 * stepAround(a, b));
  }

  static constexpr size_t kReach = 4;

  string_view bytes_;
  std::span<const InkPoint> points_;
  PointForm form_;
  const InkHabits& habits_;
  std::vector<PointFate> fates_;
  size_t first_ = 0;
  size_t last_ = 0;
};

}  // namespace

double distance(const InkPoint& a, const InkPoint& b) {
  return std::hypot(static_cast<double>(a.x() - b.x()), static_cast<double>(a.y() - b.y()));
}

InkHabits::InkHabits(std::span<const InkPoint> points, std::span<const InkRegion> regions,
                     PointForm form) {
  std::vector<std::int64_t> times;
  std::vector<double> steps;
  size_t backwards = 0;
  size_t forwards = 0;
  for (const InkRegion& region : regions) {
    for (size_t i = region.firstPoint + 1; i < region.lastPoint; ++i) {
      const InkPoint& a = points[i - 1];
      const InkPoint& b = points[i];
      if (b.followsGap || !a.isSureAtEnd || !b.isSureAtStart) continue;
      steps.push_back(distance(a, b));
      const std::int64_t time = b.time() - a.time();
      if (time > 0) ++forwards;
      if (time < 0) {
        ++backwards;
      } else {
        times.push_back(time);
      }
    }
  }
  if (!steps.empty()) usualStep_ = valueAt(steps, 0.9);
  const bool hasTimes = form.numbers == 7 && times.size() >= 8;
  hasClock_ = hasTimes && forwards * 10 > steps.size() &&
              backwards <= std::max<size_t>(4, steps.size() / 200);
  if (!hasClock_) return;
  usualTime_ = std::max<std::int64_t>(1, valueAt(times, 0.5));
  longestTime_ = std::max(3 * usualTime_, 3 * valueAt(times, 0.98));
  const auto isLonger = [this](std::int64_t time) { return time > longestTime_; };
  const auto longer = static_cast<size_t>(std::count_if(times.begin(), times.end(), isLonger));
  pausesAreUsual_ = longer > std::max<size_t>(6, times.size() / 300);
}

bool InkHabits::clockAgrees(const InkPoint& a, const InkPoint& b) const {
  if (!hasClock_) return true;
  const std::int64_t time = b.time() - a.time();
  if (time < 0 || time <= longestTime_) return time >= 0;
  // Where pauses are usual, only a leap in both time and place tells.
  return pausesAreUsual_ && distance(a, b) <= std::max(20.0, 3 * usualStep_);
}

bool InkHabits::isNextButOne(const InkPoint& a, const InkPoint& b) const {
  const std::int64_t time = b.time() - a.time();
  return time >= 0 && time * 10 <= 26 * usualTime_;
}

std::vector<PointFate> judgePoints(string_view bytes, std::span<const InkPoint> points,
                                   std::span<const InkRegion> regions, PointForm form,
                                   const InkHabits& habits) {
  Judge judge(bytes, points, form, habits);
  for (const InkRegion& region : regions)
    judge.judge(region);
  return judge.fates();
}

}  // namespace rescue
