// Art and Art Set.
#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/ai_art_set_suite.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_layer_suite.h"
#include "hostapi/ai_path_suite.h"
#include "hostapi/codes.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using test::HostWithFaults;
using testing::ElementsAre;
using testing::IsEmpty;

class ArtSuites : public testing::Test {
 protected:
  explicit ArtSuites(const embedded::Options& options = {}) : host(options) { host.newDocument(); }

  AILayerHandle topLayer() {
    AILayerHandle layer = nullptr;
    EXPECT_EQ(layers->GetFirstLayer(&layer), 0);
    return layer;
  }

  AIArtHandle groupOf(AILayerHandle layer) {
    AIArtHandle group = nullptr;
    EXPECT_EQ(suite->GetFirstArtOfLayer(layer, &group), 0);
    return group;
  }

  AIArtHandle make(std::int16_t type, std::int16_t order, AIArtHandle reference) {
    AIArtHandle art = nullptr;
    EXPECT_EQ(suite->NewArt(type, order, reference, &art), 0);
    return art;
  }

  AIErr refusal(std::int16_t type, std::int16_t order, AIArtHandle reference) {
    AIArtHandle art = nullptr;
    const AIErr code = suite->NewArt(type, order, reference, &art);
    EXPECT_EQ(art, nullptr);
    return code;
  }

  // Paths can be told apart by their number of segments.
  AIArtHandle makePath(std::int16_t segments, std::int16_t order, AIArtHandle reference) {
    const AIArtHandle path = make(kPathArt, order, reference);
    test::acquire<AIPathSuite>(host)->SetPathSegmentCount(path, segments);
    return path;
  }

  std::vector<std::size_t> bottomToTop() {
    std::vector<std::size_t> counts;
    const art::Document document = host.document();
    for (const art::Object& object : document.layers.back().art)
      counts.push_back(std::get<art::Path>(object.value).segments.size());
    return counts;
  }

  AIArtSet setOfTopLayer() {
    AIArtSet set = nullptr;
    EXPECT_EQ(sets->NewArtSet(&set), 0);
    EXPECT_EQ(sets->LayerArtSet(topLayer(), set), 0);
    return set;
  }

  std::vector<AIArtHandle> membersOf(AIArtSet set) {
    std::uint64_t count = 0;
    EXPECT_EQ(sets->CountArtSet(set, &count), 0);
    std::vector<AIArtHandle> members(count);
    for (std::uint64_t i = 0; i < count; ++i)
      EXPECT_EQ(sets->IndexArtSet(set, i, &members[i]), 0);
    return members;
  }

  embedded::Host host;
  const AIArtSuite* suite = test::acquire<AIArtSuite>(host);
  const AILayerSuite* layers = test::acquire<AILayerSuite>(host);
  const AIArtSetSuite* sets = test::acquire<AIArtSetSuite>(host);
};

TEST_F(ArtSuites, InsideOnTopPutsEachPathAboveThoseBefore) {
  const AIArtHandle group = groupOf(topLayer());
  makePath(1, kPlaceInsideOnTop, group);
  makePath(2, kPlaceInsideOnTop, group);
  makePath(3, kPlaceInsideOnTop, group);
  EXPECT_THAT(bottomToTop(), ElementsAre(1, 2, 3));
}

TEST_F(ArtSuites, AboveAllWithoutAReferenceMeansOnTopInTheCurrentLayer) {
  makePath(1, kPlaceAboveAll, nullptr);
  makePath(2, kPlaceAboveAll, nullptr);
  makePath(3, kPlaceBelowAll, nullptr);
  EXPECT_THAT(bottomToTop(), ElementsAre(3, 1, 2));
}

TEST_F(ArtSuites, PutsPathsAboveAndBelowAReferenceAndInsideAtTheBottom) {
  const AIArtHandle one = makePath(1, kPlaceAboveAll, nullptr);
  makePath(2, kPlaceAboveAll, nullptr);
  makePath(3, kPlaceAbove, one);
  makePath(4, kPlaceBelow, one);
  makePath(5, kPlaceInsideOnBottom, groupOf(nullptr));
  EXPECT_THAT(bottomToTop(), ElementsAre(5, 4, 1, 3, 2));
}

