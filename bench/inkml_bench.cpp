// Reading and writing ink files. Reading is measured against the XML library's own load of the same
// file; writing against the same seven numbers formatted into one buffer, plus the library's print
// of a tree that holds them.

#include <array>
#include <benchmark/benchmark.h>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <limits>
#include <malloc.h>
#include <string>
#include <sys/wait.h>
#include <tinyxml.h>
#include <unistd.h>
#include <vector>

#include "bench/ratios.h"
#include "inkml/definitions.h"
#include "inkml/document_serializer.h"
#include "platform/file.h"
#include "platform/paths.h"

namespace {

using Orvo::Document;
using Orvo::DocumentSerializer;
using Orvo::InkMLDefinitions;
using Orvo::Layer;
using Orvo::Point;
using Orvo::Stroke;

constexpr int kLongTraces = 200;
constexpr int kLongTracePoints = 1500;
constexpr int kShortTraces = 200'000;

struct Size {
  int traces;
  int pointsOfTrace;
};

Size sizeOf(const benchmark::State& state) {
  return {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
}

Point pointOf(std::uint32_t i) {
  Point point(i * 7919 % 21000 / 10.0, i * 104729 % 29700 / 10.0);
  point.pressure.value = i % 1024;
  point.tiltX.value = static_cast<std::int32_t>(i % 90) - 45;
  point.tiltY.value = static_cast<std::int32_t>(i % 60) - 30;
  point.timestamp.value = i * 8;
  return point;
}

void fill(Document& document, Size size) {
  document.append(Layer());
  Layer& layer = document.back();
  for (int trace = 0; trace < size.traces; ++trace) {
    Stroke stroke;
    for (int i = 0; i < size.pointsOfTrace; ++i)
      stroke.append(pointOf(static_cast<std::uint32_t>(trace * size.pointsOfTrace + i)));
    layer.append(stroke);
  }
}

// The path of a file of this run, the same in the processes that it starts.
std::string pathFor(Size size) {
  static const std::string start =
      (std::filesystem::temp_directory_path() / ("inkml_bench_" + std::to_string(getpid())))
          .string();
  return start + "_" + std::to_string(size.traces) + "_" + std::to_string(size.pointsOfTrace) +
         ".kvo";
}

// Writes the file, with whole coordinates because they are read as whole numbers.
bool makeFile(Size size) {
  Document document;
  fill(document, size);
  for (Layer& layer : document) {
    for (Stroke& stroke : layer) {
      for (Point& point : stroke) {
        point.x.value = static_cast<int>(point.x.value);
        point.y.value = static_cast<int>(point.y.value);
      }
    }
  }
  InkMLDefinitions definitions;
  return DocumentSerializer(&document).write(pathFor(size).c_str(), definitions);
}

double processorSeconds() {
  std::timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The processor time in seconds that `work` takes the second time, when its memory is already
// allocated; negative when it fails.
template <class Work>
double timeOf(Work work) {
  if (!work()) return -1.0;
  const double start = processorSeconds();
  const bool good = work();
  const double end = processorSeconds();
  return good ? end - start : -1.0;
}

double timeOfLoading(Size size) {
  const std::string path = pathFor(size);
  return timeOf([&] {
    const platform::File file(std::fopen(path.c_str(), "rb"));
    TiXmlDocument xml;
    return xml.LoadFile(file.get(), TIXML_ENCODING_UTF8);
  });
}

double timeOfReading(Size size) {
  const std::wstring path = platform::nativePathToWide(pathFor(size));
  return timeOf([&] {
    Document document;
    InkMLDefinitions definitions;
    return DocumentSerializer(&document).read(path.c_str(), definitions);
  });
}

char* formatPoint(const Point& point, char* at, char* end) {
  for (const double value : {point.x.value, point.y.value, point.z.value}) {
    at = std::to_chars(at, end, value, std::chars_format::general, 6).ptr;
    *at++ = ' ';
  }
  at = std::to_chars(at, end, point.pressure.value).ptr;
  *at++ = ' ';
  for (const int value : {point.tiltX.value, point.tiltY.value}) {
    at = std::to_chars(at, end, value).ptr;
    *at++ = ' ';
  }
  at = std::to_chars(at, end, point.timestamp.value).ptr;
  *at++ = ',';
  return at;
}

void formatDocument(const Document& document, std::vector<char>& buffer) {
  for (const Layer& layer : document) {
    for (const Stroke& stroke : layer) {
      char* at = buffer.data();
      for (const Point& point : stroke)
        at = formatPoint(point, at, buffer.data() + buffer.size());
      benchmark::DoNotOptimize(at);
    }
  }
}

bool print(const TiXmlDocument& xml, const std::string& path) {
  const platform::File file(std::fopen(path.c_str(), "w"));
  if (!file) return false;
  xml.Print(file.get(), 0);
  return std::fflush(file.get()) == 0;
}

double timeOfFormattingAndPrinting(Size size) {
  Document document;
  fill(document, size);
  InkMLDefinitions definitions;
  TiXmlDocument xml;
  DocumentSerializer(&document).buildTree(xml, definitions);
  std::vector<char> buffer(192 * static_cast<std::size_t>(size.pointsOfTrace));
  return timeOf([&] {
    formatDocument(document, buffer);
    return print(xml, pathFor(size) + ".out");
  });
}

double timeOfWriting(Size size) {
  Document document;
  fill(document, size);
  InkMLDefinitions definitions;
  const std::wstring path = platform::nativePathToWide(pathFor(size) + ".out");
  return timeOf([&] { return DocumentSerializer(&document).write(path.c_str(), definitions); });
}

// Does the work in a separate process: millions of small blocks leave the heap in a state that
// would affect the next measurement more than the work that is measured. The process keeps its
// memory and merges freed blocks at once.
template <class Work>
double inChild(Work work) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) std::abort();
  const pid_t child = fork();
  if (child == 0) {
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MXFAST, 0);
    const double seconds = work();
    const bool told = write(ends[1], &seconds, sizeof seconds) == sizeof seconds;
    _exit(told ? 0 : 1);
  }
  close(ends[1]);
  double seconds = -1.0;
  if (child < 0 || read(ends[0], &seconds, sizeof seconds) != sizeof seconds) seconds = -1.0;
  close(ends[0]);
  waitpid(child, nullptr, 0);
  return seconds;
}

