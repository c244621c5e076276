#include "translate/layout.h"

#include <cmath>

#include "translate/ink_names.h"
#include "translate/units.h"

namespace translate {
namespace {

using Index = InkTree::Index;
constexpr Index kNone = InkTree::kNone;

// mm for each step, where a channel has so many steps in a unit; or where a step is so long.
std::optional<double> stepOf(double resolution, std::string_view units, Quantity quantity) {
  const std::optional<Unit> unit = unitOf(units);
  if (!unit || unit->quantity != quantity || resolution <= 0) return std::nullopt;
  const double step = unit->isInverse ? unit->size / resolution : unit->size * resolution;
  return std::isfinite(step) && step > 0 ? std::optional(step) : std::nullopt;
}

}  // namespace

const Layout& Layouts::of(const Surroundings& s) {
  const Key key(s.source, s.format, s.canvas, s.transform);
  const auto known = known_.find(key);
  if (known != known_.end()) return known->second;
  return known_.emplace(key, make(s)).first->second;
}

Layout Layouts::make(const Surroundings& surroundings) {
  resolutions_ = resolutionsOf(surroundings.source);
  Layout layout;
  layout.format = readFormat(surroundings);
  assignRoles(layout);
  layout.transform = transformOf(tree_, surroundings.transform, layout.format, contexts_);
  placeAxes(surroundings, layout);
  readForce(layout);
  readRate(surroundings.source, layout);
  return layout;
}

void Layouts::assignRoles(Layout& layout) {
  // An angle of a pair tells nothing alone, and one pair is enough.
  const auto has = [&layout](Role role) { return channelOf(layout.format, role) != nullptr; };
  const bool hasTilts = has(Role::tiltX) || has(Role::tiltY);
  const bool isPolar = !hasTilts && has(Role::azimuth) && has(Role::elevation);
  layout.columns.fill(Layout::kNoColumn);
  for (std::size_t i = 0; i < layout.format.size(); ++i) {
    Channel& channel = layout.format[i];
    const bool isAngle = channel.role == Role::azimuth || channel.role == Role::elevation;
    if (isAngle && !isPolar) channel.role = Role::other;
    layout.hasOthers = layout.hasOthers || channel.role == Role::other;
    if (channel.role == Role::other) continue;
    const auto role = static_cast<std::size_t>(channel.role);
    layout.columns[role] = i;
    layout.angleScales[role] = scaleOf(channel, Quantity::angle).value_or(1);
    if (channel.role == Role::time) layout.timeScale = scaleOf(channel, Quantity::time).value_or(1);
  }
}

TraceFormat Layouts::readFormat(const Surroundings& surroundings) {
  if (surroundings.format == kNone) return defaultFormat();
  TraceFormat own;
  if (surroundings.source != kNone) {
    const Index format = tree_.child(surroundings.source, Tag::traceFormat);
    if (format != kNone) own = formatOf(tree_, format, {}, remarks_);
    if (format == surroundings.format) return own;
  }
  return formatOf(tree_, surroundings.format, own, remarks_);
}

std::map<std::string, Layouts::Resolution> Layouts::resolutionsOf(Index source) {
  std::map<std::string, Resolution> found;
  if (source == kNone) return found;
  tree_.eachChild(source, [&](Index child) {
    if (tree_.tag(child) != Tag::channelProperty) return;
    if (lowerCase(tree_.attribute(child, Attribute::name).value_or("")) != "resolution") return;
    const std::string channel = lowerCase(tree_.attribute(child, Attribute::channel).value_or(""));
    found.try_emplace(
        channel, Resolution{numberIn(tree_, child, Attribute::value, remarks_),
                            std::string(tree_.attribute(child, Attribute::units).value_or(""))});
  });
  return found;
}

std::optional<double> Layouts::unitScale(const Channel& channel, Quantity quantity) {
  const std::optional<Unit> unit = unitOf(channel.units);
  if (unit && unit->quantity == quantity && !unit->isInverse) return unit->size;
  if (!namesNoUnit(channel.units)) remarks_.add(RemarkKind::unknownUnit, 1, channel.units);
  return std::nullopt;
}

// The values of an integer channel are steps, whatever unit it names; a decimal channel is in its
// unit.
std::optional<double> Layouts::scaleOf(const Channel& channel, Quantity quantity) {
  const bool isPlace = channel.role == Role::x || channel.role == Role::y;
  const bool isClock = channel.role == Role::time;
  const bool isForce = channel.role == Role::force || channel.role == Role::tip;
  const Quantity own = isPlace ? Quantity::length : isClock ? Quantity::time : Quantity::angle;
  if (isForce || channel.role == Role::other || own != quantity) return std::nullopt;
  const auto resolution = resolutions_.find(lowerCase(channel.name));
  std::optional<double> step;
  if (resolution != resolutions_.end() && resolution->second.value) {
    const std::string& units = resolution->second.units;
    step =
        stepOf(*resolution->second.value, units.empty() ? "1/" + channel.units : units, quantity);
  }
  if (channel.type == ChannelType::integer && step) return step;
  const std::optional<double> unit = unitScale(channel, quantity);
  return unit ? unit : step;
}

std::optional<double> Layouts::areaScale(const Channel& channel, Index source) {
  const Index area = source == kNone ? kNone : tree_.child(source, Tag::activeArea);
  if (area == kNone || !channel.least || !channel.greatest) return std::nullopt;
  const Attribute side = channel.role == Role::x ? Attribute::width : Attribute::height;
  const std::optional<double> length = numberIn(tree_, area, side, remarks_);
  const auto unit = unitOf(tree_.attribute(area, Attribute::units).value_or(""));
  if (!length || *length <= 0 || !unit || unit->quantity != Quantity::length || unit->isInverse) {
    return std::nullopt;
  }
  const double scale = *length * unit->size / (*channel.greatest - *channel.least);
  return std::isfinite(scale) && scale > 0 ? std::optional(scale) : std::nullopt;
}

Axis Layouts::axisOf(const TraceFormat& format, Role role, Index source) {
  Axis axis;
  const Channel* const channel = channelOf(format, role);
  if (channel == nullptr) return axis;
  if (channel->pointsBack) axis.sign = -1;
  axis.scale = scaleOf(*channel, Quantity::length);
  if (!axis.scale) axis.scale = areaScale(*channel, source);
  return axis;
}

void Layouts::placeAxes(const Surroundings& surroundings, Layout& layout) {
  layout.x = axisOf(layout.format, Role::x, surroundings.source);
  layout.y = axisOf(layout.format, Role::y, surroundings.source);
  useCanvas(surroundings, layout);
  // A unit that only one axis has is meant for both.
  if (!layout.x.scale) layout.x.scale = layout.y.scale;
  if (!layout.y.scale) layout.y.scale = layout.x.scale;
}

// Transformed values are in the units and directions of the canvas, as far as it names any.
void Layouts::useCanvas(const Surroundings& surroundings, Layout& layout) {
  if (surroundings.canvas == kNone) return;
  Index format =
      contexts_.referred(surroundings.canvas, Attribute::traceFormatRef, Tag::traceFormat);
  if (format == kNone) format = tree_.child(surroundings.canvas, Tag::traceFormat);
  if (format == kNone) return;
  resolutions_.clear();
  const TraceFormat canvas = formatOf(tree_, format, {}, remarks_);
  const auto use = [&](Role role, bool isTransformed, Axis& axis) {
    const Axis named = axisOf(canvas, role, kNone);
    if (isTransformed) axis.sign = named.sign;
    if (named.scale && (isTransformed || !axis.scale)) axis.scale = named.scale;
  };
  use(Role::x, layout.transform.x.has_value(), layout.x);
  use(Role::y, layout.transform.y.has_value(), layout.y);
}

void Layouts::readForce(Layout& layout) const {
  const Channel* const force = channelOf(layout.format, Role::force);
  if (force == nullptr) return;
  constexpr double kPercent = 100;
  layout.leastForce = force->least.value_or(0);
  layout.greatestForce = force->greatest;
  if (!layout.greatestForce && force->units == "%") layout.greatestForce = kPercent;
  if (layout.greatestForce && *layout.greatestForce <= layout.leastForce) {
    layout.greatestForce.reset();
  }
}

void Layouts::readRate(Index source, Layout& layout) {
  const Index rate = source == kNone ? kNone : tree_.child(source, Tag::sampleRate);
  if (rate == kNone) return;
  if (lowerCase(tree_.attribute(rate, Attribute::uniform).value_or("true")) == "false") return;
  const std::optional<double> value = numberIn(tree_, rate, Attribute::value, remarks_);
  constexpr double kMillisecondsOfSecond = 1000;
  constexpr double kLeastRate = 0.001;
  if (value && *value >= kLeastRate) layout.period = kMillisecondsOfSecond / *value;
}

}  // namespace translate