TEST_F(ArtSuites, GivesTheCurrentLayersGroupForANullLayer) {
  EXPECT_EQ(groupOf(nullptr), groupOf(topLayer()));
  EXPECT_EQ(groupOf(topLayer()), groupOf(topLayer()));
}

TEST_F(ArtSuites, GroupsHoldArtOfTheirOwn) {
  const AIArtHandle group = make(kGroupArt, kPlaceAboveAll, nullptr);
  makePath(4, kPlaceInsideOnTop, group);
  const art::Document document = host.document();
  ASSERT_EQ(document.layers[0].art.size(), 1U);
  const auto& plain = std::get<art::Group>(document.layers[0].art[0].value);
  ASSERT_EQ(plain.art.size(), 1U);
  EXPECT_EQ(std::get<art::Path>(plain.art[0].value).segments.size(), 4U);
}

TEST_F(ArtSuites, RefusesTypesAndOrdersThatItDoesNotKnow) {
  EXPECT_EQ(refusal(99, kPlaceAboveAll, nullptr), fourCC("ART?"));
  EXPECT_EQ(refusal(kUnknownArt, kPlaceAboveAll, nullptr), fourCC("ART?"));
  EXPECT_EQ(refusal(kAnyArt, kPlaceAboveAll, nullptr), fourCC("ART?"));
  EXPECT_EQ(refusal(kCompoundPathArt, kPlaceAboveAll, nullptr), fourCC("!IMP"));
  EXPECT_EQ(refusal(kPathArt, 99, nullptr), fourCC("ORD?"));
  EXPECT_EQ(refusal(kPathArt, -1, nullptr), fourCC("ORD?"));
  EXPECT_EQ(refusal(kPathArt, kPlaceDefault, nullptr), fourCC("!IMP"));
}

TEST_F(ArtSuites, RefusesPlacesThatDoNotExist) {
  const AIArtHandle path = makePath(1, kPlaceAboveAll, nullptr);
  EXPECT_EQ(refusal(kPathArt, kPlaceInsideOnTop, path), fourCC("~VAT")) << "not a group";
  EXPECT_EQ(refusal(kPathArt, kPlaceInsideOnTop, nullptr), fourCC("PARM"));
  EXPECT_EQ(refusal(kPathArt, kPlaceAbove, nullptr), fourCC("PARM"));
  EXPECT_EQ(refusal(kPathArt, kPlaceAbove, groupOf(topLayer())), fourCC("~VAT"))
      << "nothing can be beside a layer's own group";
  EXPECT_THAT(bottomToTop(), ElementsAre(1));
}

TEST_F(ArtSuites, MakesNoArtInALockedLayer) {
  const AIArtHandle group = groupOf(topLayer());
  ASSERT_EQ(layers->SetLayerEditable(topLayer(), 0), 0);
  EXPECT_EQ(refusal(kPathArt, kPlaceInsideOnTop, group), fourCC("NESS"));
  EXPECT_EQ(refusal(kPathArt, kPlaceAboveAll, nullptr), fourCC("NESS"));
  ASSERT_EQ(layers->SetLayerEditable(topLayer(), 1), 0);
  make(kPathArt, kPlaceInsideOnTop, group);
}

TEST_F(ArtSuites, RefusesGroupsThatAreNestedTooDeep) {
  AIArtHandle group = groupOf(topLayer());
  int depth = 0;
  AIErr code = 0;
  while (code == 0 && depth < 1000) {
    code = suite->NewArt(kGroupArt, kPlaceInsideOnTop, group, &group);
    ++depth;
  }
  EXPECT_EQ(code, fourCC("NEST"));
  EXPECT_GT(depth, 50);
}

class ArtSuitesThatReportNullHandles : public ArtSuites {
 protected:
  ArtSuitesThatReportNullHandles() : ArtSuites(HostWithFaults().namingNullHandles()) {}
};

