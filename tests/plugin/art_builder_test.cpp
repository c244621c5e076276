#include <cmath>
#include <gmock/gmock.h>

#include "hostapi/ai_layer_suite.h"
#include "tests/plugin/changed_suite.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::IsEmpty;

// The constants as doubles, written out from their single-precision values.
constexpr double kScale = 0.2833999991416931;
constexpr double kCentreH = 297.57000732421875;
constexpr double kCentreV = 420.8489990234375;
constexpr double kHeight = 841.697998046875;

// The page and a point's position on it, computed independently of the plug-in's code.
struct Page {
  double minX, minY, maxX, maxY;

  float width() const { return static_cast<float>(maxX - minX) * 0.2834F; }
  float height() const { return static_cast<float>(maxY - minY) * 0.2834F; }
  art::Point at(double x, double y) const {
    const double halfWidth = width() * 0.5F;
    const double halfHeight = height() * 0.5F;
    const double h = kCentreH - minX * kScale - halfWidth + x * kScale;
    const double v = (kHeight - y * kScale) + (minY * kScale - kCentreV + halfHeight);
    return {static_cast<float>(h), static_cast<float>(v)};
  }
};

// Raw numbers of the file for a place: x = (r + 5) / 10, y = (r + 2.5) / 5.
double inkX(int raw) {
  return (raw + 5.0) / 10.0;
}
double inkY(int raw) {
  return (raw + 2.5) / 5.0;
}

art::Document draw(const PenFileBuilder& recording) {
  PluginInHost plugin;
  plugin->start();
  embedded::Opening opening = plugin.open(recording);
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_THAT(opening.misuse, IsEmpty());
  return std::move(opening.document);
}

TEST(ArtBuilder, SizesThePageToTheDrawing) {
  const art::Document document =
      draw(PenFileBuilder().descriptor().status(1).coordinate(995, 500).coordinate(3333, 7777));
  const Page page{inkX(995), inkY(500), inkX(3333), inkY(7777)};
  EXPECT_EQ(document.width, page.width());
  EXPECT_EQ(document.height, page.height());
  EXPECT_EQ(document.rulerOrigin, (art::Point{0, 0}));
}

TEST(ArtBuilder, CentresTheDrawingOnAnA4Page) {
  const art::Document document = draw(PenFileBuilder()
                                          .descriptor()
                                          .status(1)
                                          .coordinate(995, 500)
                                          .coordinate(3333, 7777)
                                          .coordinate(3333, 7777));
  const art::Path& path = pathAt(document, 0, 0);
  const art::Point first = path.segments.front().p;
  const art::Point last = path.segments[1].p;
  EXPECT_NEAR(first.h, 297.57 - document.width / 2, 1e-4);
  EXPECT_NEAR(first.v, 420.849 + document.height / 2, 1e-4);
  EXPECT_NEAR(last.h, 297.57 + document.width / 2, 1e-4);
  EXPECT_NEAR(last.v, 420.849 - document.height / 2, 1e-4);
}

TEST(ArtBuilder, JoinsPointsWithStraightPiecesWhoseControlPointsLieAtTheOppositeEnds) {
  const int raw[][2] = {{0, 10}, {313, 77}, {-200, 5000}, {777, 4321}, {1234, 1}};
  PenFileBuilder recording;
  recording.descriptor().status(1);
  for (const auto& [x, y] : raw)
    recording.coordinate(x, y);
  const art::Document document = draw(recording);

  const Page page{inkX(-200), inkY(1), inkX(1234), inkY(5000)};
  std::vector<art::Point> at;
  for (const auto& [x, y] : raw)
    at.push_back(page.at(inkX(x), inkY(y)));
  const std::vector<art::Segment> wanted = {{at[0], at[0], at[1], false},
                                            {at[1], at[0], at[2], false},
                                            {at[2], at[1], at[3], false},
                                            {at[3], at[2], at[4], false},
                                            // made from the last point but one
                                            {at[3], at[3], at[3], false}};
  EXPECT_EQ(pathAt(document, 0, 0).segments, wanted);
  EXPECT_FALSE(pathAt(document, 0, 0).closed);
}

TEST(ArtBuilder, AttachesPressureByPointIndexAndShiftsTheLastAsAnInteger) {
  const art::Document document = draw(PenFileBuilder()
                                          .descriptor()
                                          .status(1)
                                          .pressure(6, 100)
                                          .coordinate(0, 10)
                                          .pressure(6, 512)
                                          .coordinate(10, 20)
                                          .pressure(6, 2047)
                                          .coordinate(20, 30)
                                          .pressure(6, 9999)
                                          .coordinate(30, 40));
  // The pressure packet after a stroke's first point is written back into it.
  const std::vector<art::TabletSample> wanted = {
      {0.0F, 0.5F}, {1.0F / 3.0F, 0.5F}, {2.0F / 3.0F, 1.9990234375F}, {1.0F, 1.0F}};
  EXPECT_EQ(pathAt(document, 0, 0).pressure, wanted);
}

