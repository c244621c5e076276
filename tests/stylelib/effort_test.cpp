// How much work it takes to read a library. The reader is compiled here so that it calls a function
// at every branch: the number of calls is the same in every run on every machine.
#include <gtest/gtest.h>

#include "tests/stylelib/hostile_libraries.h"

namespace {

std::uint64_t steps = 0;

std::uint64_t stepsFor(const std::string& library) {
  steps = 0;
  libtest::read(library);
  return steps;
}

struct Shape {
  const char* name;
  std::string (*make)(int n);
  int n;
};

void PrintTo(const Shape& shape, std::ostream* out) {
  *out << shape.name;
}

class HostileShape : public testing::TestWithParam<Shape> {};

TEST_P(HostileShape, TakesAboutTwiceTheWorkWhenItIsTwiceAsLarge) {
  const auto& [name, make, n] = GetParam();
  const std::uint64_t once = stepsFor(make(n));
  const std::uint64_t twice = stepsFor(make(2 * n));
  EXPECT_GT(once, static_cast<std::uint64_t>(n));
  // Searching by name makes it a little more than twice; comparing everything with everything would
  // make it four times.
  EXPECT_LT(static_cast<double>(twice), 2.5 * static_cast<double>(once));
}

INSTANTIATE_TEST_SUITE_P(
    OfLibraries, HostileShape,
    testing::Values(Shape{"ManyListedStyles", libtest::manyListedStyles, 4000},
                    Shape{"NestedBrushFilters", libtest::nestedBrushFilters, 10'000},
                    Shape{"ManyNestedBrushFilters", libtest::manyNestedBrushFilters, 100},
                    Shape{"LongBrushName", libtest::longBrushName, 5000},
                    Shape{"ObjectsWithoutEnd", libtest::objectsWithoutEnd, 5000},
                    Shape{"ObjectStreamsWithoutEnd", libtest::objectStreamsWithoutEnd, 5000},
                    Shape{"ObjectStreams", libtest::objectStreams, 5000},
                    Shape{"BlocksOfOneStream", libtest::blocksOfOneStream, 5000},
                    Shape{"LengthsBehindBlanks", libtest::lengthsBehindBlanks, 5000}),
    [](const auto& shape) { return shape.param.name; });

}  // namespace

// The compiler calls it by this name.
// NOLINTNEXTLINE(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
extern "C" void __sanitizer_cov_trace_pc() {
  ++steps;
}
