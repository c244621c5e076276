// Visits the paths of a layer, and walks along one of them.
#pragma once

#include <optional>
#include <vector>

#include "art/document.h"

namespace render {

/// Calls `visit(path, style)` for every path, bottom to top, those inside groups included. A path
/// without a style has that of the innermost group around it that has one.
template <class Visit>
void forEachPath(const std::vector<art::Object>& objects, Visit&& visit,
                 std::optional<std::size_t> style = std::nullopt) {
  for (const art::Object& object : objects) {
    if (const auto* path = std::get_if<art::Path>(&object.value)) {
      visit(*path, path->style ? path->style : style);
    } else {
      const auto& group = std::get<art::Group>(object.value);
      forEachPath(group.art, visit, group.style ? group.style : style);
    }
  }
}

/// Walks along a path, calling `pen.move(point)`, `pen.line(point)`, `pen.curve(out, in, point)`
/// and for a closed path `pen.close()`. A piece whose control points lie on the anchors is a line,
/// except one that goes out to a control point and comes back. A single point is a line to itself,
/// so that round line ends show it.
template <class Pen>
void walk(const art::Path& path, Pen& pen) {
  const auto piece = [&pen](const art::Segment& from, const art::Segment& to) {
    const bool swapped = from.out == to.p && to.in == from.p;
    const bool retracted = from.out == from.p && to.in == to.p;
    if (swapped || retracted) {
      pen.line(to.p);
    } else {
      pen.curve(from.out, to.in, to.p);
    }
  };
  if (path.segments.empty()) return;
  pen.move(path.segments.front().p);
  if (path.segments.size() == 1) pen.line(path.segments.front().p);
  for (std::size_t i = 1; i < path.segments.size(); ++i)
    piece(path.segments[i - 1], path.segments[i]);
  if (path.closed) {
    piece(path.segments.back(), path.segments.front());
    pen.close();
  }
}

}  // namespace render
