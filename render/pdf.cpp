#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "render/drawing.h"
#include "render/paths.h"
#include "render/pdf_and_png.h"
#include "render/pdf_file.h"
#include "render/text.h"

namespace render {

namespace {

constexpr double kLongestSide = 14400;  // a PDF page in its own units

// The page's drawing operators. Coordinates are whole steps of the grid: shorter to write, and
// shorter still since each stroke is relative to its own start.
class Content {
 public:
  Content(const Drawing& drawing, double unit) : drawing_(drawing), frame_(drawing.frame) {
    const std::string scale = pdfNumber(1.0 / drawing.grid.stepsPerPoint / unit);
    text_ = scale + " 0 0 " + scale + " 0 0 cm\n";
    if (!drawing.centreLines) return;
    text_ += "1 J 1 j ";
    integer(static_cast<int>(kLineWidth * drawing.grid.stepsPerPoint));
    text_ += "w\n";
  }

  void background(const art::Color& color) {
    paint(color, "rg\n");
    text_ += "0 0 ";
    integer(frame_.width());
    integer(frame_.height());
    text_ += "re f\n";
  }

  void layer(const DrawnLayer& layer, const std::string& name) {
    text_ += "/OC " + name + " BDC\n";
    std::optional<art::Color> color;
    for (const Stroke& stroke : layer.strokes) {
      if (color != stroke.color) paint(stroke.color, drawing_.centreLines ? "RG\n" : "rg\n");
      color = stroke.color;
      if (drawing_.centreLines) {
        walk(*stroke.path, *this);
        text_ += "S\n";
      } else if (!stroke.outline.contours.empty()) {
        fill(stroke.outline);
      }
    }
    text_ += "EMC\n";
  }

  // Called by `walk` along a centre line.
  void move(const art::Point& point) {
    place(point);
    text_ += "m\n";
  }
  void line(const art::Point& point) {
    place(point);
    text_ += "l\n";
  }
  void curve(const art::Point& out, const art::Point& in, const art::Point& point) {
    place(out);
    place(in);
    place(point);
    text_ += "c\n";
  }
  void close() { text_ += "h\n"; }

  std::string take() { return std::move(text_); }

 private:
  void fill(const Outline& outline) {
    const Spot start = outline.contours.front().front();
    text_ += "q 1 0 0 1 ";
    integer(start.h - frame_.left);
    integer(start.v - frame_.bottom);
    text_ += "cm\n";
    for (const Contour& contour : outline.contours) {
      bool first = true;
      for (const Spot& spot : contour) {
        integer(spot.h - start.h);
        integer(spot.v - start.v);
        text_ += first ? "m\n" : "l\n";
        first = false;
      }
    }
    text_ += "f Q\n";
  }

  void place(const art::Point& point) {
    const Spot spot = drawing_.grid.spot(point);
    integer(spot.h - frame_.left);
    integer(spot.v - frame_.bottom);
  }

  void paint(const art::Color& color, const char* command) {
    for (const double part : {color.red, color.green, color.blue})
      text_ += pdfNumber(byteOf(part) / 255.0) + ' ';
    text_ += command;
  }

  // Followed by a space.
  void integer(int value) {
    std::array<char, 16> digits;
    char* end = std::to_chars(digits.data(), digits.data() + 12, value).ptr;
    *end++ = ' ';
    text_.append(digits.data(), end);
  }

  const Drawing& drawing_;
  Frame frame_;
  std::string text_;
};

PdfPage pageOf(const Drawing& drawing, const Options& options) {
  PdfPage page;
  const double width = drawing.grid.points(drawing.frame.width());
  const double height = drawing.grid.points(drawing.frame.height());
  page.unit = std::max(1.0, std::max(width, height) / kLongestSide);
  page.width = width / page.unit;
  page.height = height / page.unit;
  Content content(drawing, page.unit);
  if (options.background) content.background(*options.background);
  for (const DrawnLayer& layer : drawing.layers) {
    page.layers.push_back({layer.name, layer.visible});
    content.layer(layer, PdfPage::nameOfLayer(page.layers.size()));
  }
  page.content = content.take();
  return page;
}

}  // namespace

Picture toPdf(const art::Document& document, const Options& options) {
  PdfResult result = pdfFile(pageOf(drawingOf(document, options), options));
  if (result.problem.empty()) return {std::move(result.bytes), std::nullopt};
  return {{}, "no PDF could be made of the drawing: " + result.problem};
}

}  // namespace render
