// Translating InkML of other programs: 100 MB of traces, against scanning the same bytes for their
// numbers; and twice the document against once, in time and in memory.

#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bench/ratios.h"
#include "translate/translation.h"

namespace {

constexpr int kMegabyte = 1'000'000;
constexpr int kLongTrace = 1000;  // Points.
constexpr int kShortTrace = 5;
constexpr int kSize = 50;  // MB, the smaller of the two documents that are compared.
constexpr double kMostSeconds = 10;

struct Shape {
  int pointsOfTrace;
  bool hasDifferences;
};

std::string traceOf(Shape shape, unsigned seed) {
  std::string text = "<trace>";
  for (int i = 0; i < shape.pointsOfTrace; ++i) {
    seed = seed * 1664525 + 1013904223;
    if (i > 0) text += ',';
    if (i > 0 && shape.hasDifferences) {
      const int dx = static_cast<int>(seed >> 16) % 90 - 45;
      const int dy = static_cast<int>(seed >> 24) % 90 - 45;
      text += (i == 1 ? "'" : "") + std::to_string(dx) + (i == 1 ? "'" : " ") + std::to_string(dy);
    } else {
      text += std::to_string(seed % 20000) + " " + std::to_string(seed / 20000 % 20000);
    }
  }
  return text + "</trace>\n";
}

std::string documentOf(Shape shape, int megabytes) {
  std::string text =
      "<ink xmlns='http://www.w3.org/2003/InkML'><traceFormat><channel name='X' type='integer' "
      "units='himetric'/><channel name='Y' type='integer' units='himetric'/></traceFormat>\n"
      "<traceGroup>\n";
  const auto size = static_cast<std::size_t>(megabytes) * kMegabyte;
  text.reserve(size + static_cast<std::size_t>(kMegabyte));
  for (unsigned seed = 1; text.size() < size; ++seed)
    text += traceOf(shape, seed);
  return text + "</traceGroup></ink>\n";
}

// The floor: every number of the bytes is read, and nothing kept.
void scan(benchmark::State& state, Shape shape, int megabytes) {
  const std::string text = documentOf(shape, megabytes);
  for (auto _ : state) {
    long sum = 0;
    long number = 0;
    for (const char c : text) {
      if (c >= '0' && c <= '9') {
        number = 10 * number + (c - '0');
      } else {
        sum += number;
        number = 0;
      }
    }
    benchmark::DoNotOptimize(sum);
  }
}

struct Cost {
  double seconds = -1;
  double bytesOfPoint = 0;  // The most memory at a time beyond the document's own bytes.
  double points = 0;
};

double secondsNow() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double mostBytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  constexpr double kKibibyte = 1024;
  return kKibibyte * static_cast<double>(usage.ru_maxrss);
}

Cost translateOnce(Shape shape, int megabytes) {
  const std::string text = documentOf(shape, megabytes);
  const double before = mostBytes();
  const double start = secondsNow();
  const translate::Translation result = translate::translateInk(text);
  Cost cost;
  cost.seconds = result.problem.empty() ? secondsNow() - start : -1;
  cost.points = static_cast<double>(result.points);
  cost.bytesOfPoint = (mostBytes() - before) / cost.points;
  return cost;
}

// In a process of its own, whose memory nothing else has used.
Cost inChild(Shape shape, int megabytes) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) std::abort();
  const pid_t child = fork();
  if (child == 0) {
    const Cost cost = translateOnce(shape, megabytes);
    const bool told = write(ends[1], &cost, sizeof cost) == sizeof cost;
    _exit(told ? 0 : 1);
  }
  close(ends[1]);
  Cost cost;
  if (child < 0 || read(ends[0], &cost, sizeof cost) != sizeof cost) cost = Cost();
  close(ends[0]);
  waitpid(child, nullptr, 0);
  return cost;
}

void measure(benchmark::State& state, Shape shape, int megabytes) {
  for (auto _ : state) {
    const Cost cost = inChild(shape, megabytes);
    if (cost.seconds < 0) state.SkipWithError("the document was not translated");
    state.SetIterationTime(cost.seconds);
    state.counters["bytesOfPoint"] = cost.bytesOfPoint;
    state.counters["points"] = cost.points;
  }
}

struct Kind {
  const char* name;
  Shape shape;
  double limit;         // Of the ratio to the floor.
  double bytesOfPoint;  // Likewise.
};

constexpr std::array<Kind, 3> kKinds = {{
    {"long", {kLongTrace, false}, 40, 200},
    {"differences", {kLongTrace, true}, 40, 200},
    {"short", {kShortTrace, false}, 60, 400},
}};

std::string named(const char* work, const Kind& kind, int megabytes) {
  return std::string(work) + "_" + kind.name + "_" + std::to_string(megabytes);
}

bool report(const bench::Collector& collector) {
  bool good = true;
  for (const Kind& kind : kKinds) {
    const std::string large = named("translate", kind, 2 * kSize);
    const std::string small = named("translate", kind, kSize);
    const std::string what = std::string(", ") + kind.name + " traces";
    good &= bench::within("seconds for 100 MB" + what, collector.seconds.at(large), kMostSeconds);
    good &= bench::within("translating / scanning" + what,
                          collector.ratio(large, named("scan", kind, 2 * kSize)), kind.limit);
    good &= bench::within("twice the document / once" + what, collector.ratio(large, small), 2.1);
    good &= bench::within("bytes for each point" + what,
                          collector.counters.at(large).at("bytesOfPoint"), kind.bytesOfPoint);
  }
  return good;
}

}  // namespace

int main(int argc, char** argv) {
  for (const Kind& kind : kKinds) {
    for (const int megabytes : {kSize, 2 * kSize}) {
      benchmark::RegisterBenchmark(named("translate", kind, megabytes).c_str(), measure, kind.shape,
                                   megabytes)
          ->UseManualTime()
          ->Iterations(1);
    }
    benchmark::RegisterBenchmark(named("scan", kind, 2 * kSize).c_str(), scan, kind.shape,
                                 2 * kSize)
        ->Iterations(1);
  }
  bench::Collector collector;
  bench::runInRounds(argc, argv, 3, collector);
  return report(collector) ? EXIT_SUCCESS : EXIT_FAILURE;
}
