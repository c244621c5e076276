#include <algorithm>
#include <array>
#include <cairo.h>
#include <cmath>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "render/drawing.h"
#include "render/pages.h"
#include "render/paths.h"
#include "render/png_file.h"
#include "render/text.h"

namespace render {

namespace {

constexpr int kLongestSide = 30'000;  // pixels
constexpr int kRowsOfBand = 256;

// Of the bitmap.
struct Scale {
  double pixelsOfStep = 0;
  int width = 0;
  int height = 0;
};

class Problem : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

void check(cairo_status_t status) {
  if (status != CAIRO_STATUS_SUCCESS) {
    throw Problem(std::string("the bitmap could not be drawn: ") + cairo_status_to_string(status));
  }
}

double fitting(const Frame& frame, const PixelBox& box) {
  if (box.width < 0 || box.height < 0 || (box.width == 0 && box.height == 0)) {
    throw Problem("a size in pixels needs a width or a height above 0");
  }
  const double byWidth = static_cast<double>(box.width) / frame.width();
  const double byHeight = static_cast<double>(box.height) / frame.height();
  if (box.width == 0) return byHeight;
  return box.height == 0 ? byWidth : std::min(byWidth, byHeight);
}

Scale scaleOf(const Frame& frame, const Grid& grid, const Options& options) {
  Scale scale;
  if (options.size) {
    scale.pixelsOfStep = fitting(frame, *options.size);
  } else {
    if (!(options.dpi > 0)) throw Problem("a resolution must be above 0 dots per inch");
    scale.pixelsOfStep = options.dpi / 72 / grid.stepsOfPoint;
  }
  // A hair more than whole pixels is no pixel of its own.
  const double width = std::max(1.0, std::ceil(frame.width() * scale.pixelsOfStep - 1e-6));
  const double height = std::max(1.0, std::ceil(frame.height() * scale.pixelsOfStep - 1e-6));
  if (!(width <= kLongestSide && height <= kLongestSide)) {
    const std::string size =
        width < 1e9 && height < 1e9
            ? std::to_string(std::llround(width)) + " by " + std::to_string(std::llround(height))
            : "more than a thousand million";
    throw Problem("the picture would have " + size + " pixels, more than the " +
                  std::to_string(kLongestSide) +
                  " that a side may have; choose fewer dots per inch or a smaller size");
  }
  scale.width = static_cast<int>(width);
  scale.height = static_cast<int>(height);
  return scale;
}

// The rows of the bitmap that a stroke reaches, from first to last.
struct Rows {
  double first = 0;
  double last = -1;
};

class Painter {
 public:
  Painter(const Drawing& drawing, const Options& options, const Scale& scale)
      : drawing_(drawing), options_(options), scale_(scale) {
    rows_ = std::min(kRowsOfBand, scale.height);
    surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, scale.width, rows_));
    check(cairo_surface_status(surface_.get()));
    context_.reset(cairo_create(surface_.get()));
    check(cairo_status(context_.get()));
    cairo_set_fill_rule(context_.get(), CAIRO_FILL_RULE_WINDING);
    for (const DrawnLayer& layer : drawing.layers)
      for (const Stroke& stroke : layer.strokes)
        reaches_.push_back(rowsOf(stroke));
  }

  int rowsOfBand() const { return rows_; }

