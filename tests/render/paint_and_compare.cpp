// A painter that shares no code with the outlines: it reads art as JSON, stamps one disc after
// another into a fine bitmap, and prints how much of that differs from a picture of the same art.
//
// paint_and_compare ART.json PICTURE.png DPI [--brush LIGHTEST HEAVIEST] [--pressure P]
//
// Prints "DIFFERING AREA OFF": the differing share of the painted area in percent, the painted area
// in pixels, and of the pixels with ink in either picture those off by more than 16 of 255, in
// percent. The picture's upper left corner is that of the page grown by whatever the discs cover.
// Colours do not matter, only how much of a pixel is covered: transparent pixels are not
// covered, the others in proportion to how dark they are.

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;

constexpr int kFine = 8;              // rows and columns of a pixel
constexpr double kStampEvery = 0.04;  // points
constexpr int kStepsOfPiece = 96;
constexpr double kRounding = 0.01;  // points
constexpr double kFarOff = 16 / 255.0;

struct Brush {
  double lightest = 0.3;
  double heaviest = 2.7;
  double pressureInstead = -1;
};

struct Disc {
  double x, y, radius;
};

struct Place {
  double x, y, way;
};

struct Plan {
  double left, bottom, right, top;
  std::vector<Disc> discs;
};

// Every cubic by its polynomial, in equal steps of the parameter; each with the length so far.
std::vector<Place> walk(const Json& path) {
  std::vector<Place> places;
  double way = 0;
  const auto go = [&](double x, double y) {
    if (!places.empty()) way += std::hypot(x - places.back().x, y - places.back().y);
    places.push_back({x, y, way});
  };
  const Json& segments = path.at("segments");
  for (std::size_t i = 0; i < segments.size(); ++i) {
    const Json& to = segments[i];
    if (i == 0) {
      go(to[0], to[1]);
      continue;
    }
    const Json& from = segments[i - 1];
    const double x0 = from[0], x1 = from[4], x2 = to[2], x3 = to[0];
    const double y0 = from[1], y1 = from[5], y2 = to[3], y3 = to[1];
    for (int step = 1; step <= kStepsOfPiece; ++step) {
      const double t = static_cast<double>(step) / kStepsOfPiece;
      const auto cubic = [t](double a, double b, double c, double d) {
        return a + t * (3 * (b - a) + t * (3 * (a - 2 * b + c) + t * (d - 3 * c + 3 * b - a)));
      };
      go(cubic(x0, x1, x2, x3), cubic(y0, y1, y2, y3));
    }
  }
  return places;
}

double pressureAt(const Json& tablet, double offset) {
  if (tablet.empty()) return 0.5;
  const auto value = [&](std::size_t i) { return std::min(tablet[i][1].get<double>(), 1.0); };
  std::size_t low = 0;  // the first sample that does not lie before the offset
  std::size_t high = tablet.size();
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    if (tablet[middle][0].get<double>() < offset) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (low == 0) return value(0);
  if (low == tablet.size()) return value(low - 1);
  const double before = tablet[low - 1][0];
  const double after = tablet[low][0];
  const double share = (offset - before) / (after - before);
  return value(low - 1) * (1 - share) + value(low) * share;
}

bool hasPressure(const Json& tablet) {
  return std::any_of(tablet.begin(), tablet.end(),
                     [](const Json& sample) { return sample[1].get<double>() > 0; });
}

void stampPath(const Json& path, const Brush& brush, Plan& plan) {
  const std::vector<Place> places = walk(path);
  if (places.empty()) return;
  const double length = places.back().way;
  const Json& tablet = path.at("tablet");
  const bool instead = brush.pressureInstead >= 0 && !hasPressure(tablet);
  const auto stamp = [&](double x, double y, double way) {
    const double pressure =
        instead ? brush.pressureInstead : pressureAt(tablet, length > 0 ? way / length : 0);
    const double diameter = brush.lightest + (brush.heaviest - brush.lightest) * pressure;
    plan.discs.push_back({x, y, diameter / 2});
  };
  stamp(places[0].x, places[0].y, 0);
  double next = kStampEvery;
  for (std::size_t i = 1; i < places.size(); ++i) {
    const Place& a = places[i - 1];
    const Place& b = places[i];
    while (next <= b.way) {
      const double share = (next - a.way) / (b.way - a.way);
      stamp(a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share, next);
      next += kStampEvery;
    }
  }
  stamp(places.back().x, places.back().y, length);
}

void stampAll(const Json& objects, const Brush& brush, Plan& plan) {
  for (const Json& object : objects) {
    if (object.at("type") == "group") {
      stampAll(object.at("art"), brush, plan);
    } else {
      stampPath(object, brush, plan);
    }
  }
}

