#include "facts/drawing_facts.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace facts {

namespace {

constexpr char kLayerName[] = "name";

template <class Number>
void widen(std::optional<Range<Number>>& range, Number value) {
  if (!range) range = {value, value};
  range->least = std::min(range->least, value);
  range->most = std::max(range->most, value);
}

template <class Number>
bool isZero(const std::optional<Range<Number>>& range) {
  return range && range->least == 0 && range->most == 0;
}

void widen(std::optional<Extent>& extent, double x, double y) {
  if (!extent) extent = {x, y, x, y};
  extent->left = std::min(extent->left, x);
  extent->top = std::min(extent->top, y);
  extent->right = std::max(extent->right, x);
  extent->bottom = std::max(extent->bottom, y);
}

class Collector {
 public:
  void add(const Orvo::Layer& layer) {
    const auto name = layer.annotations().find(kLayerName);
    LayerFacts& facts = facts_.layers.emplace_back();
    if (name != layer.annotations().end()) facts.name = name->second;
    facts.strokes = layer.size();
    for (const Orvo::Stroke& stroke : layer) {
      facts.points += stroke.size();
      add(stroke);
    }
    facts_.strokes += facts.strokes;
    facts_.points += facts.points;
  }

  DrawingFacts result() {
    if (isZero(facts_.pressure)) facts_.pressure.reset();
    if (isZero(facts_.tiltX) && isZero(facts_.tiltY)) {
      facts_.tiltX.reset();
      facts_.tiltY.reset();
    }
    return std::move(facts_);
  }

 private:
  void add(const Orvo::Stroke& stroke) {
    if (stroke.size() == 1) ++facts_.singlePoints;
    facts_.longestStroke = std::max<std::uint64_t>(facts_.longestStroke, stroke.size());
    const Orvo::Point* last = nullptr;
    for (const Orvo::Point& point : stroke) {
      const double x = point.x.value;
      const double y = point.y.value;
      widen(facts_.extent, x, y);
      widen(facts_.pressure, static_cast<std::int32_t>(point.pressure.value));
      widen(facts_.tiltX, point.tiltX.value);
      widen(facts_.tiltY, point.tiltY.value);
      if (last != nullptr) facts_.length += std::hypot(x - last->x.value, y - last->y.value);
      last = &point;
    }
  }

  DrawingFacts facts_;
};

using Times = std::optional<Range<std::uint32_t>>;

std::uint64_t spanOf(const Times& times) {
  return times ? times->most - times->least : 0;
}

}  // namespace

DrawingFacts drawingFactsOf(const Orvo::Document& document) {
  Collector collector;
  for (const Orvo::Layer& layer : document)
    collector.add(layer);
  return collector.result();
}

std::optional<ClockFacts> clockFactsOf(const Orvo::Document& document, std::size_t untimed) {
  ClockFacts facts;
  Times all;
  for (const Orvo::Layer& layer : document) {
    for (const Orvo::Stroke& stroke : layer) {
      Times ofStroke;
      for (const Orvo::Point& point : stroke) {
        if (untimed > 0) {
          --untimed;
          continue;
        }
        widen(ofStroke, point.timestamp.value);
        widen(all, point.timestamp.value);
      }
      facts.penDown += spanOf(ofStroke);
    }
  }
  if (!all || isZero(all)) return std::nullopt;
  facts.whole = spanOf(all);
  return facts;
}

}  // namespace facts
