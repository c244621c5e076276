// A brush that changes its shape: the hull of every two neighbouring stamps, so close together that
// the way between them makes no difference.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "render/sweep.h"

namespace render {

namespace {

class EllipseSweep {
 public:
  EllipseSweep(const Nib& nib, double tolerance, Contours& contours)
      : nib_(nib), tolerance_(tolerance), contours_(contours) {
    const Stamp light = nib.at(0);
    const Stamp heavy = nib.at(1);
    const double largest = std::max(light.radius, heavy.radius);
    turn_ = std::sqrt(8 * tolerance / std::max(largest, tolerance));
    corners_ = std::max(8, static_cast<int>(std::ceil(2 * std::numbers::pi / turn_)));
    change_ = std::abs(heavy.radius - light.radius) +
              largest * (std::abs(heavy.roundness - light.roundness) +
                         std::abs(heavy.angle - light.angle));
    steps_ =
        (std::abs(heavy.angle - light.angle) + 2 * std::abs(heavy.roundness - light.roundness)) /
        turn_;
  }

  void sweep(const std::vector<Vertex>& vertices) {
    // The pressure as a radius that changes as fast as the fastest edge of the brush.
    std::vector<Station> stations;
    stations.reserve(vertices.size());
    for (const Vertex& vertex : vertices)
      stations.push_back({vertex.place.h, vertex.place.v, vertex.pressure * change_});
    thin(stations, tolerance_);
    if (stations.size() == 1) step(stations.front(), stations.front());
    for (std::size_t i = 1; i < stations.size(); ++i)
      step(stations[i - 1], stations[i]);
  }

 private:
  struct Corner {
    double x;
    double y;
  };
  using Corners = std::vector<Corner>;

  Corners& fresh() {
    points_.clear();
    return points_;
  }

  double pressureAt(const Station& station) const {
    return change_ > 0 ? station.radius / change_ : 0;
  }

  void step(const Station& from, const Station& to) {
    const double change = std::abs(pressureAt(to) - pressureAt(from));
    const int steps = std::max(1, static_cast<int>(std::ceil(change * steps_)));
    Station before = from;
    for (int i = 1; i <= steps; ++i) {
      const double share = static_cast<double>(i) / steps;
      const Station after{from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share,
                          from.radius + (to.radius - from.radius) * share};
      Corners& points = fresh();
      stamp(before, points);
      stamp(after, points);
      hull(points);
      before = after;
    }
  }

  void stamp(const Station& at, Corners& points) const {
    const Stamp shape = nib_.at(pressureAt(at));
    const double cosine = std::cos(shape.angle);
    const double sine = std::sin(shape.angle);
    const double step = 2 * std::numbers::pi / corners_;
    const double radius = shape.radius * std::sqrt(step / std::sin(step));
    for (int i = 0; i < corners_; ++i) {
      const double along = radius * std::cos(i * step);
      const double across = radius * shape.roundness * std::sin(i * step);
      points.push_back(
          {at.x + along * cosine - across * sine, at.y + along * sine + across * cosine});
    }
  }

  // Clockwise: the upper chain from left to right, then the lower one back.
  void hull(Corners& points) {
    std::sort(points.begin(), points.end(),
              [](const Corner& a, const Corner& b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
    contours_.begin(points.size());
    chain(points.begin(), points.end());
    chain(points.rbegin(), points.rend());
    contours_.end();
  }

  template <class Iterator>
  void chain(Iterator begin, Iterator end) {
    chain_.clear();
    for (Iterator it = begin; it != end; ++it) {
      while (chain_.size() > 1 && !turnsClockwise(chain_[chain_.size() - 2], chain_.back(), *it))
        chain_.pop_back();
      chain_.push_back(*it);
    }
    for (const Corner& corner : chain_)
      contours_.point(corner.x, corner.y);
  }

  static bool turnsClockwise(const Corner& a, const Corner& b, const Corner& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) < 0;
  }

  const Nib& nib_;
  double tolerance_;
  Contours& contours_;
  double turn_ = 0;    // radians between corners of a stamp
  double change_ = 0;  // of the edge, in points, from no pressure to full pressure
  double steps_ = 0;   // from no pressure to full pressure
  int corners_ = 0;    // of a stamp
  Corners points_;
  Corners chain_;
};

}  // namespace

void sweepEllipses(const std::vector<Vertex>& vertices, const Nib& nib, double tolerance,
                   Contours& contours) {
  if (!vertices.empty()) EllipseSweep(nib, tolerance, contours).sweep(vertices);
}

}  // namespace render
