#include "translate/drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "text/numbers.h"

namespace translate {
namespace {

constexpr double kTenths = 10;          // Units of the subset in a millimetre.
constexpr double kMostPlace = 999'999;  // What the subset writes without an exponent.
constexpr double kFullPressure = 1023;
constexpr double kLastTime = 2147483647;
constexpr double kAssumedSize = 150;  // mm: fits a sheet of A4.
constexpr double kPixel = 25.4 / 96;

// Half away from zero. What arithmetic leaves a hair below a half is meant as one: the same drawing
// may be written as differences.
double rounded(double value) {
  constexpr double kHalf = 0.5 + 1e-7;
  return std::copysign(std::floor(std::abs(value) + kHalf), value);
}

std::string shortNumber(double value) {
  std::array<char, 32> digits{};
  constexpr int kDigits = 6;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::general, kDigits);
  return {digits.data(), end.ptr};
}

// Sets the box of a document or layer whose children were filled after they were put into it.
template <class Region>
void bound(Region& region) {
  bool isFirst = true;
  for (const auto& child : region) {
    if (isFirst) {
      startBox(region.bounds(), child.bounds());
    } else {
      region.extendBounds(child);
    }
    isFirst = false;
  }
}

}  // namespace

Drawing::Number Drawing::addLayer(Annotations annotations) {
  layers_.push_back(std::move(annotations));
  return static_cast<Number>(layers_.size() - 1);
}

Drawing::Number Drawing::addStroke(Number layer, TracePoints points) {
  const auto number = static_cast<Number>(strokes_.size());
  points.samples.shrink_to_fit();
  strokes_.push_back({.points = std::move(points), .layer = layer, .chain = number});
  return number;
}

Drawing::Number Drawing::chainOf(Number stroke) {
  while (strokes_[stroke].chain != stroke) {
    strokes_[stroke].chain = strokes_[strokes_[stroke].chain].chain;
    stroke = strokes_[stroke].chain;
  }
  return stroke;
}

bool Drawing::join(Number before, Number after) {
  const Number first = chainOf(before);
  const Number second = chainOf(after);
  if (strokes_[before].next != kNone || strokes_[after].isJoined || first == second) return false;
  strokes_[before].next = after;
  strokes_[after].isJoined = true;
  strokes_[second].chain = first;
  return true;
}

void Drawing::settleScale(std::optional<double> millimetresPerUnit) {
  const auto without =
      std::ranges::count_if(strokes_, [](const Stroke& s) { return !s.points.hasUnit; });
  if (without == 0) return;
  double scale = kPixel;
  if (millimetresPerUnit) {
    scale = *millimetresPerUnit;
  } else if (static_cast<std::size_t>(without) == strokes_.size()) {
    const double extent = largestExtent();
    if (extent > 0 && std::isfinite(kAssumedSize / extent)) scale = kAssumedSize / extent;
    remarks_.add(RemarkKind::sizeAssumed, static_cast<std::uint64_t>(without), shortNumber(scale));
  } else {
    remarks_.add(RemarkKind::pixelsAssumed, static_cast<std::uint64_t>(without));
  }
  for (Stroke& stroke : strokes_) {
    if (stroke.points.hasUnit) continue;
    for (Sample& sample : stroke.points.samples) {
      sample.x *= scale;
      sample.y *= scale;
    }
  }
}

double Drawing::largestExtent() const {
  double left = INFINITY;
  double right = -INFINITY;
  double top = INFINITY;
  double bottom = -INFINITY;
  for (const Stroke& stroke : strokes_) {
    for (const Sample& sample : stroke.points.samples) {
      left = std::min(left, sample.x);
      right = std::max(right, sample.x);
      top = std::min(top, sample.y);
      bottom = std::max(bottom, sample.y);
    }
  }
  return std::max(right - left, bottom - top);
}

// A range that is not declared ends where devices' ranges do.
void Drawing::settlePressure() {
  constexpr std::array<double, 8> kUsual = {1, 255, 1023, 2047, 4095, 8191, 32767, 65535};
  double greatest = 0;
  for (const Stroke& stroke : strokes_) {
    if (!std::isnan(stroke.points.greatestForce)) continue;
    for (const Sample& sample : stroke.points.samples)
      greatest = std::max(greatest, std::isnan(sample.force) ? 0 : sample.force);
  }
  const auto usual = std::ranges::lower_bound(kUsual, greatest);
  if (usual != kUsual.end()) greatest = *usual;
  for (Stroke& stroke : strokes_) {
    TracePoints& points = stroke.points;
    const double end = std::isnan(points.greatestForce) ? greatest : points.greatestForce;
    const double range = end - points.leastForce;
    for (Sample& sample : points.samples) {
      const double share = range > 0 ? (sample.force - points.leastForce) / range : 1;
      sample.force = std::isnan(share) ? 1 : std::clamp(share, 0.0, 1.0);
    }
  }
}

void Drawing::settleTimes() {
  continueTimes();
  bool isTooEarly = false;
  bool isTooLate = false;
  bool hasOthers = false;
  bool hasClocks = false;
  for (const Stroke& stroke : strokes_) {
    (stroke.points.hasClock ? hasClocks : hasOthers) = true;
    for (const Sample& sample : stroke.points.samples) {
      isTooEarly = isTooEarly || rounded(sample.time) < 0;
      isTooLate = isTooLate || rounded(sample.time) > kLastTime;
    }
  }
  if (!isTooEarly && !isTooLate) return;
  if (hasClocks && hasOthers) {
    remarks_.add(RemarkKind::clocksUnlinked,
                 static_cast<std::uint64_t>(std::ranges::count_if(
                     strokes_, [](const Stroke& s) { return !s.points.hasClock; })));
  }
  shiftTimes(true);
  shiftTimes(false);
}

