#include "render/spine.h"

#include <algorithm>
#include <cmath>

#include "render/paths.h"

namespace render {

namespace {

constexpr double kFarthest = 1e7;  // points
constexpr int kManyPieces = 2000;  // of one curve

Place placeOf(const art::Point& point) {
  return {std::clamp(double{point.h}, -kFarthest, kFarthest),
          std::clamp(double{point.v}, -kFarthest, kFarthest)};
}

bool isNumber(const art::Point& point) {
  return std::isfinite(point.h) && std::isfinite(point.v);
}

bool isNumber(const art::Segment& segment) {
  return isNumber(segment.p) && isNumber(segment.in) && isNumber(segment.out);
}

Place between(const Place& from, const Place& to, double share) {
  return {from.h + (to.h - from.h) * share, from.v + (to.v - from.v) * share};
}

double bend(const Place& a, const Place& b, const Place& c) {
  return std::hypot(a.h - 2 * b.h + c.h, a.v - 2 * b.v + c.v);
}

// Equal steps of the parameter, so many that no chord lies off by more than the flatness, on
// curves that turn back on themselves too.
void flattenCurve(const Place& a, const Place& b, const Place& c, const Place& d,
                  std::vector<Place>& line) {
  const double bends = std::max(bend(a, b, c), bend(b, c, d));
  const int pieces = static_cast<int>(
      std::clamp(std::ceil(std::sqrt(0.75 * bends / kFlatness)), 1.0, double{kManyPieces}));
  for (int i = 1; i < pieces; ++i) {
    const double t = static_cast<double>(i) / pieces;
    const double s = 1 - t;
    const double wa = s * s * s;
    const double wb = 3 * s * s * t;
    const double wc = 3 * s * t * t;
    const double wd = t * t * t;
    line.push_back(
        {wa * a.h + wb * b.h + wc * c.h + wd * d.h, wa * a.v + wb * b.v + wc * c.v + wd * d.v});
  }
  line.push_back(d);
}

void flattenPiece(const art::Segment& from, const art::Segment& to, std::vector<Place>& line) {
  const Place a = placeOf(from.p);
  const Place d = placeOf(to.p);
  // Control points on their own anchors, or each on the other one: straight, never turning back.
  const bool retracted = from.out == from.p && to.in == to.p;
  const bool swapped = from.out == to.p && to.in == from.p;
  if (retracted || swapped) {
    line.push_back(d);
    return;
  }
  // Three of the four in one place: straight out to 4/9 of the way to the other one, and back.
  if (from.p == to.p && (from.p == to.in || from.p == from.out)) {
    line.push_back(between(a, placeOf(from.p == to.in ? from.out : to.in), 4.0 / 9));
    line.push_back(d);
    return;
  }
  flattenCurve(a, placeOf(from.out), placeOf(to.in), d, line);
}

}  // namespace

void flatten(const art::Path& path, std::vector<Place>& line) {
  line.clear();
  const art::Segment* first = nullptr;
  const art::Segment* last = nullptr;
  for (const art::Segment& segment : path.segments) {
    if (!isNumber(segment)) continue;
    if (last == nullptr) {
      first = &segment;
      line.push_back(placeOf(segment.p));
    } else {
      flattenPiece(*last, segment, line);
    }
    last = &segment;
  }
  if (path.closed && first != last) flattenPiece(*last, *first, line);
}

double Spine::measure() {
  lengths_.clear();
  double length = 0;
  for (std::size_t i = 0; i < line_.size(); ++i) {
    if (i > 0) {
      const double h = line_[i].h - line_[i - 1].h;
      const double v = line_[i].v - line_[i - 1].v;
      length += std::sqrt(h * h + v * v);
    }
    lengths_.push_back(length);
  }
  return length;
}

void Spine::tie(const art::Path& path, std::optional<double> pressure, double length) {
  knots_.clear();
  if (pressure && !hasPressure(path)) {
    knots_.push_back({0, std::clamp(*pressure, 0.0, 1.0)});
    return;
  }
  for (const art::TabletSample& sample : path.pressure) {
    if (!std::isfinite(sample.offset) || !std::isfinite(sample.value)) continue;
    knots_.push_back({std::clamp(double{sample.offset}, 0.0, 1.0) * length,
                      std::clamp(double{sample.value}, 0.0, 1.0)});
  }
  const auto earlier = [](const Knot& a, const Knot& b) { return a.length < b.length; };
  if (!std::is_sorted(knots_.begin(), knots_.end(), earlier)) {
    std::stable_sort(knots_.begin(), knots_.end(), earlier);
  }
  if (knots_.empty()) knots_.push_back({0, 0.5});
}

double Spine::pressureAt(std::size_t nextKnot, double length) const {
  if (nextKnot == 0) return knots_.front().pressure;
  if (nextKnot == knots_.size()) return knots_.back().pressure;
  const Knot& before = knots_[nextKnot - 1];
  const Knot& after = knots_[nextKnot];
  const double share = (length - before.length) / (after.length - before.length);
  return before.pressure + (after.pressure - before.pressure) * share;
}

const std::vector<Vertex>& Spine::follow(const art::Path& path, std::optional<double> pressure) {
  flatten(path, line_);
  tie(path, pressure, measure());
  vertices_.clear();
  std::size_t knot = 0;
  for (std::size_t i = 0; i < line_.size(); ++i) {
    for (; knot < knots_.size() && knots_[knot].length < lengths_[i]; ++knot) {
      const double share =
          (knots_[knot].length - lengths_[i - 1]) / (lengths_[i] - lengths_[i - 1]);
      vertices_.push_back({between(line_[i - 1], line_[i], share), knots_[knot].pressure});
    }
    if (knot < knots_.size() && knots_[knot].length == lengths_[i]) {
      for (; knot < knots_.size() && knots_[knot].length == lengths_[i]; ++knot)
        vertices_.push_back({line_[i], knots_[knot].pressure});
    } else {
      vertices_.push_back({line_[i], pressureAt(knot, lengths_[i])});
    }
  }
  return vertices_;
}

bool hasPressure(const art::Path& path) {
  return std::ranges::any_of(path.pressure,
                             [](const art::TabletSample& sample) { return sample.value > 0; });
}

bool lacksPressure(const art::Document& document) {
  bool anyData = false;
  bool anyPressure = false;
  for (const art::Layer& layer : document.layers) {
    forEachPath(layer.art, [&](const art::Path& path, std::optional<std::size_t>) {
      anyData = anyData || !path.pressure.empty();
      anyPressure = anyPressure || hasPressure(path);
    });
  }
  return anyData && !anyPressure;
}

}  // namespace render