Plan planOf(const Json& art, const Brush& brush) {
  const Json& page = art.at("document").at("page");
  Plan plan{page[0], page[1], page[2], page[3], {}};
  for (const Json& layer : art.at("layers"))
    stampAll(layer.at("art"), brush, plan);
  for (const Disc& disc : plan.discs) {
    plan.left = std::min(plan.left, disc.x - disc.radius);
    plan.right = std::max(plan.right, disc.x + disc.radius);
    plan.bottom = std::min(plan.bottom, disc.y - disc.radius);
    plan.top = std::max(plan.top, disc.y + disc.radius);
  }
  return plan;
}

// The share of each pixel that the discs cover, 0 to 64, found in a bitmap of fine rows; of some
// rows of the picture only.
class Strip {
 public:
  Strip(int width, int first, int rows) : width_(width), first_(first), rows_(rows) {
    covered_.resize(static_cast<std::size_t>(width) * kFine * static_cast<std::size_t>(rows) *
                    kFine / 8);
  }

  // A fine dot is covered when its middle is. All in fine dots of the whole picture.
  void stamp(double x, double yOfPicture, double radius) {
    const double y = yOfPicture - first_ * kFine;
    const int top = std::max(0, static_cast<int>(std::ceil(y - radius - 0.5)));
    const int bottom = std::min(rows_ * kFine - 1, static_cast<int>(std::floor(y + radius - 0.5)));
    for (int row = top; row <= bottom; ++row) {
      const double up = row + 0.5 - y;
      const double half = std::sqrt(std::max(0.0, radius * radius - up * up));
      const int left = std::max(0, static_cast<int>(std::ceil(x - half - 0.5)));
      const int right = std::min(width_ * kFine - 1, static_cast<int>(std::floor(x + half - 0.5)));
      fill(row, left, right);
    }
  }

  int coverage(int column, int row) const {
    int count = 0;
    for (int i = 0; i < kFine; ++i)
      count += __builtin_popcount(covered_[at((row - first_) * kFine + i, column)]);
    return count;
  }

 private:
  static_assert(kFine == 8, "one byte is a pixel's share of a fine row");

  std::size_t at(int fineRow, int column) const {
    return static_cast<std::size_t>(fineRow) * static_cast<std::size_t>(width_) +
           static_cast<std::size_t>(column);
  }

  void fill(int fineRow, int left, int right) {
    if (left > right) return;
    const unsigned first = 0xFFU >> (left % 8);
    const unsigned last = 0xFFU << (7 - right % 8) & 0xFFU;
    unsigned char* row = &covered_[at(fineRow, 0)];
    if (left / 8 == right / 8) {
      row[left / 8] = static_cast<unsigned char>(row[left / 8] | (first & last));
      return;
    }
    row[left / 8] = static_cast<unsigned char>(row[left / 8] | first);
    for (int i = left / 8 + 1; i < right / 8; ++i)
      row[i] = 0xFF;
    row[right / 8] = static_cast<unsigned char>(row[right / 8] | last);
  }

  int width_;
  int first_;
  int rows_;
  std::vector<unsigned char> covered_;  // a bit for each fine dot
};

class Picture {
 public:
  explicit Picture(const char* file) : surface_(cairo_image_surface_create_from_png(file)) {
    if (cairo_surface_status(surface_) != CAIRO_STATUS_SUCCESS) {
      std::cerr << file << " cannot be read as PNG\n";
      std::exit(2);
    }
    cairo_surface_flush(surface_);
  }
  ~Picture() { cairo_surface_destroy(surface_); }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  int width() const { return cairo_image_surface_get_width(surface_); }
  int height() const { return cairo_image_surface_get_height(surface_); }

  // 0 to 1; the ink is black.
  double coverage(int column, int row) const {
    if (column >= width() || row >= height()) return 0;
    const unsigned char* data = cairo_image_surface_get_data(surface_);
    unsigned pixel = 0;
    std::memcpy(&pixel,
                data + static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(surface_) +
                    static_cast<std::ptrdiff_t>(column) * 4,
                4);
    const unsigned green = pixel >> 8U & 0xFFU;
    if (cairo_image_surface_get_format(surface_) == CAIRO_FORMAT_RGB24)
      return (255 - green) / 255.0;
    return ((pixel >> 24U) - green) / 255.0;
  }

 private:
  cairo_surface_t* surface_;
};

struct Shift {
  double right = 0;
  double down = 0;
};

