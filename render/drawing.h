// A document with its outlines, from which every picture format is written.
#pragma once

#include <string>
#include <vector>

#include "art/document.h"
#include "render/options.h"
#include "render/outline.h"

namespace render {

/// What a picture shows, in steps of the drawing's grid, v upward.
struct Frame {
  int left = 0;
  int bottom = 0;
  int right = 0;
  int top = 0;

  int width() const { return right - left; }
  int height() const { return top - bottom; }
  friend bool operator==(const Frame&, const Frame&) = default;
};

struct Stroke {
  const art::Path* path = nullptr;
  Outline outline;  ///< empty where only the centre line is drawn
  art::Color color;
  double width = 0;  ///< of the line where it is widest, in points
};

struct DrawnLayer {
  std::string name;  ///< UTF-8 without control characters
  bool visible = true;
  std::vector<Stroke> strokes;  ///< bottom to top
};

struct Drawing {
  Grid grid;
  Frame frame;
  bool centreLines = false;
  std::vector<DrawnLayer> layers;  ///< bottom to top
};

/// How wide centre lines are drawn, in points.
inline constexpr double kLineWidth = 1.0;

/// The frame is the page, grown where anything that is drawn reaches beyond it, at least one point
/// wide and high. The document must outlive the drawing.
Drawing drawingOf(const art::Document& document, const Options& options);

}  // namespace render
