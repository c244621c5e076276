#include "web/replay_page.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "render/drawing.h"
#include "render/paths.h"
#include "render/svg.h"
#include "render/text.h"
#include "text/base64.h"
#include "text/format.h"
#include "web/card_words.h"
#include "web/embedded_texts.h"
#include "web/page.h"
#include "web/replay_data.h"

namespace web {

namespace {

// Lines are kept in tenths of a unit of the SVG: a unit is a hundred steps of the grid.
constexpr int kStepsPerTenth = 10;

constexpr double kMmPerPoint = 25.4 / 72;

constexpr double kWidest = 1e9;

int tenths(int steps) {
  return static_cast<int>(std::lround(static_cast<double>(steps) / kStepsPerTenth));
}

// Follows a path: where a piece is a curve, at a few places of it.
class Tracer {
 public:
  Tracer(const render::Drawing& drawing, const std::vector<std::uint32_t>& waits,
         ReplayStroke& stroke)
      : drawing_(drawing), waits_(waits), stroke_(stroke) {}

  // Called by `render::walk`.
  void move(const art::Point& point) { line(point); }
  void line(const art::Point& point) {
    add(point.h, point.v, nextWait());
    last_ = point;
  }
  void curve(const art::Point& out, const art::Point& in, const art::Point& point) {
    constexpr std::uint32_t kPlaces = 6;
    const std::uint32_t wait = nextWait();
    for (std::uint32_t i = 1; i <= kPlaces; ++i) {
      const double t = static_cast<double>(i) / kPlaces;
      const auto at = [t](double a, double b, double c, double d) {
        const double u = 1 - t;
        return u * u * u * a + 3 * u * u * t * b + 3 * u * t * t * c + t * t * t * d;
      };
      add(at(last_.h, out.h, in.h, point.h), at(last_.v, out.v, in.v, point.v),
          wait * i / kPlaces - wait * (i - 1) / kPlaces);
    }
    last_ = point;
  }
  void close() {}

 private:
  // Of the next anchor; that of a closed path's way back is none.
  std::uint32_t nextWait() { return next_ < waits_.size() ? waits_[next_++] : 0; }

  void add(double h, double v, std::uint32_t wait) {
    const render::Spot spot = drawing_.grid.spot(h, v);
    stroke_.line.push_back(
        {tenths(spot.h - drawing_.frame.left), tenths(drawing_.frame.top - spot.v)});
    stroke_.waits.push_back(wait);
  }

  const render::Drawing& drawing_;
  const std::vector<std::uint32_t>& waits_;
  ReplayStroke& stroke_;
  std::size_t next_ = 0;
  art::Point last_;
};

// The strokes of a drawing that its SVG shows, with their times.
class ReplayBuilder {
 public:
  ReplayBuilder(const art::Document& document, const render::Drawing& drawing,
                const ReplayFacts& facts)
      : drawing_(drawing) {
    findShown(document);
    takeTimes(facts.times);
    arrange(facts.followsClock);
  }

  std::vector<ReplayStroke> strokes() const {
    std::vector<const art::Path*> paths;
    StrokeTimes times;
    for (const std::size_t number : order_) {
      paths.push_back(shown_[number].stroke->path);
      if (!times_.empty()) times.push_back(times_[number]);
    }
    const std::vector<std::vector<std::uint32_t>> waits = waitsOf(paths, times);
    std::vector<ReplayStroke> strokes;
    for (std::size_t i = 0; i < order_.size(); ++i)
      strokes.push_back(replayOf(order_[i], waits[i]));
    return strokes;
  }

 private:
  struct Shown {
    const render::Stroke* stroke;
    std::size_t number;  // Among all paths of the document.
  };

  void findShown(const art::Document& document) {
    for (std::size_t layer = 0; layer < document.layers.size(); ++layer) {
      auto next = drawing_.layers[layer].strokes.begin();
      const auto end = drawing_.layers[layer].strokes.end();
      render::forEachPath(document.layers[layer].art, [&](const art::Path& path, auto) {
        const std::size_t number = paths_++;
        if (next == end || next->path != &path) return;
        if (drawing_.centreLines || !next->outline.contours.empty()) {
          shown_.push_back({&*next, number});
        }
        ++next;
      });
    }
  }

  // Where there are other strokes than paths, nobody knows which belong together.
  void takeTimes(const StrokeTimes& times) {
    if (times.size() != paths_) return;
    for (const Shown& shown : shown_)
      times_.push_back(times[shown.number]);
  }

  // Only strokes of one colour look the same whichever lies above.
  void arrange(bool followsClock) {
    bool isOneColor = true;
    for (std::size_t i = 0; i < shown_.size(); ++i) {
      order_.push_back(i);
      isOneColor = isOneColor && shown_[i].stroke->color == shown_[0].stroke->color;
    }
    if (followsClock && isOneColor && times_.size() == shown_.size()) order_ = orderOf(times_);
  }

  ReplayStroke replayOf(std::size_t number, const std::vector<std::uint32_t>& waits) const {
    const render::Stroke& stroke = *shown_[number].stroke;
    ReplayStroke replay{number, 0, {}, {}};
    // The line is rounded: one more on either side.
    const double steps = stroke.width * drawing_.grid.stepsPerPoint;
    replay.width = static_cast<int>(std::ceil(std::min(steps / kStepsPerTenth, kWidest))) + 2;
    Tracer tracer(drawing_, waits, replay);
    render::walk(*stroke.path, tracer);
    return replay;
  }

  const render::Drawing& drawing_;
  std::size_t paths_ = 0;
  std::vector<Shown> shown_;
  StrokeTimes times_;
  std::vector<std::size_t> order_;
};

std::string factsOf(const art::Document& document) {
  return counted(document.layers.size(), "layer") + ", " +
         counted(art::countPaths(document), "stroke") + ", " +
         text::format("%.0f × %.0f mm", document.width * kMmPerPoint,
                      document.height * kMmPerPoint);
}

std::string headerOf(const art::Document& document, const std::string& name) {
  return "<header><h1>" + escaped(name) + "</h1><p>" + factsOf(document) + "</p></header>\n";
}

// Without the XML declaration, which has no place in HTML.
std::string_view bodyOf(std::string_view svg) {
  return svg.substr(svg.find("<svg"));
}

}  // namespace

std::string replayPage(const art::Document& document, const render::Options& options,
                       const ReplayFacts& facts) {
  const render::Drawing drawing = render::drawingOf(document, options);
  const std::vector<ReplayStroke> strokes = ReplayBuilder(document, drawing, facts).strokes();
  std::string page = pageStart(facts.name, kReplayCss, "");
  page += "<body>\n" + headerOf(document, facts.name) + messageList(facts.messages);
  if (strokes.empty()) {
    return page +
           "<main><p id=\"empty\">This recording has no strokes to show.</p></main>\n"
           "</body>\n</html>\n";
  }
  page +=
      "<main id=\"replay\">\n<script>document.documentElement.className = 'script'; "
      "onerror = () => { document.documentElement.className = ''; };</script>\n";
  page += "<div id=\"stage\"><div id=\"picture\" role=\"img\" aria-label=\"the drawing of " +
          escaped(facts.name) + "\">\n";
  page.append(bodyOf(render::toSvg(drawing, options))).append("</div></div>\n");
  page.append(kReplayHtml).append("</main>\n<script type=\"text/plain\" id=\"strokes\">");
  page.append(text::base64(packed(strokes))).append("</script>\n<script>\n");
  page.append(kReplayStrokesJs).append(kReplayPainterJs).append(kReplayJs);
  return page.append("</script>\n</body>\n</html>\n");
}

}  // namespace web
