#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_layer_suite.h"
#include "hostapi/codes.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using testing::ElementsAre;
using testing::IsEmpty;

class LayerSuite : public testing::Test {
 protected:
  LayerSuite() { host.newDocument(); }

  AILayerHandle nth(std::int32_t n) {
    AILayerHandle layer = nullptr;
    EXPECT_EQ(suite->GetNthLayer(n, &layer), 0);
    return layer;
  }

  AILayerHandle insert(AILayerHandle reference, std::int16_t order) {
    AILayerHandle layer = nullptr;
    EXPECT_EQ(suite->InsertLayer(reference, order, &layer), 0);
    return layer;
  }

  std::vector<std::string> names() {
    std::vector<std::string> names;
    for (const art::Layer& layer : host.document().layers)
      names.push_back(layer.name);
    return names;
  }

  embedded::Host host;
  const AILayerSuite* suite = test::acquire<AILayerSuite>(host);
};

TEST_F(LayerSuite, CountsLayers) {
  std::int32_t count = -1;
  EXPECT_EQ(suite->CountLayers(&count), 0);
  EXPECT_EQ(count, 1);
  insert(nullptr, kPlaceAboveAll);
  EXPECT_EQ(suite->CountLayers(&count), 0);
  EXPECT_EQ(count, 2);
}

TEST_F(LayerSuite, TheTopmostLayerIsTheFirstAndHasIndexZero) {
  const AILayerHandle bottom = nth(0);
  const AILayerHandle top = insert(nullptr, kPlaceAboveAll);
  EXPECT_EQ(nth(0), top);
  EXPECT_EQ(nth(1), bottom);
  AILayerHandle first = nullptr;
  EXPECT_EQ(suite->GetFirstLayer(&first), 0);
  EXPECT_EQ(first, top);
}

TEST_F(LayerSuite, NamesANewLayerByItsNumber) {
  insert(nullptr, kPlaceAboveAll);
  insert(nullptr, kPlaceAboveAll);
  EXPECT_THAT(names(), ElementsAre("Layer 1", "Layer 2", "Layer 3"));
}

TEST_F(LayerSuite, LayersGoAboveAndBelowAReferenceOrAll) {
  const AILayerHandle one = nth(0);
  insert(nullptr, kPlaceBelowAll);
  insert(one, kPlaceAbove);
  insert(one, kPlaceBelow);
  EXPECT_THAT(names(), ElementsAre("Layer 2", "Layer 4", "Layer 1", "Layer 3"));
}

TEST_F(LayerSuite, KeepsLayersAddedAtBothEndsInTheOrderOfTheirCreation) {
  for (int i = 0; i < 500; ++i) {
    insert(nullptr, kPlaceAboveAll);
    insert(nullptr, kPlaceBelowAll);
  }
  std::vector<std::string> wanted;
  for (int number = 1001; number > 1; number -= 2)
    wanted.push_back("Layer " + std::to_string(number));
  wanted.emplace_back("Layer 1");
  for (int number = 2; number < 1001; number += 2)
    wanted.push_back("Layer " + std::to_string(number));
  EXPECT_EQ(names(), wanted);
}

TEST_F(LayerSuite, RefusesOrdersThatItDoesNotOffer) {
  AILayerHandle layer = nullptr;
  EXPECT_EQ(suite->InsertLayer(nullptr, kPlaceAbove, &layer), fourCC("PARM"));
  EXPECT_EQ(suite->InsertLayer(nth(0), kPlaceInsideOnTop, &layer), fourCC("!IMP"));
  EXPECT_EQ(suite->InsertLayer(nullptr, 99, &layer), fourCC("ORD?"));
  EXPECT_EQ(layer, nullptr);
  EXPECT_THAT(names(), ElementsAre("Layer 1"));
}

TEST_F(LayerSuite, RefusesAnIndexOutOfRange) {
  AILayerHandle layer = nullptr;
  EXPECT_EQ(suite->GetNthLayer(1, &layer), fourCC("PARM"));
  EXPECT_EQ(suite->GetNthLayer(-1, &layer), fourCC("PARM"));
  EXPECT_EQ(layer, nullptr);
}

TEST_F(LayerSuite, LocksAndUnlocks) {
  EXPECT_EQ(suite->SetLayerEditable(nth(0), 0), 0);
  EXPECT_FALSE(host.document().layers[0].editable);
  EXPECT_EQ(suite->SetLayerEditable(nth(0), 1), 0);
  EXPECT_TRUE(host.document().layers[0].editable);
}

