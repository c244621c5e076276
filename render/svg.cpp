#include "render/svg.h"

#include <array>
#include <cmath>

#include "render/paths.h"
#include "render/text.h"

namespace render {

namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72.0;

// A unit of the picture is a hundred steps of the grid.
class SvgWriter {
 public:
  SvgWriter(const Drawing& drawing, const Options& options)
      : grid_(drawing.grid), frame_(drawing.frame), centreLines_(drawing.centreLines) {
    text_.reserve(estimate(drawing));
    begin();
    if (options.background) paintBackground(*options.background);
    for (std::size_t i = 0; i < drawing.layers.size(); ++i)
      write(drawing.layers[i], i + 1);
    text_ += "</svg>\n";
  }

  std::string take() { return std::move(text_); }

  // Called by `walk` along a centre line.
  void move(const art::Point& point) { command('M', point); }
  void line(const art::Point& point) { command('L', point); }
  void curve(const art::Point& out, const art::Point& in, const art::Point& point) {
    command('C', out);
    command(' ', in);
    command(' ', point);
  }
  void close() { text_ += 'Z'; }

 private:
  static std::size_t estimate(const Drawing& drawing) {
    std::size_t bytes = 1000;
    for (const DrawnLayer& layer : drawing.layers) {
      for (const Stroke& stroke : layer.strokes) {
        bytes += 40;
        for (const Contour& contour : stroke.outline.contours)
          bytes += 16 + contour.size() * 10;
        if (stroke.outline.contours.empty()) bytes += stroke.path->segments.size() * 16;
      }
    }
    return bytes;
  }

  void begin() {
    text_ +=
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"";
    text_ += " xmlns:inkscape=\"http://www.inkscape.org/namespaces/inkscape\" version=\"1.1\"";
    text_ += " width=\"";
    millimetres(frame_.width());
    text_ += "mm\" height=\"";
    millimetres(frame_.height());
    text_ += "mm\" viewBox=\"0 0 ";
    number(frame_.width());
    text_ += ' ';
    number(frame_.height());
    text_ += "\">\n";
  }

  void millimetres(int steps) {
    number(static_cast<int>(std::lround(grid_.points(steps) * kMillimetresPerPoint * 100)));
  }

  void paintBackground(const art::Color& color) {
    text_ += "<rect width=\"100%\" height=\"100%\" fill=\"";
    appendColor(text_, color);
    text_ += "\"/>\n";
  }

  void write(const DrawnLayer& layer, std::size_t index) {
    text_ += "<g id=\"layer" + std::to_string(index) + "\" inkscape:groupmode=\"layer\"";
    text_ += " inkscape:label=\"";
    appendEscaped(text_, layer.name);
    const art::Color color = layer.strokes.empty() ? art::Color{} : layer.strokes.front().color;
    if (centreLines_) {
      text_ += "\" fill=\"none\" stroke-width=\"";
      number(static_cast<int>(std::lround(kLineWidth * grid_.stepsPerPoint)));
      text_ += "\" stroke-linecap=\"round\" stroke-linejoin=\"round";
    }
    paint(color);
    text_ += layer.visible ? "\">\n" : "\" style=\"display:none\">\n";
    for (const Stroke& stroke : layer.strokes)
      write(stroke, color);
    text_ += "</g>\n";
  }

  // Follows an attribute that is still open.
  void paint(const art::Color& color) {
    text_ += centreLines_ ? "\" stroke=\"" : "\" fill=\"";
    appendColor(text_, color);
  }

  void write(const Stroke& stroke, const art::Color& layerColor) {
    if (!centreLines_ && stroke.outline.contours.empty()) return;
    text_ += "<path d=\"";
    if (centreLines_) {
      walk(*stroke.path, *this);
    } else {
      for (const Contour& contour : stroke.outline.contours)
        write(contour);
    }
    if (stroke.color != layerColor) paint(stroke.color);
    text_ += "\"/>\n";
  }

  // The first point is absolute; all others are relative lines, written without repeating the
  // letter.
  void write(const Contour& contour) {
    Spot last = contour.front();
    text_ += 'M';
    number(last.h - frame_.left);
    follow(frame_.top - last.v);
    text_ += 'l';
    bool first = true;
    for (std::size_t i = 1; i < contour.size(); ++i) {
      const Spot& spot = contour[i];
      if (first) {
        number(spot.h - last.h);
      } else {
        follow(spot.h - last.h);
      }
      follow(last.v - spot.v);
      first = false;
      last = spot;
    }
    text_ += 'z';
  }

  void command(char letter, const art::Point& point) {
    const Spot spot = grid_.spot(point);
    text_ += letter;
    number(spot.h - frame_.left);
    follow(frame_.top - spot.v);
  }

  void number(int hundredths) { appendHundredths(text_, hundredths); }

  // A further number: it needs a space before it unless it begins with a minus sign.
  void follow(int hundredths) {
    std::array<char, kLongestNumber + 1> digits;
    digits[0] = ' ';
    char* begin = digits.data() + 1;
    char* end = putHundredths(begin, hundredths);
    if (hundredths >= 0) --begin;
    text_.append(begin, end);
  }

  Grid grid_;
  Frame frame_;
  bool centreLines_;
  std::string text_;
};

}  // namespace

std::string toSvg(const art::Document& document, const Options& options) {
  return toSvg(drawingOf(document, options), options);
}

std::string toSvg(const Drawing& drawing, const Options& options) {
  return SvgWriter(drawing, options).take();
}

}  // namespace render
