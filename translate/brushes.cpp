#include "translate/brushes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "translate/annotations.h"
#include "translate/ink_names.h"
#include "translate/trace_format.h"
#include "translate/units.h"

namespace translate {
namespace {

using Index = InkTree::Index;
constexpr double kMost = std::numeric_limits<std::int32_t>::max();
constexpr double kInch = 25.4;

bool flagIn(std::string_view value) {
  const std::string lowered = lowerCase(value);
  return lowered == "true" || lowered == "1" || lowered == "t";
}

// What the points of the result hold, in their order.
void fill(Orvo::TraceFormat& format) {
  constexpr std::int32_t kMostPlace = 999'999;
  constexpr std::int32_t kMostPressure = 1023;
  constexpr std::int32_t kMostTilt = 90;
  for (const char* axis : {"X", "Y", "Z"})
    format.emplace_back(axis, "0.1mm", -kMostPlace, kMostPlace);
  format.emplace_back("F", "dev", 0, kMostPressure);
  for (const char* tilt : {"OTx", "OTy"})
    format.emplace_back(tilt, "deg", -kMostTilt, kMostTilt);
  format.emplace_back("T", "ms", 0, std::numeric_limits<std::int32_t>::max());
}

}  // namespace

void Brushes::declare() {
  declareDefault();
  for (Index node = 0; node < tree_.size(); ++node) {
    if (tree_.tag(node) != Tag::brush) continue;
    Orvo::Brush& brush = definitions_.brushes.emplace_back();
    brush.id = freeId(tree_.attribute(node, Attribute::id).value_or(""), "brush");
    made_[node] = &brush;
  }
  for (const auto& [node, brush] : made_)
    resolve(node);
  for (Index node = 0; node < tree_.size(); ++node) {
    if (tree_.tag(node) == Tag::context) declareContext(node);
  }
}

const Orvo::Brush* Brushes::of(Index brush) const {
  const auto found = made_.find(brush);
  return found == made_.end() ? nullptr : found->second;
}

// The definitions lead with it: a reader drops what follows a context that it cannot read.
void Brushes::declareDefault() {
  Orvo::TraceFormat& format = definitions_.traceFormats.emplace_back();
  format.id = "default-format";
  fill(format);
  Orvo::Brush& brush = definitions_.brushes.emplace_back();
  brush.id = "default-brush";
  Orvo::InkContext& context = definitions_.contexts.emplace_back();
  context.id = "default-context";
  context.traceFormat.value = &format;
  context.brush.value = &brush;
  ids_ = {format.id, brush.id, context.id};
}

void Brushes::declareContext(Index node) {
  const auto id = tree_.attribute(node, Attribute::id);
  if (!id || id->empty()) return;
  Orvo::InkContext context;
  context.id = freeId(*id, "context");
  context.traceFormat.value = &definitions_.traceFormats.front();
  const auto brush = made_.find(contexts_.of(node).brush);
  context.brush.value = brush == made_.end() ? &definitions_.brushes.front() : brush->second;
  definitions_.contexts.push_back(context);
}

// Reads a brush, after those that it refers to and overrides.
void Brushes::resolve(Index node) {
  std::vector<Index> chain;
  Index base = node;
  while (base != InkTree::kNone && resolved_.insert(base).second) {
    chain.push_back(base);
    base = contexts_.referred(base, Attribute::brushRef, Tag::brush);
  }
  std::ranges::reverse(chain);
  for (const Index link : chain) {
    Orvo::Brush& brush = *made_.at(link);
    if (base != InkTree::kNone) {
      const std::string id = brush.id;
      brush = *made_.at(base);
      brush.id = id;
    }
    read(link, brush);
    base = link;
  }
}

void Brushes::read(Index node, Orvo::Brush& brush) {
  const Orvo::Brush before = brush;
  brush.height.value = 0;
  tree_.eachChild(node, [&](Index child) {
    if (tree_.tag(child) == Tag::brushProperty) readProperty(child, brush);
  });
  if (brush.height.value != 0) return;
  // A brush that has only a width is round.
  const bool isWiderNow = brush.width.value != before.width.value;
  brush.height.value = isWiderNow ? brush.width.value : before.height.value;
}

void Brushes::readProperty(Index property, Orvo::Brush& brush) {
  const std::string_view written = tree_.attribute(property, Attribute::name).value_or("");
  const std::string name = lowerCase(written);
  const std::string_view value = tree_.attribute(property, Attribute::value).value_or("");
  if (name == "width") {
    readLength(property, brush.width);
  } else if (name == "height") {
    readLength(property, brush.height);
  } else if (name == "color") {
    brush.color.value = condensed(value);
  } else if (name == "transparency") {
    constexpr double kMostTransparent = 255;
    const auto number = numberIn(tree_, property, Attribute::value, remarks_).value_or(0);
    brush.transparency.value =
        static_cast<std::uint32_t>(std::lround(std::clamp(number, 0.0, kMostTransparent)));
  } else if (name == "tip") {
    brush.pentip.value = condensed(value);
  } else if (name == "fittocurve") {
    brush.fittocurve.value = flagIn(value);
  } else if (name == "ignorepressure") {
    // The format writes one flag under two names, and reads it into the other.
    brush.ignorePressure.value = flagIn(value);
    brush.antialiased.value = brush.ignorePressure.value;
  } else {
    remarks_.add(RemarkKind::brushProperties, 1, written);
  }
}

// In units of 0.1 mm, one at least.
void Brushes::readLength(Index property, Orvo::Property<std::uint32_t>& length) {
  const auto number = numberIn(tree_, property, Attribute::value, remarks_);
  if (!number) return;
  constexpr double kPixel = kInch / 96;
  constexpr double kTenths = 10;
  const auto unit = unitOf(tree_.attribute(property, Attribute::units).value_or(""));
  const double size = unit && unit->quantity == Quantity::length ? unit->size : kPixel;
  length.value =
      static_cast<std::uint32_t>(std::round(std::clamp(*number * size * kTenths, 1.0, kMost)));
}

std::string Brushes::freeId(std::string_view wanted, const char* otherwise) {
  const std::string base = wanted.empty() ? otherwise : condensed(wanted);
  std::string id = base;
  for (std::size_t number = ids_.size(); !ids_.insert(id).second; ++number)
    id = base + "-" + std::to_string(number);
  return id;
}

}  // namespace translate
