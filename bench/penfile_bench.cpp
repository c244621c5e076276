// Reading a pen recording, against a floor measured in the same run: the same bytes read one by one
// through the C library's buffer, and the same points put into the same containers.

#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "bench/ratios.h"
#include "penfile/pnx_parser.h"
#include "platform/file.h"

namespace {

constexpr std::size_t kPrefix = alignof(std::max_align_t);
std::size_t liveBytes = 0;

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
  auto* block = static_cast<std::byte*>(std::malloc(size + kPrefix));
  if (block == nullptr) throw std::bad_alloc();
  *reinterpret_cast<std::size_t*>(block) = size;
  liveBytes += size;
  return block + kPrefix;
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
  if (memory == nullptr) return;
  std::byte* block = static_cast<std::byte*>(memory) - kPrefix;
  liveBytes -= *reinterpret_cast<std::size_t*>(block);
  std::free(block);
}

void operator delete(void* memory, std::size_t) noexcept {
  operator delete(memory);
}

namespace {

using Orvo::Layer;
using Orvo::PnxDocument;
using Orvo::PnxParser;
using Orvo::Point;
using Orvo::Stroke;

constexpr int kPointCount = 25'000;
// Too many for any cache: with fewer, twice the points might no longer fit where once the points
// did.
constexpr int kManyPoints = 200'000;
constexpr int kLongStroke = 1000;
constexpr int kShortStroke = 17;

void put(std::FILE* file, std::initializer_list<int> bytes) {
  for (const int byte : bytes)
    if (std::fputc(byte & 0xFF, file) == EOF) std::abort();
}

int raw(double value) {
  return static_cast<int>(value);
}

// Strokes that wind in small loops all over the sheet, each point with pressure and time as a real
// pen delivers them.
platform::File makeRecording(int points, int pointsPerStroke) {
  platform::File owner(std::tmpfile());
  if (!owner) std::abort();
  std::FILE* const file = owner.get();
  put(file, {1, 6, 0, 2, 0, 0});
  for (int i = 0; i < points; ++i) {
    const int stroke = i / pointsPerStroke;
    const double radius = 100.0 + i % pointsPerStroke * 0.3;
    const int x = raw(stroke * 7919 % 18000 + 500 + radius * std::cos(i * 0.1));
    const int y = raw(stroke * 104729 % 13000 + 500 + radius * std::sin(i * 0.1));
    if (i % pointsPerStroke == 0) put(file, {241, 3, 0, 241, 3, 1});
    put(file, {97, 6, x >> 8, x, y >> 8, y});
    put(file, {100, 6, 1, 0, i >> 6 & 0x0F, i});
    put(file, {194, 6, 17, i >> 16 & 0x7F, i >> 8 & 0x7F, i & 0x7F});
  }
  if (std::fflush(file) != 0) std::abort();
  return owner;
}

// The parser closes the file it is given, so each round opens the recording again by its
// descriptor.
class Recording {
 public:
  Recording(int points, int pointsPerStroke) : file_(makeRecording(points, pointsPerStroke)) {}

  platform::File open() const {
    const std::string path = "/proc/self/fd/" + std::to_string(fileno(file_.get()));
    return platform::File(std::fopen(path.c_str(), "rb"));
  }

