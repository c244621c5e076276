#include <gmock/gmock.h>
#include <limits>

#include "embedded/host.h"
#include "hostapi/ai_document_suite.h"
#include "hostapi/codes.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using testing::IsEmpty;

class DocumentSuite : public testing::Test {
 protected:
  explicit DocumentSuite(const embedded::Options& options = {}) : host(options) {
    host.newDocument();
  }

  AIErr setSize(float width, float height) {
    AIDocumentSetup setup{};
    EXPECT_EQ(suite->GetDocumentSetup(&setup), 0);
    setup.width = width;
    setup.height = height;
    return suite->SetDocumentSetup(&setup);
  }

  embedded::Host host;
  const AIDocumentSuite* suite = test::acquire<AIDocumentSuite>(host);
};

TEST_F(DocumentSuite, ANewDocumentIsAnA4PageWithItsLowerLeftCornerAtTheOrigin) {
  const art::Document document = host.document();
  EXPECT_EQ(document.width, 595.276F);
  EXPECT_EQ(document.height, 841.89F);
  EXPECT_EQ(document.page, (art::Rect{0, 0, 595.276F, 841.89F}));
  EXPECT_EQ(document.rulerOrigin, (art::Point{0, 0}));
  ASSERT_EQ(document.layers.size(), 1U);
  EXPECT_EQ(document.layers[0].name, "Layer 1");
  EXPECT_TRUE(document.layers[0].editable);
  EXPECT_TRUE(document.layers[0].visible);
  EXPECT_THAT(document.layers[0].art, IsEmpty());
  EXPECT_THAT(document.styles, IsEmpty());
}

TEST_F(DocumentSuite, GivesTheSizeOfThePage) {
  AIDocumentSetup setup{};
  EXPECT_EQ(suite->GetDocumentSetup(&setup), 0);
  EXPECT_EQ(setup.width, 595.276F);
  EXPECT_EQ(setup.height, 841.89F);
}

TEST_F(DocumentSuite, SettingTheSizeKeepsTheCentre) {
  EXPECT_EQ(setSize(100, 50), 0);
  const art::Document document = host.document();
  EXPECT_EQ(document.width, 100);
  EXPECT_EQ(document.height, 50);
  // The centre is at (297.638, 420.945): half of each single-precision size.
  EXPECT_FLOAT_EQ(document.page.left, 247.638F);
  EXPECT_FLOAT_EQ(document.page.right, 347.638F);
  EXPECT_FLOAT_EQ(document.page.bottom, 395.945F);
  EXPECT_FLOAT_EQ(document.page.top, 445.945F);
}

TEST_F(DocumentSuite, EachEdgeIsRoundedOnce) {
  const float width = 283.4F;
  EXPECT_EQ(setSize(width, 0.1F), 0);
  const double centre = static_cast<double>(595.276F) / 2;
  EXPECT_EQ(host.document().page.left, static_cast<float>(centre - static_cast<double>(width) / 2));
  EXPECT_EQ(host.document().page.right,
            static_cast<float>(centre + static_cast<double>(width) / 2));
}

TEST_F(DocumentSuite, AcceptsAPageOfSizeZero) {
  EXPECT_EQ(setSize(0, 0), 0);
  EXPECT_EQ(host.document().page.left, host.document().page.right);
}

class DocumentSuiteWithoutFlatPages : public DocumentSuite {
 protected:
  DocumentSuiteWithoutFlatPages() : DocumentSuite(test::HostWithFaults().refusingFlatPages()) {}
};

