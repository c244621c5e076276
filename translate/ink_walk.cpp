#include "translate/ink_walk.h"

#include <algorithm>
#include <utility>

#include "text/numbers.h"
#include "translate/annotations.h"
#include "translate/ink_names.h"

namespace translate {
namespace {

constexpr InkTree::Index kNone = InkTree::kNone;
constexpr int kDeepestView = 100;

// Views of views can show the same again and again. A document may show everything it has this
// often.
constexpr std::uint64_t kMostShown = 20;

}  // namespace

InkWalk::InkWalk(const InkTree& tree, Contexts& contexts, Drawing& drawing, Remarks& remarks)
    : tree_(tree),
      contexts_(contexts),
      drawing_(drawing),
      remarks_(remarks),
      reader_(tree, contexts, remarks),
      isDrawn_(tree.size()) {}

void InkWalk::run() {
  walk(0, {}, Drawing::kNone);
  joinContinuations();
  reader_.report();
  for (const auto& [trace, first, last] : shownParts_)
    isDrawn_[trace] = true;
  std::uint64_t hidden = 0;
  for (Index node = 0; node < tree_.size(); ++node) {
    if (tree_.tag(node) == Tag::trace && !isDrawn_[node]) ++hidden;
  }
  remarks_.add(RemarkKind::hiddenTraces, hidden);
}

// `layer` is kNone at the top.
void InkWalk::walk(Index parent, Surroundings around, Drawing::Number layer) {
  const bool isTop = layer == Drawing::kNone;
  tree_.eachChild(parent, [&](Index child) {
    switch (tree_.tag(child)) {
      case Tag::definitions:
        return;
      case Tag::trace:
        return drawTrace(child, contexts_.within(child, around), isTop ? looseLayer() : layer, {});
      case Tag::traceGroup:
        return walk(child, contexts_.within(child, around),
                    isTop ? layerOfGroup(child, child) : layer);
      case Tag::traceView:
        return show(child, around, isTop ? layerOfView(child) : layer, 0);
      default:
        around = contexts_.after(child, around);
    }
  });
}

void InkWalk::drawTrace(Index trace, const Surroundings& surroundings, Drawing::Number layer,
                        PointRange range) {
  isDrawn_[trace] = true;
  const std::string type = lowerCase(tree_.attribute(trace, Attribute::type).value_or(""));
  if (type == "penup") return remarks_.add(RemarkKind::penUpTraces);
  if (type == "indeterminate") remarks_.add(RemarkKind::indeterminateTraces);
  TracePoints points = reader_.read(trace, surroundings, range);
  if (points.samples.empty()) remarks_.add(RemarkKind::emptyTraces);
  const bool isContinued = tree_.attribute(trace, Attribute::continuation).has_value();
  if (points.samples.empty() && !isContinued) return;
  const Drawing::Number stroke = drawing_.addStroke(layer, std::move(points));
  if (isContinued) noteContinuation(trace, stroke);
}

void InkWalk::noteContinuation(Index trace, Drawing::Number stroke) {
  const std::string kind = lowerCase(*tree_.attribute(trace, Attribute::continuation));
  strokeOf_.try_emplace(trace, stroke);
  if (kind == "middle" || kind == "end") {
    if (tree_.attribute(trace, Attribute::priorRef)) {
      continuations_.emplace_back(stroke, trace);
    } else if (openStroke_ == Drawing::kNone || !drawing_.join(openStroke_, stroke)) {
      remarks_.add(RemarkKind::looseContinuations);
    }
  }
  openStroke_ = kind == "end" ? Drawing::kNone : stroke;
}

// At the end, since a trace may go on with one that stands behind it.
void InkWalk::joinContinuations() {
  for (const auto& [stroke, trace] : continuations_) {
    const Index prior = contexts_.referred(trace, Attribute::priorRef, Tag::trace);
    const auto before = strokeOf_.find(prior);
    if (before == strokeOf_.end() || !drawing_.join(before->second, stroke)) {
      remarks_.add(RemarkKind::looseContinuations);
    }
  }
}

void InkWalk::show(Index view, const Surroundings& around, Drawing::Number layer, int depth) {
  if (depth > kDeepestView || ++steps_ > kMostShown * tree_.size()) return;
  const Surroundings here = contexts_.within(view, around);
  if (const auto reference = tree_.attribute(view, Attribute::traceDataRef)) {
    const Index target = tree_.find(*reference);
    if (target == kNone) {
      remarks_.add(RemarkKind::missingReference, 1, *reference);
    } else {
      const std::vector<std::size_t> from = pathIn(view, Attribute::from);
      const std::vector<std::size_t> to = pathIn(view, Attribute::to);
      showTarget(target, withinGroups(target, here), layer, {from, to}, depth);
    }
  }
  tree_.eachChild(view, [&](Index child) {
    if (tree_.tag(child) == Tag::traceView) show(child, here, layer, depth + 1);
  });
}

// What is drawn anyway is not drawn again.
void InkWalk::showTarget(Index target, const Surroundings& around, Drawing::Number layer, Part part,
                         int depth) {
  if (depth > kDeepestView || ++steps_ > kMostShown * tree_.size() || !isDefinition(target)) return;
  switch (tree_.tag(target)) {
    case Tag::trace: {
      if (isDrawn_[target]) return;
      PointRange range;
      if (!part.from.empty()) range.first = part.from[0] - 1;
      if (!part.to.empty()) range.last = part.to[0] - 1;
      const bool isWhole = part.from.empty() && part.to.empty();
      if (!isWhole && !shownParts_.emplace(target, range.first, range.last).second) return;
      drawTrace(target, contexts_.within(target, around), layer, range);
      isDrawn_[target] = isWhole;
      return;
    }
    case Tag::traceGroup:
      return showChildren(target, contexts_.within(target, around), layer, part, depth);
    case Tag::traceView:
      return show(target, around, layer, depth + 1);
    default:
      return;
  }
}

void InkWalk::showChildren(Index group, const Surroundings& around, Drawing::Number layer,
                           Part part, int depth) {
  std::size_t number = 0;
  tree_.eachChild(group, [&](Index child) {
    const Tag tag = tree_.tag(child);
    if (tag != Tag::trace && tag != Tag::traceGroup && tag != Tag::traceView) return;
    ++number;
    Part inner;
    if (!part.from.empty()) {
      if (number < part.from[0]) return;
      if (number == part.from[0]) inner.from = part.from.subspan(1);
    }
    if (!part.to.empty()) {
      if (number > part.to[0]) return;
      if (number == part.to[0]) inner.to = part.to.subspan(1);
    }
    showTarget(child, around, layer, inner, depth + 1);
  });
}

Drawing::Number InkWalk::layerOfView(Index view) {
  const auto reference = tree_.attribute(view, Attribute::traceDataRef);
  const Index target = reference ? tree_.find(*reference) : kNone;
  const bool showsGroup = target != kNone && tree_.tag(target) == Tag::traceGroup;
  if (showsGroup) return layerOfGroup(view, target);
  return tree_.child(view, Tag::traceView) == kNone ? looseLayer() : layerOfGroup(view, view);
}

// The numbers in "2:3"; none, and a remark, for anything else.
std::vector<std::size_t> InkWalk::pathIn(Index view, Attribute attribute) {
  std::vector<std::size_t> path;
  const auto text = tree_.attribute(view, attribute);
  if (!text) return path;
  for (std::string_view rest = *text; !rest.empty();) {
    const std::size_t colon = std::min(rest.find(':'), rest.size());
    const auto number = text::wholeNumber<std::size_t>(trimmed(rest.substr(0, colon)));
    if (!number || *number == 0) {
      remarks_.add(RemarkKind::attributesUnreadable, 1,
                   std::string(nameOf(attribute)) + "=\"" + std::string(*text) + "\"");
      return {};
    }
    path.push_back(*number);
    rest.remove_prefix(std::min(colon + 1, rest.size()));
  }
  return path;
}

bool InkWalk::isDefinition(Index node) const {
  while (node != kNone && tree_.tag(node) != Tag::definitions)
    node = tree_.parent(node);
  return node != kNone;
}

// What the groups around a definition hand down to it.
Surroundings InkWalk::withinGroups(Index node, const Surroundings& around) {
  std::vector<Index> groups;
  for (Index group = tree_.parent(node); group != kNone && tree_.tag(group) == Tag::traceGroup;
       group = tree_.parent(group))
    groups.push_back(group);
  Surroundings result = around;
  for (auto group = groups.rbegin(); group != groups.rend(); ++group)
    result = contexts_.within(*group, result);
  return result;
}

Drawing::Number InkWalk::layerOfGroup(Index group, Index named) {
  Drawing::Annotations annotations = annotationsIn(tree_, group);
  keptAnnotations_ += annotations.size();
  std::string name = nameOfGroup(tree_, group, annotations);
  if (name.empty() && named != group) name = nameOfGroup(tree_, named, annotationsIn(tree_, named));
  if (!name.empty()) annotations.try_emplace("name", name);
  return drawing_.addLayer(std::move(annotations));
}

Drawing::Number InkWalk::looseLayer() {
  if (loose_ == Drawing::kNone) loose_ = drawing_.addLayer({});
  return loose_;
}

}  // namespace translate