 private:
  platform::File file_;
};

Point floorPoint(const std::array<int, 18>& bytes) {
  const auto signed16 = [&](std::size_t i) {
    return static_cast<std::int16_t>(bytes[i] << 8 | bytes[i + 1]);
  };
  Point point((signed16(2) + 5.0) / 10.0, (signed16(4) + 2.5) / 5.0);
  point.pressure.value = static_cast<std::uint32_t>((bytes[10] << 8 | bytes[11]) / 4);
  point.timestamp.value = static_cast<std::uint32_t>(bytes[15] << 16 | bytes[16] << 8 | bytes[17]);
  return point;
}

Stroke* addFloorStroke(PnxDocument& document, const Point& point) {
  Stroke stroke;
  stroke.append(point);
  if (document.size() == 0) document.append(Layer());
  document.back().append(stroke);
  return &document.back().back();
}

void readFloor(std::FILE* file, PnxDocument& document, int points, int pointsPerStroke) {
  for (int i = 0; i < 6; ++i)
    benchmark::DoNotOptimize(platform::readByte(file));
  Stroke* stroke = nullptr;
  for (int i = 0; i < points; ++i) {
    const bool startsStroke = i % pointsPerStroke == 0;
    for (int skipped = 0; startsStroke && skipped < 6; ++skipped) {
      benchmark::DoNotOptimize(platform::readByte(file));
    }
    std::array<int, 18> bytes;
    for (int& byte : bytes)
      byte = platform::readByte(file);
    if (startsStroke) {
      stroke = addFloorStroke(document, floorPoint(bytes));
    } else {
      stroke->append(floorPoint(bytes));
    }
  }
}

void floorOfParsing(benchmark::State& state) {
  const auto points = static_cast<int>(state.range(0));
  const auto pointsPerStroke = static_cast<int>(state.range(1));
  const Recording recording(points, pointsPerStroke);
  for (auto _ : state) {
    const platform::File file = recording.open();
    const Orvo::SharedRef<PnxDocument> document(new PnxDocument());
    readFloor(file.get(), *document, points, pointsPerStroke);
  }
}

void parsing(benchmark::State& state) {
  const auto points = static_cast<int>(state.range(0));
  const Recording recording(points, static_cast<int>(state.range(1)));
  std::size_t memory = 0;
  for (auto _ : state) {
    const std::size_t before = liveBytes;
    PnxParser parser(recording.open());
    if (!parser.parse()) state.SkipWithError("the recording did not open");
    memory = liveBytes - before;
  }
  state.counters["bytes/point"] = static_cast<double>(memory) / points;
}

std::string named(const std::string& function, int points, int pointsPerStroke) {
  return function + "/" + std::to_string(points) + "/" + std::to_string(pointsPerStroke);
}

bool report(const bench::Collector& collector) {
  const auto ratio = [&](const std::string& a, const std::string& b) {
    return collector.ratio(a, b);
  };
  const auto bytes = [&](const std::string& name) {
    return collector.counters.at(name).at("bytes/point");
  };
  const std::string parse = named("parsing", kPointCount, kLongStroke);
  const std::string parseShort = named("parsing", kPointCount, kShortStroke);
  bool good = bench::within("parsing / floor, 1,000 points a stroke",
                            ratio(parse, named("floor", kPointCount, kLongStroke)), 1.4);
  good &= bench::within("parsing / floor, 17 points a stroke",
                        ratio(parseShort, named("floor", kPointCount, kShortStroke)), 1.4);
  const auto doubling = [&](int pointsPerStroke) {
    return ratio(named("parsing", 2 * kManyPoints, pointsPerStroke),
                 named("parsing", kManyPoints, pointsPerStroke));
  };
  good &= bench::within("twice the points / once the points, 1,000 a stroke", doubling(kLongStroke),
                        2.1);
  good &=
      bench::within("twice the points / once the points, 17 a stroke", doubling(kShortStroke), 2.1);
  good &= bench::within("bytes for each point, 1,000 points a stroke", bytes(parse), 130);
  good &= bench::within("bytes for each point, 17 points a stroke", bytes(parseShort), 165);
  return good;
}

}  // namespace

int main(int argc, char** argv) {
  for (const int pointsPerStroke : {kLongStroke, kShortStroke}) {
    benchmark::RegisterBenchmark("floor", floorOfParsing)->Args({kPointCount, pointsPerStroke});
    for (const int points : {kPointCount, kManyPoints, 2 * kManyPoints}) {
      benchmark::RegisterBenchmark("parsing", parsing)->Args({points, pointsPerStroke});
    }
  }
  bench::Collector collector;
  bench::runInRounds(argc, argv, 80, collector, {"--benchmark_min_time=0.02"});
  return report(collector) ? EXIT_SUCCESS : EXIT_FAILURE;
}
