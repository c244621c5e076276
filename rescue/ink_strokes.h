// Which points of a damaged ink document belong together, and which of them damage made up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "rescue/ink_points.h"

namespace rescue {

/// What is usual between neighbours in a stroke.
class InkHabits {
 public:
  InkHabits(std::span<const InkPoint> points, std::span<const InkRegion> regions, PointForm form);

  /// Whether times tell where a stroke goes on: nearly all of them run forward.
  bool hasClock() const { return hasClock_; }
  /// Whether `b` may follow `a` by the clock, or there is none.
  bool clockAgrees(const InkPoint& a, const InkPoint& b) const;
  /// Whether `b` comes no later than after one lost point.
  bool isNextButOne(const InkPoint& a, const InkPoint& b) const;
  double usualStep() const { return usualStep_; }

 private:
  bool hasClock_ = false;
  bool pausesAreUsual_ = false;
  std::int64_t usualTime_ = 0;
  std::int64_t longestTime_ = 0;
  double usualStep_ = 0;
};

double distance(const InkPoint& a, const InkPoint& b);

/// What becomes of a point.
struct PointFate {
  bool isKept = true;
  bool startsStroke = false;
};

/// Judges all points: those that damage made up are dropped, and a stroke ends where bytes are
/// missing.
std::vector<PointFate> judgePoints(std::string_view bytes, std::span<const InkPoint> points,
                                   std::span<const InkRegion> regions, PointForm form,
                                   const InkHabits& habits);

}  // namespace rescue
