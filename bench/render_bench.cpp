// Drawing outlines as SVG, against a floor measured in the same run: as many numbers printed with
// to_chars into one string, each at its shortest, the blanks between them included.

#include <array>
#include <benchmark/benchmark.h>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "art/document.h"
#include "bench/ratios.h"
#include "render/svg.h"

namespace {

constexpr int pointsOfStroke = 100;
constexpr int allStrokes = 3'000;

// A stroke as a pen makes it: points a millimetre apart and less, on a line that winds and
// trembles, the pressure rising and falling; its pieces and its end as the plug-in builds them.
art::Path makeStroke(int number) {
  art::Path path;
  path.style = 0;
  std::vector<art::Point> points;
  for (int i = 0; i < pointsOfStroke; ++i) {
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
    const double share = index / (pointsOfStroke - 1);
    const double pressure = 0.2 + 0.5 * std::sin(3 * share) + 0.05 * std::sin(index * 1.3);
    path.pressure.push_back({static_cast<float>(share), static_cast<float>(last ? 0 : pressure)});
  }
  // Towards the last point and back again.
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

std::string named(const char* function, int strokes) {
  return function + ("/" + std::to_string(strokes));
}

bool report(const bench::Collector& collector) {
  const std::string all = named("drawing", allStrokes);
  bool good = bench::within("outlines as SVG / their numbers printed",
                            collector.ratio(all, named("floor", allStrokes)), 2.5);
  good &= bench::within("twice the strokes / once the strokes",
                        collector.ratio(all, named("drawing", allStrokes / 2)), 2.1);
  return good;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::RegisterBenchmark("floor", floorOfNumbers)->Arg(allStrokes);
  benchmark::RegisterBenchmark("drawing", drawing)->Arg(allStrokes)->Arg(allStrokes / 2);
  bench::Collector collector;
  bench::runInRounds(argc, argv, 15, collector, {"--benchmark_min_time=0.1"});
  return report(collector) ? EXIT_SUCCESS : EXIT_FAILURE;
}
