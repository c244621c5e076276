// The fuzzer's corpus.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

#include "tests/stylelib/library_builder.h"

namespace {

void expectDrawable(const art::CalligraphicBrush& brush) {
  EXPECT_GE(brush.size.lightest(), 0);
  EXPECT_GT(brush.size.heaviest(), 0);
  EXPECT_LE(brush.size.heaviest(), 1296);
  EXPECT_GE(brush.roundness.lightest(), 0);
  EXPECT_LE(brush.roundness.heaviest(), 100);
  EXPECT_TRUE(std::isfinite(brush.angle.lightest()) && std::isfinite(brush.angle.heaviest()));
}

void expectSoundReading(const stylelib::NativeLibrary& library) {
  EXPECT_NE(library.problem.empty(), library.styles.empty());
  std::set<std::string> names;
  for (const art::Style& style : library.styles) {
    EXPECT_TRUE(names.insert(style.name).second) << style.name;
    if (style.brush) expectDrawable(*style.brush);
  }
}

TEST(LibraryCorpus, EveryFileIsReadSoundly) {
  std::size_t count = 0;
  std::size_t libraries = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PENWICK_LIBRARY_CORPUS)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const stylelib::NativeLibrary library =
        libtest::read({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    expectSoundReading(library);
    ASSERT_FALSE(testing::Test::HasFailure()) << entry.path();
    ++count;
    if (!library.styles.empty()) ++libraries;
  }
  EXPECT_GT(count, 100U);
  EXPECT_GT(libraries, 20U);
}

}  // namespace
