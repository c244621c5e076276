#include "cli/pen_clock.h"

#include <gtest/gtest.h>

#include "tests/support/ink/ink_builder.h"
#include "tests/support/pen/pen_file_builder.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

using inktest::makeLayer;
using inktest::makeStroke;

TEST(PenTimes, AreRefusedWhereTheFileHoldsAnotherNumberOfPoints) {
  const pentest::TemporaryFolder folder;
  const std::filesystem::path file = folder / "a.pnx";
  pentest::PenFileBuilder()
      .descriptor()
      .coordinate(0, 0)
      .time(17, 0, 0, 9)
      .coordinate(0, 0)
      .write(file);

  Orvo::Document document;
  document.append(makeLayer({makeStroke({{}}), makeStroke({{}})}));
  EXPECT_TRUE(cli::setPenTimes(document, file));
  EXPECT_EQ(document.back().back().back().timestamp.value, 9U);

  Orvo::Document shorter;
  shorter.append(makeLayer({makeStroke({{}})}));
  EXPECT_FALSE(cli::setPenTimes(shorter, file));
  Orvo::Document longer;
  longer.append(makeLayer({makeStroke({{}, {}, {}})}));
  EXPECT_FALSE(cli::setPenTimes(longer, file));
  EXPECT_FALSE(cli::setPenTimes(document, folder / "missing.pnx"));
}

}  // namespace