// The drawing as a bitmap, in strips, so that it may be as fine as it must be.
class Painting {
 public:
  Painting(const Plan& plan, double pixels)
      : plan_(plan),
        pixels_(pixels),
        width_(static_cast<int>(std::ceil((plan.right - plan.left) * pixels)) + 1),
        height_(static_cast<int>(std::ceil((plan.top - plan.bottom) * pixels)) + 1) {}

  int width() const { return width_; }
  int height() const { return height_; }

  // Calls `visit(strip, row)` for every row; the strip holds the rows above and below too.
  template <class Visit>
  void forEachRow(const Shift& shift, Visit&& visit) const {
    for (int first = 0; first < height_; first += kRowsOfStrip) {
      Strip strip(width_, first - 1, kRowsOfStrip + 2);
      for (const Disc& disc : plan_.discs)
        strip.stamp(((disc.x - plan_.left) * pixels_ + shift.right) * kFine,
                    ((plan_.top - disc.y) * pixels_ + shift.down) * kFine,
                    disc.radius * pixels_ * kFine);
      for (int row = first; row < std::min(first + kRowsOfStrip, height_); ++row)
        visit(strip, row);
    }
  }

 private:
  static constexpr int kRowsOfStrip = 400;

  const Plan& plan_;
  double pixels_;
  int width_;
  int height_;
};

// How far the picture is shifted, in pixels, at most `most`: the shift that explains most of what
// differs along the slopes of the painted edges, by least squares.
Shift shiftBetween(const Painting& painting, const Picture& picture, double most) {
  double hh = 0, hv = 0, vv = 0, hd = 0, vd = 0;
  painting.forEachRow({}, [&](const Strip& strip, int row) {
    for (int column = 1; column + 1 < painting.width(); ++column) {
      const double h = (strip.coverage(column + 1, row) - strip.coverage(column - 1, row)) / 128.0;
      const double v = (strip.coverage(column, row + 1) - strip.coverage(column, row - 1)) / 128.0;
      if (h == 0 && v == 0) continue;
      const double d = strip.coverage(column, row) / 64.0 - picture.coverage(column, row);
      hh += h * h;
      hv += h * v;
      vv += v * v;
      hd += h * d;
      vd += v * d;
    }
  });
  const double determinant = hh * vv - hv * hv;
  if (determinant <= 0) return {};
  return {std::clamp((hd * vv - vd * hv) / determinant, -most, most),
          std::clamp((vd * hh - hd * hv) / determinant, -most, most)};
}

double numberIn(const std::string& word) {
  std::size_t read = 0;
  const double number = std::stod(word, &read);
  if (read != word.size()) throw std::invalid_argument(word + " is not a number");
  return number;
}

int compare(int count, char** words) {
  if (count < 4) return 2;
  Brush brush;
  for (int i = 4; i < count; ++i) {
    const std::string word = words[i];
    if (word == "--brush" && i + 2 < count) {
      brush.lightest = numberIn(words[++i]);
      brush.heaviest = numberIn(words[++i]);
    } else if (word == "--pressure" && i + 1 < count) {
      brush.pressureInstead = numberIn(words[++i]);
    } else {
      return 2;
    }
  }
  std::ifstream file(words[1]);
  const Plan plan = planOf(Json::parse(file), brush);
  const Picture picture(words[2]);
  const double pixels = numberIn(words[3]) / 72;
  const Painting painting(plan, pixels);
  if (std::abs(painting.width() - picture.width()) > 2 ||
      std::abs(painting.height() - picture.height()) > 2) {
    std::cerr << "the picture has " << picture.width() << " x " << picture.height()
              << " pixels, the drawing " << painting.width() << " x " << painting.height() << '\n';
    return 1;
  }
  // The edge of a picture is rounded to hundredths of a point: it may be shifted by as much.
  const Shift shift = shiftBetween(painting, picture, kRounding * pixels);
  double painted = 0;
  double differing = 0;
  long inked = 0;
  long farOff = 0;
  painting.forEachRow(shift, [&](const Strip& strip, int row) {
    for (int column = 0; column < painting.width(); ++column) {
      const double wanted = strip.coverage(column, row) / 64.0;
      const double found = picture.coverage(column, row);
      painted += wanted;
      differing += std::abs(wanted - found);
      inked += wanted > 0 || found > 0 ? 1 : 0;
      farOff += std::abs(wanted - found) > kFarOff ? 1 : 0;
    }
  });
  if (painted == 0) {
    std::cerr << "nothing is painted\n";
    return 1;
  }
  std::printf("%.3f %.0f %.3f\n", 100 * differing / painted, painted,
              100.0 * static_cast<double>(farOff) / static_cast<double>(inked));
  return 0;
}

}  // namespace

int main(int count, char** words) {
  try {
    return compare(count, words);
  } catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
  }
}