// What continues a stroke and does not say when it began follows at the pace of the stroke.
void Drawing::continueTimes() {
  for (Stroke& stroke : strokes_) {
    if (stroke.isJoined) continue;
    const Stroke* before = &stroke;
    while (before->next != kNone) {
      Stroke& after = strokes_[before->next];
      std::vector<Sample>& samples = after.points.samples;
      if (!after.points.hasStart && !samples.empty() && !before->points.samples.empty()) {
        const double shift =
            before->points.samples.back().time + before->points.period - samples.front().time;
        for (Sample& sample : samples)
          sample.time += shift;
      }
      before = &after;
    }
  }
}

// Counts times from the earliest: those from a time of day, or the others.
void Drawing::shiftTimes(bool ofClocks) {
  double earliest = INFINITY;
  for (const Stroke& stroke : strokes_) {
    if (stroke.points.hasClock != ofClocks) continue;
    for (const Sample& sample : stroke.points.samples)
      earliest = std::min(earliest, sample.time);
  }
  if (!std::isfinite(earliest)) return;
  for (Stroke& stroke : strokes_) {
    if (stroke.points.hasClock != ofClocks) continue;
    for (Sample& sample : stroke.points.samples)
      sample.time -= earliest;
  }
}

// Writes strokes into the document, each from the samples of one or several traces.
class Drawing::Writer {
 public:
  Writer(Orvo::Document& document, Annotations& annotations, std::vector<InkTree::Index>& brushes)
      : document_(document), annotations_(annotations), brushes_(brushes) {}

  void write(const Sample& sample, InkTree::Index brush) {
    if (sample.isPenUp) return endStroke();
    const double x = rounded(sample.x * kTenths);
    const double y = rounded(sample.y * kTenths);
    if (!(std::abs(x) <= kMostPlace && std::abs(y) <= kMostPlace)) {
      ++tooFar_;
      return;
    }
    Orvo::Point point(x + 0.0, y + 0.0);  // -0 becomes 0.
    point.pressure.value = static_cast<std::uint32_t>(rounded(sample.force * kFullPressure));
    point.tiltX.value = tiltOf(sample.tiltX);
    point.tiltY.value = tiltOf(sample.tiltY);
    const double time = rounded(sample.time);
    if (time > kLastTime) ++tooLate_;
    point.timestamp.value = static_cast<std::uint32_t>(std::clamp(time, 0.0, kLastTime));
    stroke(brush).append(point);
  }

  // The plug-in draws up to the last point but one.
  void endStroke() {
    if (stroke_ != nullptr) stroke_->append(Orvo::Point(stroke_->back()));
    stroke_ = nullptr;
  }

  void endLayer() {
    if (layer_ != nullptr) bound(*layer_);
  }

  std::uint64_t tooFar() const { return tooFar_; }
  std::uint64_t tooLate() const { return tooLate_; }

 private:
  static std::int32_t tiltOf(float degrees) {
    constexpr double kMostTilt = 90;
    return static_cast<std::int32_t>(
        rounded(std::clamp(static_cast<double>(degrees), -kMostTilt, kMostTilt)));
  }

  // Layers and strokes are made when there is something to put into them, and in their place: a
  // copy would take as much memory again.
  Orvo::Layer& layer() {
    if (layer_ == nullptr) {
      document_.append(Orvo::Layer());
      layer_ = &document_.back();
      layer_->annotations() = std::move(annotations_);
    }
    return *layer_;
  }

  Orvo::Stroke& stroke(InkTree::Index brush) {
    if (stroke_ == nullptr) {
      layer().append(Orvo::Stroke());
      stroke_ = &layer().back();
      brushes_.push_back(brush);
    }
    return *stroke_;
  }

  Orvo::Document& document_;
  Annotations& annotations_;
  std::vector<InkTree::Index>& brushes_;
  Orvo::Layer* layer_ = nullptr;
  Orvo::Stroke* stroke_ = nullptr;
  std::uint64_t tooFar_ = 0;
  std::uint64_t tooLate_ = 0;
};

void Drawing::moveInto(Orvo::Document& document, std::vector<InkTree::Index>& brushes) {
  std::vector<Number> heads;
  for (Number number = 0; number < strokes_.size(); ++number) {
    if (!strokes_[number].isJoined) heads.push_back(number);
  }
  std::ranges::stable_sort(heads, {}, [this](Number number) { return strokes_[number].layer; });
  for (std::size_t i = 0; i < heads.size();) {
    const Number layer = strokes_[heads[i]].layer;
    Writer writer(document, layers_[layer], brushes);
    for (; i < heads.size() && strokes_[heads[i]].layer == layer; ++i) {
      const InkTree::Index brush = strokes_[heads[i]].points.brush;
      for (Number part = heads[i]; part != kNone; part = strokes_[part].next) {
        for (const Sample& sample : strokes_[part].points.samples)
          writer.write(sample, brush);
        strokes_[part].points.samples = {};
      }
      writer.endStroke();
    }
    writer.endLayer();
    remarks_.add(RemarkKind::pointsTooFar, writer.tooFar());
    remarks_.add(RemarkKind::timesTooLate, writer.tooLate());
  }
  bound(document);
}

}  // namespace translate