TEST_F(LayerSuite, NewArtGoesToTheCurrentLayer) {
  const AILayerHandle bottom = nth(0);
  insert(nullptr, kPlaceAboveAll);
  const auto* art = test::acquire<AIArtSuite>(host);
  AIArtHandle path = nullptr;
  ASSERT_EQ(art->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path), 0);
  EXPECT_EQ(suite->SetCurrentLayer(nth(0)), 0);
  ASSERT_EQ(art->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path), 0);
  ASSERT_EQ(art->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path), 0);
  EXPECT_EQ(host.document().layers[0].art.size(), 1U)
      << "inserting does not change the current layer";
  EXPECT_EQ(host.document().layers[1].art.size(), 2U);
  EXPECT_EQ(suite->SetCurrentLayer(bottom), 0);
}

TEST_F(LayerSuite, SaysWhetherALayerHasArt) {
  AIBoolean hasArt = 1;
  EXPECT_EQ(suite->LayerHasArt(nth(0), &hasArt), 0);
  EXPECT_EQ(hasArt, 0);
  AIArtHandle path = nullptr;
  ASSERT_EQ(test::acquire<AIArtSuite>(host)->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path), 0);
  EXPECT_EQ(suite->LayerHasArt(nth(0), &hasArt), 0);
  EXPECT_EQ(hasArt, 1);
}

TEST_F(LayerSuite, ReportsUnknownHandlesAndRefusesNull) {
  const auto foreign = reinterpret_cast<AILayerHandle>(&host);
  AIBoolean hasArt = 0;
  EXPECT_EQ(suite->SetCurrentLayer(nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->SetLayerEditable(nullptr, 1), fourCC("PARM"));
  EXPECT_EQ(suite->LayerHasArt(nullptr, &hasArt), fourCC("PARM"));
  EXPECT_THAT(host.misuse(), IsEmpty()) << "a call that the host refuses leaves null behind";
  EXPECT_EQ(suite->SetCurrentLayer(foreign), fourCC("PARM"));
  EXPECT_EQ(suite->SetLayerEditable(foreign, 1), fourCC("PARM"));
  EXPECT_EQ(suite->LayerHasArt(foreign, &hasArt), fourCC("PARM"));
  AILayerHandle layer = nullptr;
  EXPECT_EQ(suite->InsertLayer(foreign, kPlaceAboveAll, &layer), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 4U);
}

TEST(LayerSuiteOfAHostThatReportsNullHandles, ReportsThemWhereALayerIsNeeded) {
  embedded::Host host(test::HostWithFaults().namingNullHandles());
  host.newDocument();
  const auto* suite = test::acquire<AILayerSuite>(host);
  AIBoolean hasArt = 0;
  AILayerHandle layer = nullptr;
  EXPECT_EQ(suite->SetCurrentLayer(nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->SetLayerEditable(nullptr, 1), fourCC("PARM"));
  EXPECT_EQ(suite->LayerHasArt(nullptr, &hasArt), fourCC("PARM"));
  EXPECT_EQ(suite->InsertLayer(nullptr, kPlaceAbove, &layer), fourCC("PARM"));
  EXPECT_THAT(host.misuse(),
              ElementsAre("plug-in misbehaving: \"AI Layer Suite\" SetCurrentLayer: layer is a "
                          "null handle",
                          testing::HasSubstr("SetLayerEditable"), testing::HasSubstr("LayerHasArt"),
                          testing::HasSubstr("InsertLayer: reference is a null handle")));
  EXPECT_EQ(suite->InsertLayer(nullptr, kPlaceAboveAll, &layer), 0);
  EXPECT_EQ(host.misuse().size(), 4U) << "above all layers, none is needed";
}

TEST_F(LayerSuite, ReportsNullOutPointers) {
  EXPECT_EQ(suite->CountLayers(nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->GetFirstLayer(nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->GetNthLayer(0, nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->InsertLayer(nullptr, kPlaceAboveAll, nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->LayerHasArt(nth(0), nullptr), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 5U);
  EXPECT_THAT(names(), ElementsAre("Layer 1"));
}

TEST_F(LayerSuite, RefusesTheHandlesOfAClosedDocument) {
  const AILayerHandle layer = nth(0);
  host.newDocument();
  EXPECT_EQ(suite->SetCurrentLayer(layer), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 1U);
}

TEST(LayersWithoutDocument, DoNotExist) {
  const embedded::Host host;
  const auto* suite = test::acquire<AILayerSuite>(host);
  std::int32_t count = -1;
  EXPECT_EQ(suite->CountLayers(&count), 0);
  EXPECT_EQ(count, 0);
  AILayerHandle layer = nullptr;
  EXPECT_EQ(suite->GetFirstLayer(&layer), fourCC("DOC?"));
  EXPECT_EQ(suite->GetNthLayer(0, &layer), fourCC("DOC?"));
  EXPECT_EQ(suite->InsertLayer(nullptr, kPlaceAboveAll, &layer), fourCC("DOC?"));
}

}  // namespace
