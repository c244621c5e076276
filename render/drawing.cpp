#include "render/drawing.h"

#include <algorithm>

#include "render/paths.h"
#include "render/text.h"

namespace render {

namespace {

constexpr double kHairline = 0.75;  // points

Frame frameOf(const Extent& extent, const Grid& grid) {
  const Spot low = grid.spot(extent.left, extent.bottom);
  const Spot high = grid.spot(extent.right, extent.top);
  return {low.h, std::min(low.v, high.v - grid.stepsPerPoint),
          std::max(high.h, low.h + grid.stepsPerPoint), high.v};
}

const art::Style* styleOf(const art::Document& document, std::optional<std::size_t> index) {
  return index && *index < document.styles.size() ? &document.styles[*index] : nullptr;
}

// A nib for each style.
class Nibs {
 public:
  explicit Nibs(const art::Document& document) : document_(document), plain_(nullptr) {
    for (const art::Style& style : document.styles)
      nibs_.emplace_back(&style);
  }
  const Nib& of(std::optional<std::size_t> index) const {
    return styleOf(document_, index) == nullptr ? plain_ : nibs_[*index];
  }

 private:
  const art::Document& document_;
  Nib plain_;
  std::vector<Nib> nibs_;
};

class DrawingBuilder {
 public:
  DrawingBuilder(const art::Document& document, const Options& options)
      : document_(document),
        options_(options),
        nibs_(document),
        grid_(gridFor(document)),
        outliner_(grid_) {
    extent_.include({document.page.left, document.page.bottom}, 0, 0);
    extent_.include({document.page.right, document.page.top}, 0, 0);
  }

  Drawing draw() {
    Drawing drawing;
    drawing.grid = grid_;
    drawing.centreLines = options_.centreLines;
    for (const art::Layer& layer : document_.layers) {
      DrawnLayer& drawn = drawing.layers.emplace_back();
      drawn.name = plainText(layer.name);
      drawn.visible = layer.visible;
      forEachPath(layer.art, [&](const art::Path& path, std::optional<std::size_t> style) {
        if (!path.segments.empty()) drawn.strokes.push_back(stroke(path, style));
      });
    }
    drawing.frame = frameOf(extent_, grid_);
    return drawing;
  }

 private:
  // The fine grid where no stroke gets wider than a hairline.
  Grid gridFor(const art::Document& document) const {
    bool any = false;
    bool thin = !options_.centreLines;
    for (const art::Layer& layer : document.layers) {
      forEachPath(layer.art, [&](const art::Path& path, std::optional<std::size_t> style) {
        any = true;
        thin = thin && widest(path, nibs_.of(style)) < kHairline;
      });
    }
    return {any && thin ? 1000 : 100};
  }

  double widest(const art::Path& path, const Nib& nib) const {
    double pressure = options_.pressure.value_or(0.5);
    if (hasPressure(path) || (!options_.pressure && !path.pressure.empty())) {
      pressure = 0;
      for (const art::TabletSample& sample : path.pressure)
        pressure = std::max(pressure, std::min(double{sample.value}, 1.0));
    }
    return 2 * std::max(nib.at(0).radius, nib.at(pressure).radius);
  }

  Stroke stroke(const art::Path& path, std::optional<std::size_t> index) {
    const art::Style* style = styleOf(document_, index);
    Stroke stroke{&path, {}, style == nullptr ? art::Color{} : style->strokeColor, kLineWidth};
    if (options_.centreLines) {
      flatten(path, line_);
      for (const Place& place : line_)
        extent_.include(place, kLineWidth / 2, kLineWidth / 2);
      return stroke;
    }
    stroke.width = widest(path, nibs_.of(index));
    stroke.outline = outliner_.outline(path, nibs_.of(index), options_.pressure);
    extent_.include(stroke.outline.extent);
    return stroke;
  }

  const art::Document& document_;
  const Options& options_;
  Nibs nibs_;
  Extent extent_;
  Grid grid_;
  Outliner outliner_;
  std::vector<Place> line_;
};

}  // namespace

Drawing drawingOf(const art::Document& document, const Options& options) {
  return DrawingBuilder(document, options).draw();
}

}  // namespace render
