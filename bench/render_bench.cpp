// Drawing outlines as SVG, against a floor measured in the same run: as many numbers printed with
// to_chars into one string, each in its shortest form and followed by a blank. And painting one
// stroke that keeps crossing itself as PNG, against a floor that only walks every edge of its
// outline and counts where it crosses the scan lines of the bitmap, 16 for each row of pixels.

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "art/document.h"
#include "bench/ratios.h"
#include "render/outline.h"
#include "render/pdf_and_png.h"
#include "render/svg.h"

namespace {

constexpr int kPointsPerStroke = 100;
constexpr int kAllStrokes = 3'000;
constexpr int kManyPoints = 32'000;
constexpr int kDotsPerInch = 150;

// A stroke like a real pen's: points at most a millimetre apart on a line that winds and trembles,
// with rising and falling pressure; its segments and its end as the plug-in builds them.
art::Path makeStroke(int number) {
  art::Path path;
  path.style = 0;
  std::vector<art::Point> points;
  for (int i = 0; i < kPointsPerStroke; ++i) {
    const double along = i * 1.9 + 0.4 * std::sin(i * 0.7);
    const double across = 9 * std::sin(i * 0.11 + number) + 0.2 * std::sin(i * 2.3 + number);
    points.push_back({static_cast<float>(number * 7919 % 400 + along),
                      static_cast<float>(number * 104729 % 800 + across)});
  }
  for (std::size_t i = 0; i < points.size(); ++i) {
    const art::Point& before = points[i == 0 ? 0 : i - 1];
    const bool last = i + 1 == points.size();
    const art::Point& place = last ? before : points[i];
    path.segments.push_back({place, before, last ? place : points[i + 1], false});
    const auto index = static_cast<double>(i);
    const double share = index / (kPointsPerStroke - 1);
    const double pressure = 0.2 + 0.5 * std::sin(3 * share) + 0.05 * std::sin(index * 1.3);
    path.pressure.push_back({static_cast<float>(share), static_cast<float>(last ? 0 : pressure)});
  }
  // The end runs to the last point and back again.
  path.segments[points.size() - 2].out = points.back();
  return path;
}

const art::Document& documentOf(int strokes) {
  static std::map<int, art::Document> documents;
  const auto [found, isNew] = documents.try_emplace(strokes);
  art::Document& document = found->second;
  if (!isNew) return document;
  document.page = {0, 0, 595, 842};
  art::Style style;
  style.brush = art::CalligraphicBrush{};
  style.brush->size = {.value = 1.5, .variation = 1.2, .driver = art::BrushDriver::pressure};
  document.styles.push_back(style);
  art::Layer& layer = document.layers.emplace_back();
  for (int i = 0; i < strokes; ++i)
    layer.art.push_back({makeStroke(i)});
  return document;
}

// The numbers of the outlines as they are printed.
const std::vector<double>& numbersOf(int strokes) {
  static std::map<int, std::vector<double>> all;
  std::vector<double>& numbers = all[strokes];
  if (!numbers.empty()) return numbers;
  const std::string svg = render::toSvg(documentOf(strokes));
  const char* end = svg.data() + svg.size();
  for (const char* at = svg.data() + svg.find(" d=\""); at != end;) {
    double number = 0;
    const auto [behind, problem] = std::from_chars(at, end, number);
    if (problem == std::errc()) numbers.push_back(number);
    at = problem == std::errc() ? behind : at + 1;
  }
  return numbers;
}

void drawing(benchmark::State& state) {
  const art::Document& document = documentOf(static_cast<int>(state.range(0)));
  std::size_t bytes = 0;
  for (auto _ : state) {
    const std::string svg = render::toSvg(document);
    bytes = svg.size();
    benchmark::DoNotOptimize(svg.data());
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}

void floorOfNumbers(benchmark::State& state) {
  const std::vector<double>& numbers = numbersOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::string text;
    text.reserve(numbers.size() * 8);
    std::array<char, 32> digits;
    for (const double number : numbers) {
      char* end = std::to_chars(digits.data(), digits.data() + digits.size() - 1, number).ptr;
      *end++ = ' ';
      text.append(digits.data(), end);
    }
    benchmark::DoNotOptimize(text.data());
  }
  state.counters["numbers"] = static_cast<double>(numbers.size());
}

// One stroke through random places all over an A4 page.
const art::Document& denseDocumentOf(int points) {
  static std::map<int, art::Document> documents;
  const auto [found, isNew] = documents.try_emplace(points);
  art::Document& document = found->second;
  if (!isNew) return document;
  document.page = {0, 0, 595, 842};
  std::mt19937 random(9);
  art::Path path;
  for (int i = 0; i < points; ++i) {
    const art::Point point{static_cast<float>(random() % 595), static_cast<float>(random() % 842)};
    path.segments.push_back({point, point, point, true});
  }
  document.layers.emplace_back().art.push_back({std::move(path)});
  return document;
}

void painting(benchmark::State& state) {
  const art::Document& document = denseDocumentOf(static_cast<int>(state.range(0)));
  render::Options options;
  options.dpi = kDotsPerInch;
  for (auto _ : state) {
    const render::Picture picture = render::toPng(document, options);
    if (picture.refusal) state.SkipWithError(picture.refusal->c_str());
    benchmark::DoNotOptimize(picture.bytes.data());
  }
}

void floorOfEdges(benchmark::State& state) {
  const art::Path& path =
      std::get<art::Path>(denseDocumentOf(static_cast<int>(state.range(0))).layers[0].art[0].value);
  const render::Outline outline = render::Outliner().outline(path, render::Nib(nullptr));
  const double linesPerStep = kDotsPerInch / 72.0 / 100 * 16;
  std::vector<int> meetings(static_cast<std::size_t>(600 * 100 * linesPerStep));
  for (auto _ : state) {
    for (const render::Contour& contour : outline.contours) {
      for (std::size_t i = 1; i < contour.size(); ++i) {
        const auto [low, high] = std::minmax(contour[i - 1].v, contour[i].v);
        const double slope = static_cast<double>(contour[i].h - contour[i - 1].h) /
                             std::max(1, high - low) / linesPerStep;
        double x = 0;
        for (double line = low * linesPerStep; line < high * linesPerStep; ++line, x += slope) {
          const auto place = static_cast<std::size_t>(std::abs(x));
          ++meetings[std::min(place, meetings.size() - 1)];
        }
      }
    }
    benchmark::DoNotOptimize(meetings.data());
  }
}

std::string named(const char* function, int strokes) {
  return function + ("/" + std::to_string(strokes));
}

bool report(const bench::Collector& collector) {
  const std::string all = named("drawing", kAllStrokes);
  bool good = bench::within("outlines as SVG / their numbers printed",
                            collector.ratio(all, named("floor", kAllStrokes)), 2.5);
  good &= bench::within("twice the strokes / once the strokes",
                        collector.ratio(all, named("drawing", kAllStrokes / 2)), 2.1);
  const std::string dense = named("painting", kManyPoints);
  good &= bench::within("a dense stroke as PNG / its edges followed",
                        collector.ratio(dense, named("edges", kManyPoints)), 9);
  good &= bench::within("four times the points / once the points",
                        collector.ratio(dense, named("painting", kManyPoints / 4)), 4.4);
  return good;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::RegisterBenchmark("floor", floorOfNumbers)->Arg(kAllStrokes);
  benchmark::RegisterBenchmark("drawing", drawing)->Arg(kAllStrokes)->Arg(kAllStrokes / 2);
  benchmark::RegisterBenchmark("edges", floorOfEdges)->Arg(kManyPoints);
  benchmark::RegisterBenchmark("painting", painting)->Arg(kManyPoints)->Arg(kManyPoints / 4);
  bench::Collector collector;
  bench::runInRounds(argc, argv, 15, collector, {"--benchmark_min_time=0.1"});
  return report(collector) ? EXIT_SUCCESS : EXIT_FAILURE;
}
