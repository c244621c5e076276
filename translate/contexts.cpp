#include "translate/contexts.h"

#include <algorithm>
#include <set>
#include <vector>

#include "translate/ink_names.h"

namespace translate {
namespace {

constexpr InkTree::Index kNone = InkTree::kNone;

void put(InkTree::Index named, InkTree::Index& part) {
  if (named != kNone) part = named;
}

void overlay(const Surroundings& above, Surroundings& below) {
  put(above.source, below.source);
  put(above.format, below.format);
  put(above.brush, below.brush);
  put(above.timestamp, below.timestamp);
  put(above.canvas, below.canvas);
  put(above.transform, below.transform);
}

}  // namespace

Contexts::Index Contexts::referred(Index node, Attribute attribute, Tag tag) {
  const auto reference = tree_.attribute(node, attribute);
  if (!reference || reference->empty()) return kNone;
  const Index found = tree_.find(*reference);
  if (found != kNone && tree_.tag(found) == tag) return found;
  // The defaults have names that stand in no document.
  const std::string lowered = lowerCase(*reference);
  if (lowered != "#defaultcontext" && lowered != "#defaultcanvas" && lowered != "#defaultbrush") {
    remarks_.add(RemarkKind::missingReference, 1, *reference);
  }
  return kNone;
}

const Surroundings& Contexts::of(Index context) {
  // From the context to the first one that is known, or that has no base.
  std::vector<Index> chain;
  std::set<Index> seen;
  Index base = context;
  while (base != kNone && !known_.contains(base) && seen.insert(base).second) {
    chain.push_back(base);
    base = referred(base, Attribute::contextRef, Tag::context);
  }
  // What refers to itself has no base.
  const auto found = known_.find(base);
  Surroundings result = found == known_.end() ? Surroundings() : found->second;
  std::ranges::reverse(chain);
  for (const Index link : chain) {
    takeOwn(link, result);
    known_[link] = result;
  }
  return known_.at(context);
}

// A format is the source's own or chosen from it, so the source comes first.
void Contexts::takeOwn(Index context, Surroundings& result) {
  takeReferences(context, result);
  tree_.eachChild(context, [&](Index child) {
    if (tree_.tag(child) == Tag::inkSource) take(child, result);
  });
  put(referred(context, Attribute::traceFormatRef, Tag::traceFormat), result.format);
  tree_.eachChild(context, [&](Index child) {
    if (tree_.tag(child) != Tag::inkSource) take(child, result);
  });
}

void Contexts::takeReferences(Index context, Surroundings& result) {
  const Index source = referred(context, Attribute::inkSourceRef, Tag::inkSource);
  if (source != kNone) takeSource(source, result);
  put(referred(context, Attribute::brushRef, Tag::brush), result.brush);
  put(referred(context, Attribute::timestampRef, Tag::timestamp), result.timestamp);
  put(referred(context, Attribute::canvasRef, Tag::canvas), result.canvas);
  put(referred(context, Attribute::canvasTransformRef, Tag::canvasTransform), result.transform);
}

void Contexts::takeSource(Index source, Surroundings& result) {
  result.source = source;
  put(referred(source, Attribute::traceFormatRef, Tag::traceFormat), result.format);
  put(tree_.child(source, Tag::traceFormat), result.format);
}

void Contexts::take(Index part, Surroundings& result) {
  switch (tree_.tag(part)) {
    case Tag::inkSource:
      return takeSource(part, result);
    case Tag::traceFormat:
      result.format = part;
      return;
    case Tag::brush:
      result.brush = part;
      return;
    case Tag::timestamp:
      result.timestamp = part;
      return;
    case Tag::canvas:
      result.canvas = part;
      return;
    case Tag::canvasTransform:
      result.transform = part;
      return;
    default:
      return;
  }
}

Surroundings Contexts::after(Index element, const Surroundings& before) {
  Surroundings result = before;
  if (tree_.tag(element) == Tag::context) {
    overlay(of(element), result);
  } else {
    take(element, result);
  }
  return result;
}

Surroundings Contexts::within(Index element, const Surroundings& around) {
  Surroundings result = around;
  const Index context = referred(element, Attribute::contextRef, Tag::context);
  if (context != kNone) {
    const Surroundings& named = of(context);
    // A format that is declared without a source does not belong to the source outside.
    if (named.format != kNone && named.source == kNone) result.source = kNone;
    overlay(named, result);
  }
  put(referred(element, Attribute::brushRef, Tag::brush), result.brush);
  return result;
}

}  // namespace translate
