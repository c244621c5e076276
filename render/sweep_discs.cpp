// Between two stations of which neither disc lies inside the other, the brush covers what lies
// between the two common tangents, and the two discs; the tangents touch the discs at the normals
// of the left and of the right side. What it covers in all is the union of the pieces between the
// tangents and, at each station, of the sector between the normals that it arrives and leaves with.
// The contour goes out along the left normals and back along the right ones; where it turns towards
// its own side it goes through the station, so that every piece is surrounded clockwise and the
// nonzero rule fills exactly their union.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "render/sweep.h"

namespace render {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

struct Normal {
  double x = 0;
  double y = 0;
};

// The piece from one station to the next.
struct Piece {
  bool swallowed = false;  // one of the two discs lies inside the other
  double lean = 0;         // sine of the angle by which the normals lean forward
  double length = 0;       // of a tangent, from one touching point to the other
  Normal left;
  Normal right;
};

Piece pieceBetween(const Station& from, const Station& to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double distance = std::sqrt(dx * dx + dy * dy);
  const double shrinking = from.radius - to.radius;
  Piece piece;
  if (std::abs(shrinking) >= distance * 0.999999) {
    piece.swallowed = true;
    return piece;
  }
  const double ux = dx / distance;
  const double uy = dy / distance;
  const double sine = shrinking / distance;
  const double cosine = std::sqrt(1 - sine * sine);
  piece.lean = sine;
  piece.length = distance * cosine;
  piece.left = {ux * sine - uy * cosine, uy * sine + ux * cosine};
  piece.right = {ux * sine + uy * cosine, uy * sine - ux * cosine};
  return piece;
}

double clockwise(const Normal& from, const Normal& to) {
  const double turn = std::atan2(from.y * to.x - from.x * to.y, from.x * to.x + from.y * to.y);
  return turn < 0 ? turn + kTurn : turn;
}

class DiscSweep {
 public:
  DiscSweep(const std::vector<Station>& stations, double tolerance, Contours& contours)
      : stations_(stations), tolerance_(tolerance), contours_(contours) {
    pieces_.reserve(stations.size());
    for (std::size_t i = 1; i < stations.size(); ++i)
      pieces_.push_back(pieceBetween(stations[i - 1], stations[i]));
  }

  void sweep() {
    std::size_t first = 0;
    for (std::size_t i = 0; i <= pieces_.size(); ++i) {
      if (i < pieces_.size() && !pieces_[i].swallowed) continue;
      chain(first, i);
      first = i + 1;
    }
  }

 private:
  // The stations from first to last, no disc of which lies inside its neighbour. At its ends it
  // touches stations whose discs it lies in, or which lie in its own.
  void chain(std::size_t first, std::size_t last) {
    const bool startShows = first == 0 || stations_[first].radius > stations_[first - 1].radius;
    const bool endShows =
        last == pieces_.size() || stations_[last].radius >= stations_[last + 1].radius;
    if (first == last) {
      if (startShows && endShows) disc(stations_[first]);
      return;
    }
    contours_.begin(2 * (last - first) + 16);
    for (std::size_t i = first + 1; i < last; ++i)
      joint(stations_[i], pieces_[i - 1], pieces_[i], pieces_[i - 1].left, pieces_[i].left);
    cap(stations_[last], pieces_[last - 1].left, pieces_[last - 1].right, endShows);
    for (std::size_t i = last - 1; i > first; --i)
      joint(stations_[i], pieces_[i - 1], pieces_[i], pieces_[i].right, pieces_[i - 1].right);
    cap(stations_[first], pieces_[first].right, pieces_[first].left, startShows);
    contours_.end();
  }

  void cap(const Station& at, const Normal& from, const Normal& to, bool shows) {
    touch(at, from);
    if (shows) {
      arc(at, from, clockwise(from, to));
    } else {
      contours_.point(at.x, at.y);
    }
    touch(at, to);
  }

  void joint(const Station& at, const Piece& in, const Piece& out, const Normal& from,
             const Normal& to) {
    const double cosine = from.x * to.x + from.y * to.y;
    const bool away = from.x * to.y - from.y * to.x < 0;
    if (meets(at, in, out, away, cosine)) {
      const double reach = at.radius / (1 + cosine);
      contours_.point(at.x + reach * (from.x + to.x), at.y + reach * (from.y + to.y));
      return;
    }
    touch(at, from);
    if (away || shows(in, out, from, to)) {
      arc(at, from, clockwise(from, to));
    } else {
      contours_.point(at.x, at.y);
    }
    touch(at, to);
  }

  // Whether the point where the two tangents meet may stand for the joint: in a turn away from this
  // side where it lies hardly outside the disc, in a turn towards it where it lies on both pieces.
  bool meets(const Station& at, const Piece& in, const Piece& out, bool away, double cosine) const {
    if (cosine < -0.8) return false;
    const double halfTurn = 2 / (1 + cosine);  // the squared secant of half the turn
    if (away) return at.radius * (std::sqrt(halfTurn) - 1) <= tolerance_;
    if (std::max(out.lean, -in.lean) > 0.7) return false;
    const double trimmed = 2 * at.radius * std::sqrt(std::max(halfTurn - 1, 0.0));
    return trimmed <= std::min(in.length, out.length);
  }

  // Whether the disc shows between the normals in a turn by half a circle or more: as the normals
  // lean apart where the radius changes, it may.
  static bool shows(const Piece& in, const Piece& out, const Normal& from, const Normal& to) {
    const double lean = std::max(out.lean, -in.lean);
    return clockwise(from, to) <= std::numbers::pi + 2 * std::asin(lean) + 1e-6;
  }

  // The points between the ends of an arc, so far out that the polygon has the arc's area.
  void arc(const Station& at, const Normal& from, double turn) {
    const int steps = stepsFor(at.radius, turn);
    const double step = turn / steps;
    const double radius = boosted(at.radius, step);
    const double cosine = std::cos(step);
    const double sine = std::sin(step);
    Normal normal = from;
    for (int i = 1; i < steps; ++i) {
      normal = {normal.x * cosine + normal.y * sine, normal.y * cosine - normal.x * sine};
      contours_.point(at.x + radius * normal.x, at.y + radius * normal.y);
    }
  }

  void disc(const Station& at) {
    if (at.radius <= 0) return;
    contours_.begin(32);
    contours_.point(at.x + boosted(at.radius, kTurn / stepsFor(at.radius, kTurn)), at.y);
    arc(at, {1, 0}, kTurn);
    contours_.end();
  }

  int stepsFor(double radius, double turn) const {
    // Boosted, the corners lie out by a twelfth of the radius times the squared step.
    const double widest = std::sqrt(12 * tolerance_ / std::max(radius, 1e-9));
    return std::max(1, static_cast<int>(std::ceil(turn / std::min(widest, 0.9))));
  }

  static double boosted(double radius, double step) {
    return step > 0 ? radius * std::sqrt(step / std::sin(step)) : radius;
  }

  void touch(const Station& at, const Normal& normal) {
    contours_.point(at.x + at.radius * normal.x, at.y + at.radius * normal.y);
  }

  const std::vector<Station>& stations_;
  double tolerance_;
  Contours& contours_;
  std::vector<Piece> pieces_;
};

}  // namespace

void sweepDiscs(const std::vector<Station>& stations, double tolerance, Contours& contours) {
  DiscSweep(stations, tolerance, contours).sweep();
}

}  // namespace render