TEST(ArtBuilder, EndsAStrokeAtPressureZeroWhenItsPressureIsBelow1024) {
  const art::Document document = draw(PenFileBuilder()
                                          .descriptor()
                                          .status(1)
                                          .coordinate(0, 10)
                                          .pressure(6, 1023)
                                          .coordinate(10, 20)
                                          .coordinate(20, 30));
  const std::vector<art::TabletSample> wanted = {
      {0.0F, 0.9990234375F}, {0.5F, 0.9990234375F}, {1.0F, 0.0F}};
  EXPECT_EQ(pathAt(document, 0, 0).pressure, wanted);
}

TEST(ArtBuilder, ReadsANegativePressureAsAVeryLargeNumber) {
  const art::Document document = draw(
      PenFileBuilder().descriptor().status(1).coordinate(0, 10).pressure(6, -1).coordinate(10, 20));
  const std::vector<art::TabletSample> wanted = {{0.0F, 4194304.0F}, {1.0F, 4194303.0F}};
  EXPECT_EQ(pathAt(document, 0, 0).pressure, wanted);
}

TEST(ArtBuilder, DrawsATwoPointStrokeFromItsFirstPointAndBack) {
  const art::Document document =
      draw(PenFileBuilder().descriptor().status(1).coordinate(0, 10).pressure(6, 1536).coordinate(
          1000, 900));
  const Page page{inkX(0), inkY(10), inkX(1000), inkY(900)};
  const art::Point first = page.at(inkX(0), inkY(10));
  const art::Point second = page.at(inkX(1000), inkY(900));
  const art::Path& path = pathAt(document, 0, 0);
  EXPECT_EQ(path.segments, (std::vector<art::Segment>{{first, first, second, false},
                                                      {first, first, first, false}}));
  EXPECT_EQ(path.pressure, (std::vector<art::TabletSample>{{0.0F, 1.5F}, {1.0F, 1.0F}}));
}

TEST(ArtBuilder, SkipsStrokesOfASinglePoint) {
  const art::Document document = draw(PenFileBuilder()
                                          .descriptor()
                                          .status(1)
                                          .coordinate(0, 10)
                                          .status(0)
                                          .status(1)
                                          .coordinate(10, 20)
                                          .coordinate(20, 30));
  EXPECT_EQ(document.layers.at(0).art.size(), 1U);
}

TEST(ArtBuilder, PutsEachInkLayerOnAHostLayerAboveTheOneBefore) {
  PenFileBuilder recording;
  recording.descriptor().status(1);
  for (int layer = 0; layer < 3; ++layer) {
    recording.status(0x80);
    for (int stroke = 0; stroke <= layer; ++stroke) {
      recording.status(0).status(1).coordinate(100 * layer, 10).coordinate(50, 20 + stroke);
    }
  }
  const art::Document document = draw(recording);
  ASSERT_EQ(document.layers.size(), 3U);
  for (std::size_t layer = 0; layer < 3; ++layer) {
    EXPECT_EQ(document.layers[layer].name, "Layer " + std::to_string(layer + 1));
    EXPECT_TRUE(document.layers[layer].editable);
    EXPECT_EQ(document.layers[layer].art.size(), layer + 1);
  }
}

TEST(ArtBuilder, PutsEachStrokeOnTopOfThoseBefore) {
  const art::Document document = draw(PenFileBuilder()
                                          .descriptor()
                                          .status(1)
                                          .coordinate(0, 10)
                                          .coordinate(10, 20)
                                          .coordinate(20, 30)
                                          .status(0)
                                          .status(1)
                                          .coordinate(20, 30)
                                          .coordinate(30, 40));
  EXPECT_EQ(pathAt(document, 0, 0).segments.size(), 3U);
  EXPECT_EQ(pathAt(document, 0, 1).segments.size(), 2U);
}

// A stroke of three points, then one of two.
PenFileBuilder longAndShortStroke() {
  return oneStroke().status(0).status(1).coordinate(20, 30).coordinate(30, 40);
}

TEST(ArtBuilder, PutsAStrokeAboveAllOthersWhenTheLayersGroupIsRefused) {
  PluginInHost plugin(failing("AI Art Suite", "GetFirstArtOfLayer", fourCC("TEST"), 2));
  plugin->start();
  const embedded::Opening opening = plugin.open(longAndShortStroke());
  EXPECT_EQ(opening.code("AI Go"), 0);
  ASSERT_EQ(opening.document.layers.at(0).art.size(), 2U);
  EXPECT_EQ(pathAt(opening.document, 0, 0).segments.size(), 3U);
  EXPECT_EQ(pathAt(opening.document, 0, 1).segments.size(), 2U);
}