TEST_F(ArtSuitesThatReportNullHandles, ReportThemWhereAPlaceOrASetIsNeeded) {
  std::uint64_t count = 0;
  AIArtHandle art = nullptr;
  EXPECT_EQ(refusal(kPathArt, kPlaceInsideOnTop, nullptr), fourCC("PARM"));
  EXPECT_EQ(refusal(kPathArt, kPlaceAbove, nullptr), fourCC("PARM"));
  EXPECT_EQ(sets->CountArtSet(nullptr, &count), fourCC("PARM"));
  EXPECT_EQ(sets->IndexArtSet(nullptr, 0, &art), fourCC("PARM"));
  EXPECT_EQ(sets->LayerArtSet(nullptr, setOfTopLayer()), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 5U);
}

TEST_F(ArtSuitesThatReportNullHandles, AcceptThemWhereTheyMeanTheCurrentLayer) {
  EXPECT_EQ(groupOf(nullptr), groupOf(topLayer()));
  makePath(1, kPlaceAboveAll, nullptr);
  makePath(2, kPlaceBelowAll, nullptr);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(ArtSuites, ReportsNullOutPointersAndUnknownHandles) {
  EXPECT_EQ(suite->NewArt(kPathArt, kPlaceAboveAll, nullptr, nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->GetFirstArtOfLayer(topLayer(), nullptr), fourCC("PARM"));
  EXPECT_EQ(refusal(kPathArt, kPlaceAboveAll, reinterpret_cast<AIArtHandle>(&host)),
            fourCC("PARM"));
  AIArtHandle group = nullptr;
  EXPECT_EQ(suite->GetFirstArtOfLayer(reinterpret_cast<AILayerHandle>(&host), &group),
            fourCC("PARM"));
  EXPECT_THAT(
      host.misuse(),
      ElementsAre("plug-in misbehaving: \"AI Art Suite\" NewArt: art is a null pointer",
                  "plug-in misbehaving: \"AI Art Suite\" GetFirstArtOfLayer: group is a null "
                  "pointer",
                  "plug-in misbehaving: \"AI Art Suite\" NewArt: reference is not a valid "
                  "handle",
                  "plug-in misbehaving: \"AI Art Suite\" GetFirstArtOfLayer: layer is not a "
                  "valid handle"));
  EXPECT_THAT(bottomToTop(), IsEmpty());
}

TEST_F(ArtSuites, ASetOfALayerListsObjectsFromTheTopAndGroupsBeforeTheirChildren) {
  const AIArtHandle bottom = makePath(1, kPlaceAboveAll, nullptr);
  const AIArtHandle group = make(kGroupArt, kPlaceAboveAll, nullptr);
  const AIArtHandle below = makePath(2, kPlaceInsideOnTop, group);
  const AIArtHandle above = makePath(3, kPlaceInsideOnTop, group);
  const AIArtHandle top = makePath(4, kPlaceAboveAll, nullptr);
  const AIArtSet set = setOfTopLayer();
  EXPECT_THAT(membersOf(set), ElementsAre(top, group, above, below, bottom));
}

TEST_F(ArtSuites, FillingASetReplacesItsContents) {
  makePath(1, kPlaceAboveAll, nullptr);
  const AIArtSet set = setOfTopLayer();
  EXPECT_EQ(sets->LayerArtSet(topLayer(), set), 0);
  EXPECT_EQ(membersOf(set).size(), 1U);
}

TEST_F(ArtSuites, WritesFourBytesOfACountAndReadsFourOfAnIndex) {
  const AIArtHandle path = makePath(1, kPlaceAboveAll, nullptr);
  const AIArtSet set = setOfTopLayer();
  std::uint64_t count = 0xAAAAAAAA00000000;
  EXPECT_EQ(sets->CountArtSet(set, &count), 0);
  EXPECT_EQ(count, 0xAAAAAAAA00000001);
  AIArtHandle member = nullptr;
  EXPECT_EQ(sets->IndexArtSet(set, 0xBBBBBBBB00000000, &member), 0);
  EXPECT_EQ(member, path);
  EXPECT_EQ(sets->IndexArtSet(set, 1, &member), fourCC("PARM"));
}

class WideArtSets : public ArtSuites {
 protected:
  WideArtSets() : ArtSuites(HostWithFaults().withArtSetNumbers(embedded::ArtSetNumbers::bits64)) {}
};

TEST_F(WideArtSets, WriteEightBytesOfACountAndReadEightOfAnIndex) {
  const AIArtHandle path = makePath(1, kPlaceAboveAll, nullptr);
  const AIArtSet set = setOfTopLayer();
  std::uint64_t count = 0xAAAAAAAA00000000;
  EXPECT_EQ(sets->CountArtSet(set, &count), 0);
  EXPECT_EQ(count, 1U);
  AIArtHandle member = nullptr;
  EXPECT_EQ(sets->IndexArtSet(set, 0xBBBBBBBB00000000, &member), fourCC("PARM"));
  EXPECT_EQ(sets->IndexArtSet(set, 0, &member), 0);
  EXPECT_EQ(member, path);
}

class ArtSetsWithGroup : public ArtSuites {
 protected:
  ArtSetsWithGroup() : ArtSuites(HostWithFaults().withLayerGroup(embedded::LayerGroup::counted)) {}
};

TEST_F(ArtSetsWithGroup, HaveTheLayersOwnGroupFirst) {
  const AIArtHandle path = makePath(1, kPlaceAboveAll, nullptr);
  const AIArtSet set = setOfTopLayer();
  EXPECT_THAT(membersOf(set), ElementsAre(groupOf(topLayer()), path));
}

TEST_F(ArtSuites, DoesNotReportSetsThatAreNeverDisposedOf) {
  AIArtSet set = nullptr;
  ASSERT_EQ(sets->NewArtSet(&set), 0);
  host.checkSuitesReleased();
  for (const std::string& sentence : host.misuse())
    EXPECT_THAT(sentence, testing::HasSubstr("was not released")) << "only the suites are reported";
}

TEST_F(ArtSuites, ReportsUnknownSetsAndNullPointers) {
  AIArtSet set = nullptr;
  std::uint64_t count = 0;
  AIArtHandle art = nullptr;
  const auto foreign = reinterpret_cast<AIArtSet>(&host);
  EXPECT_EQ(sets->CountArtSet(nullptr, &count), fourCC("PARM"));
  EXPECT_EQ(sets->LayerArtSet(topLayer(), nullptr), fourCC("PARM"));
  EXPECT_THAT(host.misuse(), IsEmpty());
  EXPECT_EQ(sets->NewArtSet(nullptr), fourCC("PARM"));
  EXPECT_EQ(sets->CountArtSet(foreign, &count), fourCC("PARM"));
  EXPECT_EQ(sets->IndexArtSet(foreign, 0, &art), fourCC("PARM"));
  EXPECT_EQ(sets->LayerArtSet(topLayer(), foreign), fourCC("PARM"));
  ASSERT_EQ(sets->NewArtSet(&set), 0);
  EXPECT_EQ(sets->LayerArtSet(reinterpret_cast<AILayerHandle>(&host), set), fourCC("PARM"));
  EXPECT_EQ(sets->CountArtSet(set, nullptr), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 6U);
}

TEST_F(ArtSuites, TakingTheDocumentInvalidatesItsHandles) {
  const AIArtHandle path = makePath(3, kPlaceAboveAll, nullptr);
  const art::Document document = host.takeDocument();
  EXPECT_EQ(std::get<art::Path>(document.layers[0].art[0].value).segments.size(), 3U);
  EXPECT_FALSE(host.hasDocument());
  EXPECT_EQ(refusal(kPathArt, kPlaceAboveAll, nullptr), fourCC("DOC?"));
  EXPECT_EQ(test::acquire<AIPathSuite>(host)->SetPathClosed(path, 0), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 1U);
}

}  // namespace
