#include "render/stations.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

// All slopes of a line from the origin that pass every value so far.
class Slopes {
 public:
  void reset() {
    low_ = -1e9;
    high_ = 1e9;
  }
  bool allow(double value, double length) const {
    return low_ * length <= value && value <= high_ * length;
  }
  void narrow(double value, double length, double tolerance) {
    low_ = std::max(low_, (value - tolerance) / length);
    high_ = std::min(high_, (value + tolerance) / length);
  }

 private:
  double low_ = -1e9;
  double high_ = 1e9;
};

// The stations since the last one that stays, seen from there.
class Run {
 public:
  Run(const Station& start, double tolerance) : start_(&start), tolerance_(tolerance) {}

  // Whether a line from the start to this station passes all those between.
  bool reaches(const Station& station) {
    const double dx = station.x - start_->x;
    const double dy = station.y - start_->y;
    const double growth = station.radius - start_->radius;
    if (reach_ == 0) return beginsAt(dx, dy, growth);
    const double forward = dx * ux_ + dy * uy_;
    const double aside = dy * ux_ - dx * uy_;
    if (forward <= reach_ || std::abs(aside) > 0.25 * forward) return false;
    if (!sides_.allow(aside, forward) || !radii_.allow(growth, forward)) return false;
    go(forward, aside, growth);
    return true;
  }

 private:
  // Until it is clear where the line goes, what lies close to the start may be left out.
  bool beginsAt(double dx, double dy, double growth) {
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (distance < tolerance_) return std::abs(growth) < tolerance_;
    ux_ = dx / distance;
    uy_ = dy / distance;
    go(distance, 0, growth);
    return true;
  }

  void go(double forward, double aside, double growth) {
    reach_ = forward;
    sides_.narrow(aside, forward, tolerance_);
    radii_.narrow(growth, forward, tolerance_);
  }

  const Station* start_;
  double tolerance_;
  double ux_ = 0;
  double uy_ = 0;
  double reach_ = 0;
  Slopes sides_;
  Slopes radii_;
};

}  // namespace

void thin(std::vector<Station>& stations, double tolerance) {
  if (stations.size() < 2) return;
  std::size_t kept = 1;
  Station start = stations.front();
  Run run(start, tolerance);
  for (std::size_t i = 1; i < stations.size(); ++i) {
    if (run.reaches(stations[i])) continue;
    const Station& previous = stations[i - 1];
    if (i - 1 > 0 &&
        (previous.x != start.x || previous.y != start.y || previous.radius != start.radius)) {
      start = previous;
      stations[kept++] = previous;
    }
    run = Run(start, tolerance);
    if (!run.reaches(stations[i])) {
      // A jump of the radius in one place.
      start = stations[i];
      stations[kept++] = start;
      run = Run(start, tolerance);
    }
  }
  const Station last = stations.back();
  if (last.x != start.x || last.y != start.y || last.radius != start.radius)
    stations[kept++] = last;
  stations.resize(kept);
}

}  // namespace render