TEST(ArtBuilder, StopsWhenAPathAboveAllOthersIsRefusedToo) {
  PluginInHost plugin(HostWithFaults()
                          .answering("AI Art Suite", "GetFirstArtOfLayer", 1, fourCC("TEST"))
                          .answering("AI Art Suite", "NewArt", 1, fourCC("TEST")));
  plugin->start();
  const embedded::Opening opening = plugin.open(longAndShortStroke());
  EXPECT_EQ(opening.code("AI Go"), fourCC("CANT"));
  EXPECT_EQ(plugin.calls("AI Path Suite", "SetPathSegmentCount"), 0U);
  EXPECT_EQ(art::countPaths(opening.document), 0U);
}

TEST(ArtBuilder, GivesEveryPathTheLibrarysStyleUnderItsOwnName) {
  const art::Document document = draw(oneStroke());
  const std::optional<std::size_t> style = pathAt(document, 0, 0).style;
  ASSERT_TRUE(style);
  EXPECT_EQ(document.styles.at(*style).name, "kvoaiexportset");
  ASSERT_TRUE(document.styles.at(*style).brush);
  EXPECT_EQ(document.styles.at(*style).brush->size.driver, art::BrushDriver::pressure);
}

TEST(ArtBuilder, SetsTheSegmentCountTwiceForEachPath) {
  PluginInHost plugin;
  plugin->start();
  plugin.open(oneStroke());
  EXPECT_EQ(plugin.calls("AI Path Suite", "SetPathSegmentCount"), 2U);
  EXPECT_EQ(plugin.calls("AI Path Suite", "SetPathSegments"), 1U);
}

TEST(ArtBuilder, ResizesThePageAndMakesNoPathForALayerWithoutStrokesToDraw) {
  PluginInHost plugin;
  plugin->start();
  const embedded::Opening opening =
      plugin.open(PenFileBuilder().descriptor().status(1).coordinate(95, 97));
  EXPECT_TRUE(opening.builderRan);
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_EQ(opening.output.standardOutput, "there are 1 layers in this document\n");
  EXPECT_EQ(opening.document.width, 0);
  EXPECT_EQ(opening.document.height, 0);
  EXPECT_EQ(plugin.calls("AI Art Suite", "NewArt"), 0U);
  EXPECT_EQ(plugin.calls("AI Layer Suite", "GetNthLayer"), 1U);
}

TEST(ArtBuilder, StylesExistingArtEvenForAnInkLayerWithoutStrokes) {
  PluginInHost plugin;
  plugin->start();
  oneStroke().write(plugin.path("a.pnx"));
  plugin->host().newDocument();
  EXPECT_EQ(plugin->sendFileFormat("AI Go", plugin.path("a.pnx")), 0);
  plugin->takeOutput();
  EXPECT_EQ(plugin->sendFileFormat("AI Go", plugin.writeText("b.kvo", kEmptyInkLayer)), 0);
  EXPECT_EQ(plugin->takeOutput().standardOutput, "there are 1 layers in this document\n");
  EXPECT_EQ(plugin.calls("AI Art Suite", "NewArt"), 1U);
  EXPECT_EQ(plugin.calls("AI Art Style Suite", "SetArtStyle"), 2U);
  EXPECT_EQ(plugin->host().document().width, 0);
  EXPECT_EQ(plugin->host().document().height, 0);
}

TEST(ArtBuilder, BuildsAnEmptyDrawingFromARecordingWithoutPoints) {
  PluginInHost plugin;
  plugin->start();
  const embedded::Opening opening = plugin.open(PenFileBuilder().descriptor());
  EXPECT_TRUE(opening.builderRan);
  EXPECT_EQ(opening.output.standardOutput, "there are 0 layers in this document\n");
  EXPECT_EQ(opening.document.layers.size(), 1U);
}

TEST(ArtBuilder, StylesWhatWasInTheDocumentBefore) {
  PluginInHost plugin;
  plugin->start();
  oneStroke().write(plugin.path("a.pnx"));
  plugin->host().newDocument();
  plugin->sendFileFormat("AI Go", plugin.path("a.pnx"));
  plugin->sendFileFormat("AI Go", plugin.path("a.pnx"));
  // one path the first time, two the second
  EXPECT_EQ(plugin.calls("AI Art Style Suite", "SetArtStyle"), 3U);
  const art::Document document = plugin->host().document();
  EXPECT_EQ(pathAt(document, 0, 0).style, pathAt(document, 0, 1).style);
}

