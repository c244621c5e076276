#include "web/replay_times.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace web {

namespace {

using Waits = std::vector<std::uint32_t>;
using Times = std::vector<std::uint32_t>;

std::uint32_t share(std::uint64_t whole, std::size_t part, std::size_t parts) {
  return static_cast<std::uint32_t>(whole * part / parts);
}

bool isUsable(const Times& times, std::size_t points) {
  return points > 0 && times.size() >= points && times[0] < times[points - 1] &&
         std::is_sorted(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(points));
}

Waits evenWaits(const art::Path& path) {
  Waits waits{0};
  double length = 0;
  double before = 0;
  for (std::size_t i = 1; i < path.segments.size(); ++i) {
    const art::Point& from = path.segments[i - 1].p;
    const art::Point& to = path.segments[i].p;
    const double piece = std::hypot(double{to.h} - from.h, double{to.v} - from.v);
    if (std::isfinite(piece)) length += piece;
    // Rounded as a sum, so that many short pieces take their time, too.
    const double now = std::floor(length / kUsualSpeed);
    waits.push_back(static_cast<std::uint32_t>(std::min<double>(now - before, kLongestPause)));
    before = now;
  }
  return waits;
}

// Each run of points with one time is spread over the time until the next; the last goes on as fast
// as the one before it.
Waits clockWaits(const Times& times, std::size_t points) {
  Waits waits{0};
  std::uint64_t lastDuration = 0;
  std::size_t lastCount = 1;
  for (std::size_t begin = 0; begin < points;) {
    std::size_t end = begin + 1;
    while (end < points && times[end] == times[begin])
      ++end;
    const std::size_t count = end - begin;
    if (end < points) {
      lastDuration = std::min(times[end] - times[begin], kLongestPause);
      lastCount = count;
    }
    // The last run ends with its last point, the others with the first of the next run.
    const std::size_t steps = end < points ? count : count - 1;
    for (std::size_t i = 0; i < steps; ++i)
      waits.push_back(share(lastDuration, i + 1, lastCount) - share(lastDuration, i, lastCount));
    begin = end;
  }
  return waits;
}

}  // namespace

std::vector<Waits> waitsOf(const std::vector<const art::Path*>& paths, const StrokeTimes& times) {
  std::vector<Waits> all;
  all.reserve(paths.size());
  const Times none;
  const Times* before = nullptr;
  std::size_t lastPoint = 0;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const std::size_t points = paths[i]->segments.size();
    const Times& own = i < times.size() ? times[i] : none;
    const bool hasClock = isUsable(own, points);
    Waits waits = hasClock ? clockWaits(own, points) : evenWaits(*paths[i]);
    if (i > 0) waits[0] = kUsualPause;
    if (hasClock && before != nullptr && (*before)[lastPoint] <= own[0]) {
      waits[0] = std::min(own[0] - (*before)[lastPoint], kLongestPause);
    }
    before = hasClock ? &own : nullptr;
    lastPoint = points - 1;
    all.push_back(std::move(waits));
  }
  return all;
}

std::vector<std::size_t> orderOf(const StrokeTimes& times) {
  std::vector<std::size_t> order(times.size());
  std::iota(order.begin(), order.end(), 0);
  std::vector<std::size_t> asTheyAre = order;
  const bool allHaveTimes =
      std::ranges::all_of(times, [](const Times& own) { return isUsable(own, own.size()); });
  if (!allHaveTimes) return asTheyAre;
  std::ranges::stable_sort(order, {}, [&](std::size_t stroke) { return times[stroke][0]; });
  for (std::size_t i = 1; i < order.size(); ++i) {
    if (times[order[i]].front() < times[order[i - 1]].back()) return asTheyAre;
  }
  return order;
}

}  // namespace web
