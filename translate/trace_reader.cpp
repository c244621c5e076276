#include "translate/trace_reader.h"

#include <algorithm>
#include <cmath>

#include "translate/orientation.h"

namespace translate {
namespace {

using Index = InkTree::Index;
constexpr Index kNone = InkTree::kNone;

// What a point does not say is as at the point before, or at the first one that says it.
template <class Value>
void carryOver(std::vector<Sample>& samples, Value Sample::*member) {
  const auto isKnown = [member](const Sample& s) { return !std::isnan(s.*member); };
  const auto first = std::ranges::find_if(samples, isKnown);
  if (first == samples.end()) return;
  Value last = (*first).*member;
  for (Sample& sample : samples) {
    if (isKnown(sample)) {
      last = sample.*member;
    } else {
      sample.*member = last;
    }
  }
}

// Only a trace that says where the tip was down says where it was up.
void useTip(std::vector<Sample>& samples) {
  if (std::ranges::all_of(samples, &Sample::isPenUp)) {
    for (Sample& sample : samples)
      sample.isPenUp = false;
  }
}

// Programs write zeros where the device measures no angles: that is no pen that lies flat.
void useAngles(std::vector<Sample>& samples) {
  const bool areMeasured =
      std::ranges::any_of(samples, [](const Sample& s) { return s.tiltX != 0 || s.tiltY != 0; });
  for (Sample& sample : samples) {
    const Tilt tilt = areMeasured ? tiltOf(sample.tiltX, sample.tiltY) : Tilt();
    sample.tiltX = static_cast<float>(tilt.x);
    sample.tiltY = static_cast<float>(tilt.y);
  }
}

void dropUnknown(float& angle) {
  if (std::isnan(angle)) angle = 0;
}

void mirror(const Layout& layout, std::vector<Sample>& samples) {
  const auto pointsBack = [&layout](Role role) {
    const Channel* const channel = channelOf(layout.format, role);
    return channel != nullptr && channel->pointsBack;
  };
  const bool isXMirrored = pointsBack(Role::x) != pointsBack(Role::tiltX);
  const bool isYMirrored = pointsBack(Role::y) != pointsBack(Role::tiltY);
  for (Sample& sample : samples) {
    if (isXMirrored) sample.tiltX = -sample.tiltX;
    if (isYMirrored) sample.tiltY = -sample.tiltY;
  }
}

void finishTilts(const Layout& layout, std::vector<Sample>& samples) {
  carryOver(samples, &Sample::tiltX);
  carryOver(samples, &Sample::tiltY);
  for (Sample& sample : samples) {
    dropUnknown(sample.tiltX);
    dropUnknown(sample.tiltY);
  }
  if (layout.has(Role::azimuth)) useAngles(samples);
  mirror(layout, samples);
}

}  // namespace

TraceReader::TraceReader(const InkTree& tree, Contexts& contexts, Remarks& remarks)
    : tree_(tree),
      remarks_(remarks),
      layouts_(tree, contexts, remarks),
      clock_(tree, contexts, remarks) {
  findOnlyFormat();
}

TracePoints TraceReader::read(Index trace, const Surroundings& around, PointRange range) {
  const std::string_view text = tree_.text(trace);
  const Surroundings surroundings = around.format == kNone ? withOnlyFormat(text, around) : around;
  const Layout& layout = layouts_.of(surroundings);
  text_.scan(text, regularCount(layout.format), layout.format.size());
  const Timing timing = timingOf(trace, layout, surroundings);

  TracePoints points;
  points.brush = surroundings.brush;
  points.leastForce = layout.leastForce;
  points.greatestForce = layout.greatestForce.value_or(kNothing);
  points.period = timing.step;
  points.hasUnit = layout.x.scale.has_value();
  points.hasClock = timing.hasClock;
  points.hasStart = timing.hasStart;
  beginChannels(layout);
  points.samples.reserve(text_.pointCount());
  for (std::size_t i = 0; i < text_.pointCount(); ++i) {
    decode(text_.point(i), layout);
    if (i < range.first || i > range.last) continue;
    Sample sample;
    if (!place(layout, sample)) {
      ++withoutPlace_;
      continue;
    }
    sample.force = value(layout, Role::force);
    sample.isPenUp = value(layout, Role::tip) == 0;
    orient(layout, sample);
    sample.time = std::isnan(timing.base)
                      ? timing.start + static_cast<double>(i) * timing.step
                      : timing.base + value(layout, Role::time) * layout.timeScale;
    points.samples.push_back(sample);
  }
  if (!std::isnan(timing.base)) {
    carryOver(points.samples, &Sample::time);
    for (Sample& sample : points.samples) {
      if (std::isnan(sample.time)) sample.time = timing.start;
    }
  }
  carryOver(points.samples, &Sample::force);
  finishTilts(layout, points.samples);
  useTip(points.samples);
  for (std::size_t i = 0; i < leftOutHere_.size(); ++i) {
    if (leftOutHere_[i] > 0) leftOut_[layout.format[i].name] += leftOutHere_[i];
  }
  if (!layout.transform.otherType.empty()) {
    remarks_.add(RemarkKind::transformNotApplied, 1, layout.transform.otherType);
  }
  return points;
}

void TraceReader::report() {
  remarks_.add(RemarkKind::pointsWithoutPlace, withoutPlace_);
  remarks_.add(RemarkKind::valuesUnreadable, unreadable_);
  remarks_.add(RemarkKind::valuesTooMany, tooMany_);
  for (const auto& [name, count] : leftOut_)
    remarks_.add(RemarkKind::channelLeftOut, count, name);
}

void TraceReader::findOnlyFormat() {
  for (Index node = 0; node < tree_.size(); ++node) {
    const Index parent = tree_.parent(node);
    if (tree_.tag(node) != Tag::traceFormat || tree_.tag(parent) == Tag::canvas) continue;
    if (onlyFormat_.format != kNone) {
      onlyFormat_ = {};
      return;
    }
    onlyFormat_.format = node;
    if (tree_.tag(parent) == Tag::inkSource) onlyFormat_.source = parent;
  }
}

// A trace that nothing declares, with more values than X and Y, can only mean the one format that
// the document has.
Surroundings TraceReader::withOnlyFormat(std::string_view text, const Surroundings& around) {
  Surroundings result = around;
  if (onlyFormat_.format == kNone) return result;
  constexpr std::size_t kPair = 2;
  text_.scan(text, kPair, kPair);
  if (text_.pointCount() == 0 || text_.point(0).size() == kPair) return result;
  result.format = onlyFormat_.format;
  if (result.source == kNone) result.source = onlyFormat_.source;
  return result;
}

void TraceReader::beginChannels(const Layout& layout) {
  channels_.clear();
  for (const Channel& channel : layout.format)
    channels_.emplace_back(channel.initial);
  values_.resize(layout.format.size());
  leftOutHere_.assign(layout.format.size(), 0);
}

void TraceReader::decode(std::span<const Token> tokens, const Layout& layout) {
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (i < tokens.size()) {
      if (tokens[i].kind == Token::Kind::unreadable) ++unreadable_;
      values_[i] = channels_[i].next(tokens[i]);
    } else {
      values_[i] = layout.format[i].isIntermittent ? channels_[i].unchanged() : kNothing;
    }
  }
  if (tokens.size() > values_.size()) ++tooMany_;
  if (layout.hasOthers) countLeftOut(tokens, layout);
}

