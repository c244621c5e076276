#include "cli/ink_preparation.h"

#include <cmath>
#include <gtest/gtest.h>

#include "cli/read_back.h"
#include "cli/recording.h"
#include "inkml/document_serializer.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

using inktest::makeLayer;
using inktest::makeStroke;

TEST(Preparation, RoundsEachCoordinateHalvesUp) {
  Orvo::Document document;
  document.append(makeLayer({makeStroke({{.x = 0.5, .y = 1.4, .z = 2.6, .pressure = 3},
                                         {.x = -0.5, .y = -1.4, .z = -2.6, .time = 4},
                                         {.x = -0.3, .y = 5, .z = -6}})}));
  cli::roundCoordinates(document);
  const std::vector<inktest::Seven> rounded{{.x = 1, .y = 1, .z = 3, .pressure = 3},
                                            {.x = 0, .y = -1, .z = -3, .time = 4},
                                            {.x = 0, .y = 5, .z = -6}};
  EXPECT_EQ(inktest::pointsOf(document.back().back()), rounded);
  for (const Orvo::Point& point : document.back().back())
    EXPECT_FALSE(point.x.value == 0 && std::signbit(point.x.value)) << "it would be written as -0";
}

// Unusual numbers and texts of every kind, including bytes that are not UTF-8.
TEST(Preparation, LetsEveryDocumentOpenAgain) {
  const pentest::TemporaryFolder folder;
  const std::wstring name = cli::wideName(folder / "a.kvo");
  constexpr unsigned kDocuments = 1000;
  for (unsigned seed = 0; seed < kDocuments; ++seed) {
    inktest::InkDice dice(seed);
    Orvo::Document document = dice.document();
    Orvo::InkMLDefinitions definitions;
    dice.fill(definitions);
    const auto cut = [&] { return dice.text() + static_cast<char>(0x80 + dice.below(0x80)); };
    document.annotations()[cut()] = cut();
    for (Orvo::Brush& brush : definitions.brushes)
      brush.color.value = cut();

    cli::roundCoordinates(document);
    cli::replaceForbiddenCharacters(document, definitions);
    cli::declareDefaultContext(definitions, cli::lastTime(document));
    ASSERT_TRUE(Orvo::DocumentSerializer(&document).write(name.c_str(), definitions));
    const Orvo::InkReading found = Orvo::readInk(name.c_str());
    EXPECT_FALSE(cli::explainUnusable(found.report)) << "seed " << seed;
    const cli::ReadBackDifferences differences = cli::compareReadBack(document, definitions, found);
    EXPECT_EQ(differences.layers + differences.strokes + differences.fractions, 0U)
        << "seed " << seed;
  }
}

}  // namespace