  // Gives the first byte of the band that begins in this row.
  const unsigned char* paint(int firstRow) {
    clear();
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, scale_.pixelsOfStep, 0, 0, -scale_.pixelsOfStep,
                      -drawing_.frame.left * scale_.pixelsOfStep,
                      drawing_.frame.top * scale_.pixelsOfStep - firstRow);
    cairo_set_matrix(context_.get(), &matrix);
    std::size_t index = 0;
    for (const DrawnLayer& layer : drawing_.layers) {
      for (const Stroke& stroke : layer.strokes) {
        const Rows& rows = reaches_[index++];
        const bool inBand = rows.last >= firstRow && rows.first <= firstRow + rows_;
        if (layer.visible && inBand) paint(stroke);
      }
    }
    check(cairo_status(context_.get()));
    cairo_surface_flush(surface_.get());
    return cairo_image_surface_get_data(surface_.get());
  }

  std::size_t stride() const {
    return static_cast<std::size_t>(cairo_image_surface_get_stride(surface_.get()));
  }

  // What `trace` tells of a centre line.
  void move(const art::Point& point) {
    const Spot spot = drawing_.grid.spot(point);
    cairo_move_to(context_.get(), spot.h, spot.v);
  }
  void line(const art::Point& point) {
    const Spot spot = drawing_.grid.spot(point);
    cairo_line_to(context_.get(), spot.h, spot.v);
  }
  void curve(const art::Point& out, const art::Point& in, const art::Point& point) {
    const Spot a = drawing_.grid.spot(out);
    const Spot b = drawing_.grid.spot(in);
    const Spot c = drawing_.grid.spot(point);
    cairo_curve_to(context_.get(), a.h, a.v, b.h, b.v, c.h, c.v);
  }
  void close() { cairo_close_path(context_.get()); }

 private:
  struct Release {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
  };

  Rows rowsOf(const Stroke& stroke) const {
    if (drawing_.centreLines) return {0, static_cast<double>(scale_.height)};
    int top = drawing_.frame.bottom - 1;
    int bottom = drawing_.frame.top + 1;
    for (const Contour& contour : stroke.outline.contours) {
      for (const Spot& spot : contour) {
        top = std::max(top, spot.v);
        bottom = std::min(bottom, spot.v);
      }
    }
    return {(drawing_.frame.top - top) * scale_.pixelsOfStep - 1,
            (drawing_.frame.top - bottom) * scale_.pixelsOfStep + 1};
  }

  void clear() {
    cairo_t* context = context_.get();
    cairo_identity_matrix(context);
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
    if (options_.background) {
      const art::Color& color = *options_.background;
      cairo_set_source_rgb(context, color.red, color.green, color.blue);
    } else {
      cairo_set_source_rgba(context, 0, 0, 0, 0);
    }
    cairo_paint(context);
    cairo_set_operator(context, CAIRO_OPERATOR_OVER);
  }

  void paint(const Stroke& stroke) {
    cairo_t* context = context_.get();
    cairo_set_source_rgb(context, stroke.color.red, stroke.color.green, stroke.color.blue);
    if (drawing_.centreLines) {
      trace(*stroke.path, *this);
      cairo_set_line_width(context, kLineWidth * drawing_.grid.stepsOfPoint);
      cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
      cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
      cairo_stroke(context);
      return;
    }
    for (const Contour& contour : stroke.outline.contours) {
      cairo_move_to(context, contour.front().h, contour.front().v);
      for (const Spot& spot : contour)
        cairo_line_to(context, spot.h, spot.v);
    }
    cairo_fill(context);
  }

  const Drawing& drawing_;
  const Options& options_;
  Scale scale_;
  int rows_ = 0;
  std::unique_ptr<cairo_surface_t, Release> surface_;
  std::unique_ptr<cairo_t, Release> context_;
  std::vector<Rows> reaches_;  // of all strokes, bottom to top
};

bool isGrey(const art::Color& color) {
  return byteOf(color.red) == byteOf(color.green) && byteOf(color.green) == byteOf(color.blue);
}

bool isGrey(const Drawing& drawing, const Options& options) {
  return (!options.background || isGrey(*options.background)) &&
         std::ranges::all_of(drawing.layers, [](const DrawnLayer& layer) {
           return std::ranges::all_of(layer.strokes,
                                      [](const Stroke& stroke) { return isGrey(stroke.color); });
         });
}

std::string png(const Drawing& drawing, const Options& options) {
  const Scale scale = scaleOf(drawing.frame, drawing.grid, options);
  Painter painter(drawing, options, scale);
  PngFile file({.width = scale.width,
                .height = scale.height,
                .colored = !isGrey(drawing, options),
                .transparent = !options.background,
                .dotsPerMetre = scale.pixelsOfStep * drawing.grid.stepsOfPoint * 72 / 0.0254});
  for (int row = 0; row < scale.height; row += painter.rowsOfBand()) {
    const unsigned char* band = painter.paint(row);
    const int rows = std::min(painter.rowsOfBand(), scale.height - row);
    for (int i = 0; i < rows; ++i)
      file.row(reinterpret_cast<const std::uint32_t*>(band + static_cast<std::size_t>(i) *
                                                                 painter.stride()));
  }
  return file.finish();
}

}  // namespace

Picture toPng(const art::Document& document, const Options& options) {
  try {
    return {png(drawingOf(document, options), options), std::nullopt};
  } catch (const Problem& problem) {
    return {{}, problem.what()};
  } catch (const std::bad_alloc&) {
    return {{}, "there is not enough memory for a bitmap of this size"};
  }
}

}  // namespace render
