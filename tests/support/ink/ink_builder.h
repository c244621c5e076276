// Drawings and definitions for tests, made by hand or at random.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "inkml/definitions.h"
#include "model/document.h"

namespace inktest {

/// The seven values of a point in the order of a file; missing ones are 0.
struct Seven {
  double x = 0;
  double y = 0;
  double z = 0;
  std::uint32_t pressure = 0;
  std::int32_t tiltX = 0;
  std::int32_t tiltY = 0;
  std::uint32_t time = 0;

  bool operator==(const Seven&) const = default;
};

inline Orvo::Point makePoint(const Seven& values) {
  Orvo::Point point;
  point.x.value = values.x;
  point.y.value = values.y;
  point.z.value = values.z;
  point.pressure.value = values.pressure;
  point.tiltX.value = values.tiltX;
  point.tiltY.value = values.tiltY;
  point.timestamp.value = values.time;
  return point;
}

inline Seven sevenOf(const Orvo::Point& point) {
  return {point.x.value,     point.y.value,     point.z.value,        point.pressure.value,
          point.tiltX.value, point.tiltY.value, point.timestamp.value};
}

inline Orvo::Stroke makeStroke(std::initializer_list<Seven> points) {
  Orvo::Stroke stroke;
  for (const Seven& values : points)
    stroke.append(makePoint(values));
  return stroke;
}

inline Orvo::Layer makeLayer(std::initializer_list<Orvo::Stroke> strokes) {
  Orvo::Layer layer;
  for (const Orvo::Stroke& stroke : strokes)
    layer.append(stroke);
  return layer;
}

inline std::vector<Seven> pointsOf(const Orvo::Stroke& stroke) {
  std::vector<Seven> points;
  for (const Orvo::Point& point : stroke)
    points.push_back(sevenOf(point));
  return points;
}

/// How many points each stroke has, layer by layer.
inline std::vector<std::vector<std::size_t>> shapeOf(const Orvo::Document& document) {
  std::vector<std::vector<std::size_t>> shape;
  for (const Orvo::Layer& layer : document) {
    shape.emplace_back();
    for (const Orvo::Stroke& stroke : layer)
      shape.back().push_back(stroke.size());
  }
  return shape;
}

/// Random documents and definitions: every kind of number, odd texts, empty strokes and layers.
class InkDice {
 public:
  explicit InkDice(unsigned seed) : random_(seed) {}

  unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

  Orvo::Document document() {
    Orvo::Document document;
    for (unsigned i = below(4); i > 0; --i)
      document.append(layer());
    annotate(document.annotations());
    return document;
  }

  /// Ids are all different; each context refers to a brush and a format.
  void fill(Orvo::InkMLDefinitions& definitions) {
    for (unsigned i = below(4); i > 0; --i)
      definitions.traceFormats.push_back(format());
    for (unsigned i = below(4); i > 0; --i)
      definitions.brushes.push_back(brush());
    if (definitions.traceFormats.empty() || definitions.brushes.empty()) return;
    for (unsigned i = below(4); i > 0; --i) {
      auto format = definitions.traceFormats.begin();
      std::advance(format, below(static_cast<unsigned>(definitions.traceFormats.size())));
      auto brush = definitions.brushes.begin();
      std::advance(brush, below(static_cast<unsigned>(definitions.brushes.size())));
      definitions.contexts.push_back({&*format, &*brush, text()});
    }
  }

  std::string text() {
    static const std::vector<std::string> parts = {"a",
                                                   "Z",
                                                   " ",
                                                   "  ",
                                                   "&",
                                                   "<",
                                                   ">",
                                                   "\"",
                                                   "'",
                                                   "\n",
                                                   "\t",
                                                   "\r",
                                                   "\x01",
                                                   "\x7F",
                                                   "\xC3\xA9",
                                                   "\xE2\x82\xAC",
                                                   "\xF0\x9F\x96\x8B",
                                                   "&#x41;",
                                                   "]]>",
                                                   "<!--",
                                                   ",",
                                                   "#",
                                                   ";",
                                                   "7"};
    std::string text;
    for (unsigned i = below(7); i > 0; --i)
      text += parts[below(static_cast<unsigned>(parts.size()))];
    return text;
  }

 private:
  Orvo::Layer layer() {
    Orvo::Layer layer;
    for (unsigned i = below(5); i > 0; --i)
      layer.append(stroke());
    annotate(layer.annotations());
    return layer;
  }

  Orvo::Stroke stroke() {
    Orvo::Stroke stroke;
    for (unsigned i = below(3) == 0 ? 0 : below(12); i > 0; --i) {
      stroke.append(makePoint({decimal(), decimal(), decimal(), word(), tilt(), tilt(), word()}));
    }
    return stroke;
  }

  void annotate(std::map<std::string, std::string>& annotations) {
    for (unsigned i = below(4); i > 0; --i)
      annotations[text()] = text();
  }

  Orvo::TraceFormat format() {
    Orvo::TraceFormat format;
    format.id = id();
    for (unsigned i = below(3); i > 0; --i) {
      Orvo::Channel channel;
      channel.name.value = text();
      channel.min.value = tilt();
      channel.max.value = tilt();
      channel.units.value = text();
      format.push_back(channel);
    }
    return format;
  }

  Orvo::Brush brush() {
    Orvo::Brush brush;
    brush.id = id();
    brush.color.value = text();
    brush.width.value = word();
    brush.height.value = word();
    brush.transparency.value = word();
    brush.antialiased.value = below(2) == 0;
    brush.fittocurve.value = below(2) == 0;
    brush.ignorePressure.value = below(2) == 0;
    brush.pentip.value = text();
    return brush;
  }

  std::string id() { return text() + std::to_string(++ids_); }

  double decimal() {
    const double whole = static_cast<double>(below(2'000'000)) - 1'000'000.0;
    switch (below(8)) {
      case 0:
        return whole / 1000.0;
      case 1:
        return whole * 1000.0;
      case 2:
        return whole * 1e15;
      case 3:
        return whole / 1e15;
      case 4:
        return below(2) == 0 ? std::numeric_limits<double>::quiet_NaN()
                             : std::numeric_limits<double>::infinity();
      case 5:
        return -0.0;
      default:
        return static_cast<double>(below(3000));
    }
  }

  std::uint32_t word() {
    return below(2) == 0 ? below(2048) : static_cast<std::uint32_t>(random_());
  }
  std::int32_t tilt() { return static_cast<std::int32_t>(word()); }

  std::mt19937 random_;
  unsigned ids_ = 0;
};

}  // namespace inktest
