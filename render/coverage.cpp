#include "render/coverage.h"

#include <algorithm>
#include <array>

namespace render {

namespace {

constexpr int kLines = 16;    // of a row of pixels
constexpr int kSamples = 16;  // of a pixel, on each line
static_assert(kLines * kSamples == Coverage::kWhole);

// Where the samples of each line begin, as shares of their distance. Every line has its own share,
// far from its neighbours', so that vertical edges too are placed to a 256th of a pixel.
constexpr std::array<double, kLines> kOffsets = [] {
  std::array<double, kLines> offsets{};
  for (int line = 0; line < kLines; ++line)
    offsets[static_cast<std::size_t>(line)] = (line * 7 % kLines + 0.5) / kLines;
  return offsets;
}();

// The first line whose middle lies below `y`.
int lineBelow(double y, int lines) {
  return static_cast<int>(std::clamp(y + 0.5, 0.0, static_cast<double>(lines)));
}

}  // namespace

Coverage::Coverage(int width, int rows)
    : width_(width),
      rows_(rows),
      starting_(static_cast<std::size_t>(rows)),
      windings_(static_cast<std::size_t>(width) * kSamples + 1),
      changes_(static_cast<std::size_t>(width) + 2),
      shares_(static_cast<std::size_t>(width)) {}

void Coverage::begin(const Outline& outline, const PixelMap& map) {
  for (std::vector<Edge>& edges : starting_)
    edges.clear();
  active_.clear();
  row_ = rows_;
  lastRow_ = -1;
  for (const Contour& contour : outline.contours) {
    double x0 = map.column(contour.back()) * kSamples;
    double y0 = map.row(contour.back()) * kLines;
    for (const Spot& spot : contour) {
      const double x1 = map.column(spot) * kSamples;
      const double y1 = map.row(spot) * kLines;
      add(x0, y0, x1, y1);
      x0 = x1;
      y0 = y1;
    }
  }
}

void Coverage::add(double x0, double y0, double x1, double y1) {
  const bool down = y0 < y1;
  if (!down) {
    std::swap(x0, x1);
    std::swap(y0, y1);
  }
  const int begin = lineBelow(y0, rows_ * kLines);
  const int end = lineBelow(y1, rows_ * kLines);
  if (begin >= end) return;
  const double xPerLine = (x1 - x0) / (y1 - y0);
  const double x = x0 + (begin + 0.5 - y0) * xPerLine;
  starting_[static_cast<std::size_t>(begin / kLines)].push_back(
      {x, xPerLine, begin, end, down ? 1 : 0});
  row_ = std::min(row_, begin / kLines);
  lastRow_ = std::max(lastRow_, (end - 1) / kLines);
}

std::optional<Coverage::Row> Coverage::next() {
  while (row_ <= lastRow_) {
    const int row = row_++;
    first_ = width_;
    last_ = -1;
    crossLines(row);
    if (last_ >= first_) return Row{row, first_, takeShares()};
  }
  return std::nullopt;
}

void Coverage::crossLines(int row) {
  const std::vector<Edge>& starting = starting_[static_cast<std::size_t>(row)];
  active_.insert(active_.end(), starting.begin(), starting.end());
  const std::size_t most = active_.size();  // an edge crosses a line once
  if (crossings_.size() < kLines * most) crossings_.resize(kLines * most);
  std::array<std::int32_t*, kLines> ends{};
  for (std::size_t line = 0; line < kLines; ++line)
    ends[line] = crossings_.data() + line * most;
  const int firstLine = row * kLines;
  const double rightmost = double{kSamples} * width_;
  for (Edge& edge : active_) {
    const auto begin = static_cast<std::size_t>(edge.line - firstLine);
    const auto end = static_cast<std::size_t>(std::min(edge.end - firstLine, kLines));
    double x = edge.x;
    for (std::size_t line = begin; line < end; ++line) {
      const double sample = std::clamp(x + kOffsets[line], 0.0, rightmost);
      *ends[line]++ = static_cast<std::int32_t>(sample) * 2 + edge.down;
      x += edge.xPerLine;
    }
    edge.x = x;
    edge.line = firstLine + kLines;
  }
  std::erase_if(active_, [](const Edge& edge) { return edge.end <= edge.line; });
  for (std::size_t line = 0; line < kLines; ++line)
    cover({crossings_.data() + line * most, ends[line]});
}

void Coverage::cover(std::span<std::int32_t> crossings) {
  // With more crossings than this, visiting every sample is faster than sorting.
  constexpr std::size_t kPixelsPerCrossing = 4;
  if (crossings.size() * kPixelsPerCrossing < static_cast<std::size_t>(width_)) {
    coverFew(crossings);
  } else {
    coverMany(crossings);
  }
}

void Coverage::coverFew(std::span<std::int32_t> crossings) {
  if (crossings.empty()) return;
  std::sort(crossings.begin(), crossings.end());
  reach(crossings.front() / 2, crossings.back() / 2);
  int winding = 0;
  int from = 0;
  for (const std::int32_t crossing : crossings) {
    if (winding == 0) from = crossing / 2;
    winding += crossing % 2 == 0 ? -1 : 1;
    if (winding == 0) coverSpan(from, crossing / 2);
  }
}

void Coverage::coverMany(std::span<const std::int32_t> crossings) {
  int low = width_ * kSamples;
  int high = 0;
  for (const std::int32_t crossing : crossings) {
    const int sample = crossing / 2;
    windings_[static_cast<std::size_t>(sample)] += crossing % 2 == 0 ? -1 : 1;
    low = std::min(low, sample);
    high = std::max(high, sample);
  }
  reach(low, high);
  int winding = 0;
  int from = 0;
  for (int sample = low; sample <= high; ++sample) {
    std::int32_t& change = windings_[static_cast<std::size_t>(sample)];
    if (change == 0) continue;
    if (winding == 0) from = sample;
    winding += change;
    change = 0;
    if (winding == 0) coverSpan(from, sample);
  }
}

void Coverage::reach(int low, int high) {
  first_ = std::min(first_, low / kSamples);
  last_ = std::max(last_, std::min(high / kSamples, width_ - 1));
}

// Samples of a line. The share of a pixel is the sum of the changes up to it.
void Coverage::coverSpan(int from, int to) {
  const int left = from / kSamples;
  const int right = to / kSamples;
  int* const begin = &changes_[static_cast<std::size_t>(left)];
  int* const end = &changes_[static_cast<std::size_t>(right)];
  begin[0] += kSamples - from % kSamples;
  begin[1] += from % kSamples;
  end[0] -= kSamples - to % kSamples;
  end[1] -= to % kSamples;
}

std::span<const int> Coverage::takeShares() {
  const auto first = static_cast<std::size_t>(first_);
  const auto last = static_cast<std::size_t>(last_);
  int share = 0;
  for (std::size_t i = first; i <= last; ++i) {
    share += changes_[i];
    changes_[i] = 0;
    shares_[i] = share;
  }
  changes_[last + 1] = 0;
  changes_[last + 2] = 0;
  return std::span(shares_).subspan(first, last - first + 1);
}

}  // namespace render
