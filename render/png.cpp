#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "render/coverage.h"
#include "render/drawing.h"
#include "render/pdf_and_png.h"
#include "render/png_file.h"
#include "render/text.h"

namespace render {

namespace {

constexpr int kLongestSide = 30'000;  // pixels
constexpr int kRowsOfBand = 256;

// Of the bitmap.
struct Scale {
  double pixelsPerStep = 0;
  int width = 0;
  int height = 0;
};

class Problem : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

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
    scale.pixelsPerStep = fitting(frame, *options.size);
  } else {
    if (!(options.dpi > 0)) throw Problem("a resolution must be above 0 dots per inch");
    scale.pixelsPerStep = options.dpi / 72 / grid.stepsPerPoint;
  }
  // A tiny excess over whole pixels does not add a pixel.
  const double width = std::max(1.0, std::ceil(frame.width() * scale.pixelsPerStep - 1e-6));
  const double height = std::max(1.0, std::ceil(frame.height() * scale.pixelsPerStep - 1e-6));
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

// An opaque pixel, as `PngFile` takes it.
std::uint32_t pixelOf(const art::Color& color) {
  return 0xFF000000U | static_cast<std::uint32_t>(byteOf(color.red)) << 16U |
         static_cast<std::uint32_t>(byteOf(color.green)) << 8U |
         static_cast<std::uint32_t>(byteOf(color.blue));
}

// Two pixels combined, where the upper one covers a share of `Coverage::kWhole`.
std::uint32_t mixed(std::uint32_t upper, std::uint32_t lower, int share) {
  const auto over = static_cast<std::uint32_t>(share);
  const std::uint32_t under = Coverage::kWhole - over;
  std::uint32_t mixed = 0;
  for (const unsigned shift : {0U, 8U, 16U, 24U}) {
    const std::uint32_t part =
        (upper >> shift & 0xFFU) * over + (lower >> shift & 0xFFU) * under + Coverage::kWhole / 2;
    mixed |= part / Coverage::kWhole << shift;
  }
  return mixed;
}

class Painter {
 public:
  Painter(const Drawing& drawing, const Options& options, const Scale& scale)
      : drawing_(drawing),
        scale_(scale),
        rows_(std::min(kRowsOfBand, scale.height)),
        background_(options.background ? pixelOf(*options.background) : 0),
        pixels_(static_cast<std::size_t>(scale.width) * static_cast<std::size_t>(rows_)),
        coverage_(scale.width, rows_) {
    for (const DrawnLayer& layer : drawing.layers)
      for (const Stroke& stroke : layer.strokes)
        reaches_.push_back(rowsOf(stroke));
  }

  int rowsOfBand() const { return rows_; }

  // Gives the rows of the band that begins in this row.
  std::span<const std::uint32_t> paint(int firstRow) {
    std::ranges::fill(pixels_, background_);
    const PixelMap map{scale_.pixelsPerStep, drawing_.frame.left, drawing_.frame.top,
                       static_cast<double>(firstRow)};
    std::size_t index = 0;
    for (const DrawnLayer& layer : drawing_.layers) {
      for (const Stroke& stroke : layer.strokes) {
        const Rows& rows = reaches_[index++];
        const bool inBand = rows.last >= firstRow && rows.first <= firstRow + rows_;
        if (layer.visible && inBand) paint(stroke, map);
      }
    }
    return pixels_;
  }

 private:
  Rows rowsOf(const Stroke& stroke) const {
    int top = drawing_.frame.bottom - 1;
    int bottom = drawing_.frame.top + 1;
    for (const Contour& contour : stroke.outline.contours) {
      for (const Spot& spot : contour) {
        top = std::max(top, spot.v);
        bottom = std::min(bottom, spot.v);
      }
    }
    return {(drawing_.frame.top - top) * scale_.pixelsPerStep - 1,
            (drawing_.frame.top - bottom) * scale_.pixelsPerStep + 1};
  }

  void paint(const Stroke& stroke, const PixelMap& map) {
    const std::uint32_t color = pixelOf(stroke.color);
    coverage_.begin(stroke.outline, map);
    while (const auto covered = coverage_.next()) {
      paint(pixels_.data() + static_cast<std::ptrdiff_t>(covered->row) * scale_.width +
                covered->first,
            covered->shares, color);
    }
  }

  static void paint(std::uint32_t* pixel, std::span<const int> shares, std::uint32_t color) {
    for (const int share : shares) {
      if (share == Coverage::kWhole) {
        *pixel = color;
      } else if (share != 0) {
        *pixel = mixed(color, *pixel, share);
      }
      ++pixel;
    }
  }

  const Drawing& drawing_;
  Scale scale_;
  int rows_;
  std::uint32_t background_;
  std::vector<std::uint32_t> pixels_;
  Coverage coverage_;
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

// Centre lines are what a round nib of their width covers.
void outlineCentreLines(Drawing& drawing) {
  Outliner outliner(drawing.grid);
  const Nib nib(kLineWidth);
  for (DrawnLayer& layer : drawing.layers)
    for (Stroke& stroke : layer.strokes)
      stroke.outline = outliner.outline(*stroke.path, nib);
}

std::string png(Drawing drawing, const Options& options) {
  if (drawing.centreLines) outlineCentreLines(drawing);
  const Scale scale = scaleOf(drawing.frame, drawing.grid, options);
  Painter painter(drawing, options, scale);
  PngFile file({.width = scale.width,
                .height = scale.height,
                .colored = !isGrey(drawing, options),
                .transparent = !options.background,
                .dotsPerMetre = scale.pixelsPerStep * drawing.grid.stepsPerPoint * 72 / 0.0254});
  for (int row = 0; row < scale.height; row += painter.rowsOfBand()) {
    const std::uint32_t* band = painter.paint(row).data();
    const int rows = std::min(painter.rowsOfBand(), scale.height - row);
    for (int i = 0; i < rows; ++i)
      file.row(band + static_cast<std::size_t>(i) * static_cast<std::size_t>(scale.width));
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