void TraceReader::countLeftOut(std::span<const Token> tokens, const Layout& layout) {
  const std::size_t count = std::min(tokens.size(), values_.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (layout.format[i].role == Role::other && !std::isnan(values_[i])) ++leftOutHere_[i];
  }
}

double TraceReader::value(const Layout& layout, Role role) const {
  return layout.has(role) ? values_[layout.column(role)] : kNothing;
}

bool TraceReader::place(const Layout& layout, Sample& sample) const {
  const auto along = [this, &layout](Role role, const Axis& axis,
                                     const std::optional<LinearSum>& transform) {
    const double given = transform ? transform->of(values_) : value(layout, role);
    return given * axis.sign * axis.scale.value_or(1);
  };
  sample.x = along(Role::x, layout.x, layout.transform.x);
  sample.y = along(Role::y, layout.y, layout.transform.y);
  return std::isfinite(sample.x) && std::isfinite(sample.y);
}

// Of azimuth and elevation the tilts are made when all of the trace is known.
void TraceReader::orient(const Layout& layout, Sample& sample) const {
  const auto angle = [this, &layout](Role role) {
    const double degrees = value(layout, role) * layout.angleScales[static_cast<std::size_t>(role)];
    return static_cast<float>(degrees);
  };
  const bool isPolar = layout.has(Role::azimuth);
  sample.tiltX = angle(isPolar ? Role::azimuth : Role::tiltX);
  sample.tiltY = angle(isPolar ? Role::elevation : Role::tiltY);
}

TraceReader::Timing TraceReader::timingOf(Index trace, const Layout& layout,
                                          const Surroundings& surroundings) {
  Timing timing;
  const std::optional<double> moment = clock_.momentOf(surroundings.timestamp);
  const auto offset = numberIn(tree_, trace, Attribute::timeOffset, remarks_);
  timing.start = moment.value_or(0) + offset.value_or(0);
  timing.hasClock = moment.has_value();
  timing.hasStart = offset.has_value();
  if (const Channel* const channel = channelOf(layout.format, Role::time)) {
    timing.base = timing.start;
    timing.hasStart = true;
    if (channel->respectTo.empty()) return timing;
    const std::optional<double> zero = clock_.momentOf(std::string_view(channel->respectTo));
    timing.hasClock = zero.has_value();
    timing.base = zero.value_or(0);
    return timing;
  }
  const auto duration = numberIn(tree_, trace, Attribute::duration, remarks_);
  if (layout.period) {
    timing.step = *layout.period;
  } else if (duration && *duration > 0 && text_.pointCount() > 1) {
    timing.step = *duration / static_cast<double>(text_.pointCount() - 1);
  }
  return timing;
}

}  // namespace translate