TEST_F(DocumentSuiteWithoutFlatPages, RefusesAPageWithoutHeightOrWidth) {
  EXPECT_EQ(setSize(100, 0), fourCC("PARM"));
  EXPECT_EQ(setSize(0, 100), fourCC("PARM"));
  EXPECT_EQ(setSize(100, -1), fourCC("PARM"));
  EXPECT_EQ(setSize(-1, 100), fourCC("PARM"));
  EXPECT_EQ(host.document().width, 595.276F);
  EXPECT_EQ(host.document().height, 841.89F);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(DocumentSuiteWithoutFlatPages, AcceptsTheSmallestPageThatHasBoth) {
  constexpr float kSmallest = std::numeric_limits<float>::denorm_min();
  EXPECT_EQ(setSize(kSmallest, kSmallest), 0);
  EXPECT_EQ(host.document().height, kSmallest);
}

TEST_F(DocumentSuite, RefusesASizeThatIsNotFinite) {
  EXPECT_EQ(setSize(std::numeric_limits<float>::infinity(), 1), fourCC("PARM"));
  EXPECT_EQ(setSize(1, std::numeric_limits<float>::quiet_NaN()), fourCC("PARM"));
  EXPECT_EQ(host.document().width, 595.276F);
}

TEST_F(DocumentSuite, KeepsTheRulerOrigin) {
  const AIRealPoint origin{3, 4};
  EXPECT_EQ(suite->SetDocumentRulerOrigin(&origin), 0);
  EXPECT_EQ(host.document().rulerOrigin, (art::Point{3, 4}));
}

TEST_F(DocumentSuite, AskingForTheSetupShowsThatTheBuilderRan) {
  EXPECT_FALSE(host.builderRan());
  AIDocumentSetup setup{};
  suite->GetDocumentSetup(&setup);
  EXPECT_TRUE(host.builderRan());
  host.newDocument();
  EXPECT_FALSE(host.builderRan());
  suite->SetDocumentSetup(&setup);
  EXPECT_TRUE(host.builderRan());
}

TEST_F(DocumentSuite, ReportsNullPointers) {
  EXPECT_EQ(suite->GetDocumentSetup(nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->SetDocumentSetup(nullptr), fourCC("PARM"));
  EXPECT_EQ(suite->SetDocumentRulerOrigin(nullptr), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 3U);
}

TEST_F(DocumentSuite, TheNewerLayoutLeavesTheProbesNumbersAlone) {
  std::int16_t numbers[3] = {0x7FFF, 0x7FFF, 0x7FFF};
  suite->GetDocumentTargeting(&numbers[0], &numbers[1], &numbers[2]);
  EXPECT_THAT(numbers, testing::Each(0x7FFF));
  EXPECT_EQ(suite->GetAIVersion(), 16);
  EXPECT_THAT(host.misuse(), IsEmpty());
  AIDocumentSetup setup{};
  EXPECT_EQ(suite->OlderGetDocumentSetup(&setup), fourCC("!IMP"));
  EXPECT_EQ(host.misuse().size(), 1U);
}

TEST(OlderDocumentSuite, HasTheSetupAt13And14AndChangesTheProbesNumbers) {
  embedded::Host host(test::HostWithFaults().withDocumentLayout(embedded::DocumentLayout::older));
  host.newDocument();
  const auto* suite = test::acquire<AIDocumentSuite>(host);
  std::int16_t numbers[3] = {0x7FFF, 0x7FFF, 0x7FFF};
  EXPECT_EQ(suite->GetDocumentTargeting(&numbers[0], &numbers[1], &numbers[2]), 0);
  EXPECT_THAT(numbers, testing::Each(testing::Ne(0x7FFF)));
  AIDocumentSetup setup{};
  EXPECT_EQ(suite->OlderGetDocumentSetup(&setup), 0);
  EXPECT_EQ(setup.width, 595.276F);
  EXPECT_TRUE(host.builderRan());
  setup.width = 10;
  EXPECT_EQ(suite->OlderSetDocumentSetup(&setup), 0);
  EXPECT_EQ(host.document().width, 10);
  EXPECT_THAT(host.misuse(), IsEmpty());
  EXPECT_EQ(suite->GetDocumentSetup(&setup), fourCC("!IMP"));
}

TEST(NoDocument, IsReportedByEveryCallThatNeedsOne) {
  embedded::Host host;
  const auto* suite = test::acquire<AIDocumentSuite>(host);
  AIDocumentSetup setup{};
  const AIRealPoint origin{};
  EXPECT_EQ(suite->GetDocumentSetup(&setup), fourCC("DOC?"));
  EXPECT_EQ(suite->SetDocumentSetup(&setup), fourCC("DOC?"));
  EXPECT_EQ(suite->SetDocumentRulerOrigin(&origin), fourCC("DOC?"));
  EXPECT_FALSE(host.hasDocument());
  EXPECT_FALSE(host.builderRan());
  EXPECT_THAT(host.document().layers, IsEmpty());
  EXPECT_THAT(host.takeDocument().layers, IsEmpty());
}

}  // namespace
