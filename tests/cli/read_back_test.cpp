#include "cli/read_back.h"

#include <gtest/gtest.h>

#include "tests/support/ink/ink_builder.h"

namespace {

using inktest::makeLayer;
using inktest::makeStroke;

const Orvo::Stroke kStroke = makeStroke({{.x = 1, .y = 2}, {.x = 3, .y = 4}});

Orvo::Document documentOf(std::initializer_list<Orvo::Layer> layers) {
  Orvo::Document document;
  for (const Orvo::Layer& layer : layers)
    document.append(layer);
  return document;
}

// What is said of `found` where `meant` was to be written, both without definitions.
std::string said(const Orvo::Document& meant, const Orvo::Document& found) {
  const Orvo::InkMLDefinitions none;
  const Orvo::InkReading reading{
      std::make_unique<Orvo::Document>(found), std::make_unique<Orvo::InkMLDefinitions>(), {}};
  return describe(cli::compareReadBack(meant, none, reading));
}

TEST(ReadBack, HasNothingToSayOfTheSameDocument) {
  const Orvo::Document document = documentOf({makeLayer({kStroke, kStroke}), makeLayer({})});
  EXPECT_EQ(said(document, document), "");
}

TEST(ReadBack, NamesLayersThatAreLost) {
  const Orvo::Layer layer = makeLayer({kStroke});
  EXPECT_EQ(said(documentOf({layer, layer}), documentOf({layer})), "1 layer is lost");
  EXPECT_EQ(said(documentOf({layer, layer}), documentOf({})), "2 layers are lost");
}

TEST(ReadBack, NamesStrokesThatAreLostOrOfAnotherLength) {
  const Orvo::Stroke shorter = makeStroke({{.x = 1, .y = 2}});
  const Orvo::Document meant = documentOf({makeLayer({kStroke, kStroke, kStroke})});
  EXPECT_EQ(said(meant, documentOf({makeLayer({kStroke, kStroke})})),
            "1 stroke is lost or has another number of points");
  EXPECT_EQ(said(meant, documentOf({makeLayer({shorter, kStroke})})),
            "2 strokes are lost or have another number of points");
}

TEST(ReadBack, LooksAtEveryNumberOfAPoint) {
  const inktest::Seven before{
      .x = 1, .y = 2, .z = 3, .pressure = 4, .tiltX = 5, .tiltY = 6, .time = 7};
  const Orvo::Document meant = documentOf({makeLayer({makeStroke({{}, before})})});
  inktest::Seven x = before, y = before, z = before, pressure = before, tiltX = before,
                 tiltY = before, time = before;
  x.x = 0;
  y.y = 0;
  z.z = 0;
  pressure.pressure = 0;
  tiltX.tiltX = 0;
  tiltY.tiltY = 0;
  time.time = 0;
  for (const inktest::Seven& found : {x, y, z, pressure, tiltX, tiltY, time}) {
    EXPECT_EQ(said(meant, documentOf({makeLayer({makeStroke({{}, found})})})),
              "1 point changes (coordinates of a million or more are not written in full)");
  }
}

TEST(ReadBack, TellsTenthsThatWereCutFromOtherChanges) {
  const auto one = [](double x, double y, double z) {
    return documentOf({makeLayer({makeStroke({{.x = x, .y = y, .z = z}})})});
  };
  for (const Orvo::Document& meant : {one(1.9, 2, -3), one(1, 2.5, -3), one(1, 2, -3.9)}) {
    EXPECT_EQ(said(meant, one(1, 2, -3)),
              "1 point loses its tenths when the plug-in opens the result (without --exact they "
              "are rounded)");
  }
  EXPECT_NE(said(one(1.9, 2, 3), one(2, 2, 3)).find("1 point changes"), std::string::npos);
}

TEST(ReadBack, NamesAnnotationsThatAreLostAddedOrChanged) {
  Orvo::Document meant = documentOf({makeLayer({kStroke})});
  Orvo::Document found = meant;
  meant.annotations() = {{"same", "1"}, {"changed", "1"}, {"lost", "1"}};
  found.annotations() = {{"same", "1"}, {"changed", "2"}};
  found.back().annotations() = {{"added", "1"}};
  EXPECT_EQ(said(meant, found),
            "3 annotations change or are lost (extra white space and empty texts are not kept)");
}

TEST(ReadBack, LooksAtEveryFieldOfADefinition) {
  const auto brushCount = [](auto change) {
    Orvo::InkMLDefinitions meant;
    meant.brushes.emplace_back().antialiased.value = true;
    Orvo::InkReading reading{
        std::make_unique<Orvo::Document>(), std::make_unique<Orvo::InkMLDefinitions>(), {}};
    Orvo::Brush& found = reading.definitions->brushes.emplace_back();
    found.antialiased.value = true;  // From the flag that is written, `ignorePressure`.
    change(found, *reading.definitions);
    return cli::compareReadBack(*reading.document, meant, reading).definitions;
  };
  using Brush = Orvo::Brush;
  using Definitions = Orvo::InkMLDefinitions;
  EXPECT_EQ(brushCount([](Brush&, Definitions&) {}), 0U);
  EXPECT_EQ(brushCount([](Brush& brush, Definitions&) { brush.id = "other"; }), 1U);
  EXPECT_EQ(brushCount([](Brush& brush, Definitions&) { brush.color.value = "Red"; }), 1U);
  EXPECT_EQ(brushCount([](Brush& brush, Definitions&) { brush.width.value = 99; }), 1U);
  EXPECT_EQ(brushCount([](Brush& brush, Definitions&) { brush.height.value = 99; }), 1U);
  EXPECT_EQ(brushCount([](Brush& brush, Definitions&) { brush.transparency.value = 99; }), 1U);
  EXPECT_EQ(brushCount([](Brush& brush, Definitions&) { brush.antialiased.value = false; }), 1U);
  EXPECT_EQ(brushCount([](Brush& brush, Definitions&) { brush.fittocurve.value = false; }), 1U);
  EXPECT_EQ(brushCount([](Brush& brush, Definitions&) { brush.pentip.value = "Flat"; }), 1U);
  EXPECT_EQ(brushCount([](Brush&, Definitions& all) { all.traceFormats.emplace_back(); }), 1U);
  EXPECT_EQ(brushCount([](Brush&, Definitions& all) { all.contexts.emplace_back(); }), 1U);
}

TEST(ReadBack, SaysWhyADocumentIsOfNoUse) {
  Orvo::InkReport report;
  EXPECT_FALSE(cli::explainUnusable(report));
  report.failure = Orvo::InkFailure::tooLarge;
  EXPECT_EQ(cli::explainUnusable(report),
            "is not written: the ink document would have 2 GiB or more, and such a file does not "
            "open");
  report.failure = Orvo::InkFailure::brokenXml;
  report.libraryText = "Error parsing Element.";
  report.line = 3;
  EXPECT_EQ(cli::explainUnusable(report),
            "is not written: the ink document would not open again (Error parsing Element., line "
            "3)");
  report.failure = Orvo::InkFailure::noInk;
  EXPECT_EQ(cli::explainUnusable(report), "is not written: the ink document would not open again");
}

}  // namespace
