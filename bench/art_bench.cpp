// Building the art of a drawing, including all host calls, against a floor measured in the same
// run: copying the ink document once and mapping its points into the same arrays.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "bench/ratios.h"
#include "embedded/session.h"
#include "hostapi/ai_path_suite.h"
#include "hostapi/ai_tablet_data_suite.h"
#include "penfile/document_loader.h"
#include "platform/file.h"
#include "platform/paths.h"
#include "plugin/page_map.h"

extern "C" hostapi::SPErr PluginMain(const char* caller, const char* selector, void* message);

namespace {

constexpr int kStrokes = 1000;
constexpr int kPointsPerStroke = 100;
constexpr double kLimit = 2.5;

// A recording of loops all over the sheet, removed at the end.
class Recording {
 public:
  Recording() : path_(std::filesystem::temp_directory_path() / "penwick-art-bench.pnx") {
    std::ofstream file(path_, std::ios::binary);
    put(file, {1, 6, 0, 2, 0, 0});
    for (int stroke = 0; stroke < kStrokes; ++stroke) {
      put(file, {241, 3, 0, 241, 3, 1});
      for (int i = 0; i < kPointsPerStroke; ++i) {
        const int x = stroke * 7919 % 18000 + 10 * i;
        const int y = stroke * 104729 % 13000 + (i % 20) * 7;
        put(file, {100, 6, 6, 0, i >> 2, i, 97, 6, x >> 8, x, y >> 8, y});
      }
    }
  }
  ~Recording() { std::filesystem::remove(path_); }
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  std::string name() const { return path_.string(); }
  Orvo::SharedRef<Orvo::Document> load() const {
    return Orvo::loadDocument(platform::nativePathToWide(name()).c_str());
  }

 private:
  static void put(std::ofstream& file, std::initializer_list<int> bytes) {
    for (const int byte : bytes)
      file.put(static_cast<char>(byte));
  }

  std::filesystem::path path_;
};

const Recording& recording() {
  static const Recording made;
  return made;
}

double cpuSeconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// One "AI Go" loads and builds. Loading alone is measured right after it and subtracted.
void building(benchmark::State& state) {
  embedded::Options options;
  options.journalChecksums = false;
  options.captureOutput = false;
  embedded::Session session(embedded::Module::ofEntry(&PluginMain), options);
  session.start();
  for (auto _ : state) {
    session.host().newDocument();
    const double start = cpuSeconds();
    if (session.sendFileFormat("AI Go", recording().name()) != 0) state.SkipWithError("refused");
    const double opened = cpuSeconds();
    benchmark::DoNotOptimize(recording().load());
    const double loaded = cpuSeconds();
    state.SetIterationTime(std::max(0.0, (opened - start) - (loaded - opened)));
  }
}

void mapPoints(const Orvo::Document& document) {
  hostapi::AIDocumentSetup page{};
  const PageMap map(document.bounds(), page);
  for (const Orvo::Layer& layer : document) {
    for (const Orvo::Stroke& stroke : layer) {
      std::vector<hostapi::AIPathSegment> segments;
      std::vector<hostapi::AITabletProfile> profiles;
      segments.reserve(stroke.size());
      profiles.reserve(stroke.size());
      for (const Orvo::Point& point : stroke) {
        const hostapi::AIRealPoint place = map(point);
        segments.push_back({place, place, place, 0});
        profiles.push_back({0, static_cast<float>(point.pressure.value * kPressureScale)});
      }
      benchmark::DoNotOptimize(segments.data());
      benchmark::DoNotOptimize(profiles.data());
    }
  }
}

void floorOfBuilding(benchmark::State& state) {
  const Orvo::SharedRef<Orvo::Document> document = recording().load();
  for (auto _ : state) {
    const double start = cpuSeconds();
    {
      const Orvo::Document copy = *document;
      mapPoints(copy);
    }
    state.SetIterationTime(cpuSeconds() - start);
  }
}

}  // namespace

int main(int argc, char** argv) {
  for (const auto& [name, function] :
       {std::pair{"building", &building}, {"floor", &floorOfBuilding}}) {
    benchmark::RegisterBenchmark(name, function)->UseManualTime();
  }
  // What the plug-in prints would get mixed up with the figures.
  const platform::File figures(fdopen(dup(STDOUT_FILENO), "w"));
  if (!figures || std::freopen("/dev/null", "w", stdout) == nullptr ||
      std::freopen("/dev/null", "w", stderr) == nullptr) {
    return EXIT_FAILURE;
  }
  bench::Collector collector;
  bench::runInRounds(argc, argv, 9, collector);
  const double ratio = collector.ratio("building", "floor");
  const bool written =
      std::fprintf(figures.get(), "building art %.2f ms, floor %.2f ms\n",
                   collector.seconds["building"] * 1e3, collector.seconds["floor"] * 1e3) > 0;
  const bool good = bench::within(figures.get(), "building art / floor", ratio, kLimit);
  return written && good ? EXIT_SUCCESS : EXIT_FAILURE;
}
