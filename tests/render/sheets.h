// Small drawings.
#pragma once

#include <utility>

#include "shapes.h"

namespace render_tests {

/// An empty page; its first style is the brush of 2 to 10 points.
inline art::Document sheet(float width, float height) {
  art::Document document;
  document.page = {0, 0, width, height};
  document.styles.push_back(twoToTen());
  return document;
}

/// Onto the uppermost layer when that has the name, otherwise onto a new one.
inline void draw(art::Document& document, const char* layer, art::Path path) {
  if (document.layers.empty() || document.layers.back().name != layer) {
    document.layers.emplace_back().name = layer;
  }
  path.style = 0;
  document.layers.back().art.push_back({std::move(path)});
}

/// A line that grows, a dot, and on a second layer a line with a corner.
inline art::Document twoLayers() {
  art::Document document = sheet(60, 40);
  draw(document, "Growing & dot",
       withPressure(straightPath({{10, 10}, {50, 10}}), {{0, 0}, {1, 0.5F}}));
  draw(document, "Growing & dot", straightPath({{10, 30}}));
  draw(document, "Corner", straightPath({{25, 20}, {45, 20}, {45, 35}}));
  return document;
}

}  // namespace render_tests
