#include "rescue/ink_doubled.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace rescue {
namespace {

using std::size_t;
using std::string_view;

// A few points behind each place where something is wrong: the first may be made up of two.
std::vector<bool> suspects(std::span<const InkPoint> points, std::span<const InkRegion> regions,
                           const InkHabits& habits) {
  std::vector<bool> isSuspect(points.size());
  constexpr size_t kReach = 3;
  bool isWhole = true;
  for (const InkRegion& region : regions) {
    // What is wrong at the end of a stretch may go on in the next.
    size_t left = isWhole ? 0 : kReach;
    if (region.firstPoint < region.lastPoint || !region.isWhole) isWhole = region.isWhole;
    for (size_t i = region.firstPoint; i < region.lastPoint; ++i) {
      const bool isFirst = i == region.firstPoint;
      if (points[i].followsGap || !points[i].isSureAtStart) left = kReach;
      if (!isFirst && !habits.clockAgrees(points[i - 1], points[i])) left = kReach;
      isSuspect[i] = left > 0;
      if (left > 0) --left;
    }
  }
  return isSuspect;
}

// How many bytes before `a` equal those before `b`, and how many from there on; both at most
// `most`.
size_t equalBefore(string_view bytes, size_t a, size_t b, size_t most) {
  size_t count = 0;
  while (count < most && count < a && bytes[a - 1 - count] == bytes[b - 1 - count])
    ++count;
  return count;
}

size_t equalFrom(string_view bytes, size_t a, size_t b, size_t most) {
  size_t count = 0;
  while (count < most && b + count < bytes.size() && bytes[a + count] == bytes[b + count])
    ++count;
  return count;
}

}  // namespace

std::vector<DoubledBytes> doubledPoints(string_view bytes, std::span<const InkPoint> points,
                                        std::span<const InkRegion> regions,
                                        const InkHabits& habits) {
  std::vector<DoubledBytes> runs;
  const std::vector<bool> isSuspect = suspects(points, regions, habits);
  if (std::find(isSuspect.begin(), isSuspect.end(), true) == isSuspect.end()) return runs;
  std::unordered_map<string_view, size_t> last;
  size_t done = 0;
  // All comparisons together stay linear in the length of the document.
  size_t budget = 4 * bytes.size();
  for (size_t i = 0; i < points.size(); ++i) {
    const InkPoint& point = points[i];
    const string_view text = bytes.substr(point.begin, point.end - point.begin);
    const auto [entry, isNew] = last.try_emplace(text, point.begin);
    const size_t before = entry->second;
    entry->second = point.begin;
    if (isNew || !isSuspect[i] || point.begin < done) continue;
    const size_t length = point.begin - before;
    if (2 * length > budget) continue;
    budget -= 2 * length;
    const size_t back = equalBefore(bytes, before, point.begin, length);
    if (back + equalFrom(bytes, before, point.begin, length) < length) continue;
    const size_t begin = point.begin - std::min(back, length);
    if (begin < done) continue;
    done = begin + length;
    runs.push_back({begin, done});
  }
  return runs;
}

std::vector<DoubledBytes> doubledBytesAt(string_view bytes, std::span<const size_t> places) {
  constexpr size_t kShortest = 8;
  constexpr size_t kLongest = 64;
  constexpr size_t kReach = 80;
  constexpr size_t kMostPlaces = 100;
  std::vector<DoubledBytes> runs;
  if (places.size() > kMostPlaces) return runs;
  size_t done = 0;
  for (const size_t place : places) {
    const size_t from = std::max(done, place > kReach ? place - kReach : 0);
    const size_t to = std::min(bytes.size(), place + kReach);
    DoubledBytes found{0, 0};
    for (size_t length = kLongest; length >= kShortest && found.end == 0; --length) {
      size_t equal = 0;
      for (size_t i = from; i + length < to && found.end == 0; ++i) {
        equal = bytes[i] == bytes[i + length] ? equal + 1 : 0;
        if (equal == length) found = {i + 1, i + 1 + length};
      }
      if (found.end == 0) continue;
      std::array<bool, 256> seen{};
      for (size_t i = found.begin; i < found.end; ++i)
        seen[static_cast<unsigned char>(bytes[i])] = true;
      // Blanks, zeros and the like repeat anyway.
      if (std::count(seen.begin(), seen.end(), true) < 4) found = {0, 0};
    }
    if (found.end == 0) continue;
    done = found.end;
    runs.push_back(found);
  }
  return runs;
}

}  // namespace rescue