TEST(ArtBuilder, EndsWithTheHostsCodeWhenAPageWithoutHeightIsRefused) {
  PluginInHost plugin(HostWithFaults().refusingFlatPages());
  plugin->start();
  const embedded::Opening opening =
      plugin.open(PenFileBuilder().descriptor().status(1).coordinate(0, 10).coordinate(1000, 10));
  EXPECT_EQ(opening.code("AI Go"), fourCC("PARM"));
  EXPECT_THAT(opening.alerts, testing::ElementsAre("PARM"));
  EXPECT_EQ(art::countPaths(opening.document), 0U);
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), 0);
}

// What an opening prints when the function for the page or the layer is refused.
std::string printedWhereRefused(const char* suite, const char* function) {
  PluginInHost plugin(failing(suite, function, fourCC("TEST")));
  plugin->start();
  return plugin.open(oneStroke()).output.standardOutput;
}

TEST(ArtBuilder, PrintsTheNumberOfLayersAfterThePageAndBeforeTheFirstLayer) {
  EXPECT_EQ(printedWhereRefused("AI Document Suite", "SetDocumentSetup"), "");
  EXPECT_EQ(printedWhereRefused("AI Layer Suite", "SetLayerEditable"),
            "there are 1 layers in this document\n");
}

PenFileBuilder longStroke(int points) {
  PenFileBuilder recording;
  recording.descriptor().status(1);
  for (int i = 0; i < points; ++i)
    recording.coordinate(i % 1000, 10);
  return recording;
}

TEST(ArtBuilder, CutsTheSegmentCountTo16BitsAndPassesAllTabletData) {
  PluginInHost plugin;
  plugin->start();
  const embedded::Opening opening = plugin.open(longStroke(70'000));
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_THAT(opening.misuse, IsEmpty());
  EXPECT_EQ(pathAt(opening.document, 0, 0).segments.size(), 4'464U);
  EXPECT_EQ(pathAt(opening.document, 0, 0).pressure.size(), 70'000U);
}

TEST(ArtBuilder, FailsWhenTheHostRefusesTheSegmentCount) {
  for (const int points : {32'001, 32'767, 40'000}) {
    PluginInHost plugin;
    plugin->start();
    const embedded::Opening opening = plugin.open(longStroke(points));
    EXPECT_EQ(opening.code("AI Go"), fourCC("CANT")) << points;
    ASSERT_TRUE(opening.firstFailure);
    EXPECT_EQ(opening.firstFailure->code, fourCC("SEGM"));
    EXPECT_EQ(opening.firstFailure->path, 1U);
  }
}

TEST(ArtBuilder, KeepsThePathsMadeBeforeAFailure) {
  PenFileBuilder recording = oneStroke();
  recording.status(0).status(1).coordinate(0, 10).coordinate(10, 20);
  PluginInHost plugin(failing("AI Path Suite", "SetPathClosed", fourCC("TEST"), 2));
  plugin->start();
  const embedded::Opening opening = plugin.open(recording);
  EXPECT_EQ(opening.code("AI Go"), fourCC("CANT"));
  EXPECT_EQ(opening.document.layers.at(0).art.size(), 2U);
}

TEST(ArtBuilder, PrintsForTheDebuggerWhenTabletDataOrStylesFail) {
  for (const auto& [suite, function, text] :
       {std::tuple{"AI TabletData Suite", "SetTabletData", "SetTabletData failed "},
        std::tuple{"AI Art Style Suite", "SetArtStyle", "SetArtStyle failed "}}) {
    PluginInHost plugin(failing(suite, function, fourCC("TEST")));
    plugin->start();
    EXPECT_THAT(plugin.debuggerTextOfOpening(oneStroke()), testing::EndsWith(text));
  }
}

// A host may look at what is there before it answers.
TEST(ArtBuilder, GivesTheHostZeroToCountLayersInto) {
  static std::vector<std::int32_t> before;
  before.clear();
  PluginInHost plugin;
  plugin->start();
  ChangedSuite<hostapi::AILayerSuite> layers;
  layers->CountLayers = [](std::int32_t* count) {
    before.push_back(*count);
    return hostapi::kNoErr;
  };
  PenFileBuilder recording;
  recording.descriptor().status(1).coordinate(1, 1).status(0x81).status(1).coordinate(9, 9);
  const embedded::Opening opening = plugin.open(recording);
  EXPECT_EQ(opening.code("AI Go"), 0);
  EXPECT_EQ(opening.document.layers.size(), 2U);
  // Once for each layer, and once before the style is applied.
  EXPECT_THAT(before, testing::ElementsAre(0, 0, 0));
}

}  // namespace