void measure(benchmark::State& state, double (*work)(Size)) {
  const Size size = sizeOf(state);
  for (auto _ : state) {
    const double seconds = inChild([&] { return work(size); });
    if (seconds < 0.0) state.SkipWithError("the work failed");
    state.SetIterationTime(seconds);
  }
}

std::string named(const std::string& function, Size size) {
  return function + "/" + std::to_string(size.traces) + "/" + std::to_string(size.pointsOfTrace);
}

constexpr Size kLongOnes{kLongTraces, kLongTracePoints};
constexpr Size kShortOnes{kShortTraces, 1};

Size doubled(Size size) {
  return {2 * size.traces, size.pointsOfTrace};
}

bool report(const bench::Collector& collector) {
  const auto ratio = [&](const char* a, Size sizeOfA, const char* b, Size sizeOfB) {
    return collector.ratio(named(a, sizeOfA), named(b, sizeOfB));
  };
  bool good = bench::within("reading / the library's load, 200 traces of 1,500 points",
                            ratio("reading", kLongOnes, "load", kLongOnes), 2.0);
  good &= bench::within("reading / the library's load, 200,000 traces of 1 point",
                        ratio("reading", kShortOnes, "load", kShortOnes), 2.6);
  good &= bench::within("writing / floor, 200 traces of 1,500 points",
                        ratio("writing", kLongOnes, "floor", kLongOnes), 1.5);
  good &= bench::within("writing / floor, 200,000 traces of 1 point",
                        ratio("writing", kShortOnes, "floor", kShortOnes), 1.5);
  for (const char* work : {"reading", "writing"}) {
    const std::string what = std::string(work) + " twice the document / once, ";
    good &=
        bench::within(what + "long traces", ratio(work, doubled(kLongOnes), work, kLongOnes), 2.1);
    good &= bench::within(what + "short traces", ratio(work, doubled(kShortOnes), work, kShortOnes),
                          2.1);
  }
  return good;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<Size> sizes = {kLongOnes, doubled(kLongOnes), kShortOnes, doubled(kShortOnes)};
  for (const Size size : sizes) {
    pathFor(size);  // Known before the first process is started.
    if (inChild([&] { return makeFile(size) ? 1.0 : -1.0; }) < 0.0) return EXIT_FAILURE;
    const auto add = [&](const char* name, double (*work)(Size)) {
      benchmark::RegisterBenchmark(name, measure, work)
          ->Args({size.traces, size.pointsOfTrace})
          ->UseManualTime()
          ->Iterations(1);
    };
    add("load", timeOfLoading);
    add("floor", timeOfFormattingAndPrinting);
    add("reading", timeOfReading);
    add("writing", timeOfWriting);
  }
  bench::Collector collector;
  bench::runInRounds(argc, argv, 9, collector);
  for (const Size size : sizes) {
    std::filesystem::remove(pathFor(size));
    std::filesystem::remove(pathFor(size) + ".out");
  }
  return report(collector) ? EXIT_SUCCESS : EXIT_FAILURE;
}
