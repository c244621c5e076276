// Hosts that lack something, and fault injection.
#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_document_suite.h"
#include "hostapi/ai_layer_suite.h"
#include "hostapi/ai_runtime_suite.h"
#include "hostapi/ai_user_suite.h"
#include "hostapi/codes.h"
#include "hostapi/sp_plugins_suite.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using test::HostWithFaults;
using testing::IsEmpty;

SPErr acquire(const embedded::Host& host, const char* name, std::int32_t version) {
  const void* table = nullptr;
  return host.basic()->AcquireSuite(name, version, &table);
}

TEST(HostThatLacksASuite, AnswersThatItIsMissing) {
  const embedded::Host host(HostWithFaults().lacking("AI Art Suite"));
  EXPECT_EQ(acquire(host, "AI Art Suite", 16), fourCC("S!Fd"));
  EXPECT_EQ(acquire(host, "AI Path Suite", 10), 0);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST(HostWithAnotherVersion, OffersOnlyThatOne) {
  const embedded::Host host(HostWithFaults().offering("AI Art Suite", 17));
  EXPECT_EQ(acquire(host, "AI Art Suite", 16), fourCC("S!Fd"));
  EXPECT_EQ(acquire(host, "AI Art Suite", 17), 0);
  EXPECT_EQ(host.basic()->ReleaseSuite("AI Art Suite", 17), 0);
}

TEST(HostWithNullSlots, HasThemNullAndTheOthersNot) {
  const embedded::Host host(
      HostWithFaults().withNullSlot("AI Art Suite", 0).withNullSlot("SP Basic Suite", 2));
  const auto* art = test::acquire<AIArtSuite>(host);
  EXPECT_EQ(art->NewArt, nullptr);
  EXPECT_NE(art->GetFirstArtOfLayer, nullptr);
  EXPECT_EQ(host.basic()->IsEqual, nullptr);
  EXPECT_NE(host.basic()->AllocateBlock, nullptr);
}

TEST(HostWithNullSlots, LeavesSlotsBeyondTheTableAlone) {
  const embedded::Host host(HostWithFaults().withNullSlot("AI Art Suite", 5000));
  EXPECT_NE(test::acquire<AIArtSuite>(host), nullptr);
}

TEST(HostThatRefusesACall, AnswersItWithTheCodeAndDoesNothing) {
  embedded::Host host(
      HostWithFaults().answering("AI Layer Suite", "InsertLayer", 2, fourCC("!MEM")));
  host.newDocument();
  const auto* layers = test::acquire<AILayerSuite>(host);
  AILayerHandle layer = nullptr;
  EXPECT_EQ(layers->InsertLayer(nullptr, kPlaceAboveAll, &layer), 0);
  AILayerHandle refused = nullptr;
  EXPECT_EQ(layers->InsertLayer(nullptr, kPlaceAboveAll, &refused), fourCC("!MEM"));
  EXPECT_EQ(refused, nullptr);
  EXPECT_EQ(host.document().layers.size(), 2U);
  EXPECT_EQ(layers->InsertLayer(nullptr, kPlaceAboveAll, &layer), 0);
  EXPECT_EQ(host.document().layers.size(), 3U);

  const auto failure = host.journal().firstFailure();
  ASSERT_TRUE(failure);
  EXPECT_TRUE(failure->injected);
  EXPECT_EQ(failure->function, "InsertLayer");
  EXPECT_EQ(failure->code, fourCC("!MEM"));
  EXPECT_NE(host.journal()
                .jsonLines(failure->call, failure->call + 1)
                .find(R"("layer":null},"result":558712141})"),  // '!MEM' = 0x214D454D
            std::string::npos);
}

TEST(HostThatFailsACallAfterwards, HasCarriedItOut) {
  embedded::Host host(HostWithFaults().answering("AI Layer Suite", "InsertLayer", 1, fourCC("!MEM"),
                                                 embedded::FaultMoment::afterwards));
  host.newDocument();
  AILayerHandle layer = nullptr;
  EXPECT_EQ(test::acquire<AILayerSuite>(host)->InsertLayer(nullptr, kPlaceAboveAll, &layer),
            fourCC("!MEM"));
  EXPECT_EQ(host.document().layers.size(), 2U);
  ASSERT_TRUE(host.journal().firstFailure());
  EXPECT_TRUE(host.journal().firstFailure()->injected);
}

TEST(HostThatTellsAtItsBorder, TellsOfEveryCallWhenItComesAndWhenItIsAnswered) {
  std::string told;
  const embedded::Host host(
      HostWithFaults().tellingAtBorder([&](bool begins) { told += begins ? '(' : ')'; }));
  std::int32_t count = 0;
  test::acquire<AILayerSuite>(host)->CountLayers(&count);
  EXPECT_EQ(told, "()()") << "the suite is acquired, and the layers are counted";
}

TEST(HostThatRefusesACall, CanRefuseSeveralCallsOfOneFunction) {
  const embedded::Host some(HostWithFaults()
                                .answering("AI Layer Suite", "CountLayers", 1, 11)
                                .answering("AI Layer Suite", "CountLayers", 3, 13));
  const auto* layers = test::acquire<AILayerSuite>(some);
  std::int32_t count = 0;
  EXPECT_EQ(layers->CountLayers(&count), 11);
  EXPECT_EQ(layers->CountLayers(&count), 0);
  EXPECT_EQ(layers->CountLayers(&count), 13);
  EXPECT_EQ(layers->CountLayers(&count), 0);
}

TEST(HostThatRefusesACall, CanRefuseEveryCallOfAFunction) {
  const embedded::Host host(HostWithFaults().answering("AI Layer Suite", "CountLayers", 0, 11));
  std::int32_t count = 7;
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(test::acquire<AILayerSuite>(host)->CountLayers(&count), 11);
  EXPECT_EQ(count, 7);
}

TEST(HostThatRefusesACall, ReturnsTheCodeFromAFunctionThatReturnsANumber) {
  const embedded::Host host(
      HostWithFaults().answering("AI Runtime Suite", "GetAppMajorVersion", 1, 99));
  const auto* runtime = test::acquire<AIRuntimeSuite>(host);
  EXPECT_EQ(runtime->GetAppMajorVersion(), 99);
  EXPECT_EQ(runtime->GetAppMajorVersion(), 16);
}

TEST(HostThatRefusesACall, ShowsNoAlertWhenTheAlertIsRefused) {
  const embedded::Host host(HostWithFaults().answering("AI User Suite", "ErrorAlert", 1, 1));
  test::HostText text(host, "CANT");
  test::acquire<AIUserSuite>(host)->ErrorAlert(text.body());
  EXPECT_THAT(host.alerts(), IsEmpty());
}

TEST(HostThatRefusesASuite, CountsSuitesInTheOrderOfTheRequests) {
  const embedded::Host host(HostWithFaults().refusingSuite(2, fourCC("!Acq")));
  EXPECT_EQ(acquire(host, "AI Art Suite", 16), 0);
  EXPECT_EQ(acquire(host, "AI Path Suite", 10), fourCC("!Acq"));
  EXPECT_EQ(acquire(host, "AI Path Suite", 10), 0);
  EXPECT_EQ(host.acquiredSuites(), 2U);
}

TEST(HostThatRefusesAString, GivesNone) {
  const embedded::Host host(
      HostWithFaults().answering("AI Unicode String Suite", "Initialize", 1, fourCC("!MEM")));
  const auto* strings = test::acquire<AIUnicodeStringSuite>(host);
  UnicodeStringBody body;
  EXPECT_EQ(strings->Initialize(&body, "a", 1, kAIUTF8CharacterEncoding), fourCC("!MEM"));
  EXPECT_EQ(body.inside, nullptr);
  EXPECT_EQ(host.liveStrings(), 0U);
}

TEST(HostThatRefusesAString, CountsAnInjectedEndOfTextAsAFailure) {
  const embedded::Host host(
      HostWithFaults().answering("AI Unicode String Suite", "GetChar", 2, fourCC("US!I")));
  test::HostText text(host, "pen");
  EXPECT_EQ(test::characters(host, *text.body()), U"p");
  ASSERT_TRUE(host.journal().firstFailure());
  EXPECT_EQ(host.journal().firstFailure()->function, "GetChar");
}

// What failed calls left in their out parameters.
struct Left {
  std::int32_t count = 7;
  AIBoolean hasArt = 1;
  AILayerHandle layer = nullptr;
  const char* name = nullptr;
  std::int16_t targetType = 7;
};

Left leftByFailedCalls(HostWithFaults options) {
  constexpr AIErr kCode = fourCC("TEST");
  embedded::Host host(options.withDocumentLayout(embedded::DocumentLayout::older)
                          .answering("AI Layer Suite", "CountLayers", 1, kCode)
                          .answering("AI Layer Suite", "LayerHasArt", 1, kCode)
                          .answering("AI Layer Suite", "GetFirstLayer", 1, kCode)
                          .answering("SP Plug-ins Suite", "GetPluginName", 1, kCode)
                          .answering("AI Document Suite", "GetDocumentTargeting", 1, kCode));
  host.newDocument();
  Left left;
  std::int16_t y = 0;
  std::int16_t x = 0;
  const auto* layers = test::acquire<AILayerSuite>(host);
  EXPECT_EQ(layers->CountLayers(&left.count), kCode);
  EXPECT_EQ(layers->LayerHasArt(nullptr, &left.hasArt), kCode);
  EXPECT_EQ(layers->GetFirstLayer(&left.layer), kCode);
  EXPECT_EQ(test::acquire<SPPluginsSuite>(host)->GetPluginName(host.plugin(), &left.name), kCode);
  EXPECT_EQ(test::acquire<AIDocumentSuite>(host)->GetDocumentTargeting(&left.targetType, &x, &y),
            kCode);
  return left;
}

TEST(HostThatRefusesACall, LeavesItsOutParametersUnchanged) {
  const Left left = leftByFailedCalls({});
  EXPECT_EQ(left.count, 7);
  EXPECT_EQ(left.hasArt, 1);
  EXPECT_EQ(left.layer, nullptr);
  EXPECT_EQ(left.name, nullptr);
  EXPECT_EQ(left.targetType, 7);
}

TEST(HostThatRefusesACall, CanFillItsOutParametersWithMeaninglessValues) {
  const Left left = leftByFailedCalls(HostWithFaults().fillingOutsOfFailedCalls());
  EXPECT_EQ(left.count, 99);
  EXPECT_EQ(left.hasArt, 0);
  EXPECT_NE(left.layer, nullptr);
  EXPECT_STREQ(left.name, "left by a call that failed");
  EXPECT_EQ(left.targetType, 99);
}

TEST(HostThatFillsOutParameters, FillsThemAlsoWhenTheHostItselfRefuses) {
  embedded::Host host(HostWithFaults().fillingOutsOfFailedCalls());
  host.newDocument();
  const auto* layers = test::acquire<AILayerSuite>(host);
  AILayerHandle layer = nullptr;
  EXPECT_EQ(layers->GetNthLayer(5, &layer), fourCC("PARM"));
  EXPECT_NE(layer, nullptr);
  EXPECT_EQ(layers->SetCurrentLayer(layer), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 1U) << "the handle is not valid";
}

TEST(HostThatFillsOutParameters, TouchesNeitherThoseOfASuccessfulCallNorNullPointers) {
  embedded::Host host(HostWithFaults().fillingOutsOfFailedCalls());
  host.newDocument();
  const auto* layers = test::acquire<AILayerSuite>(host);
  std::int32_t count = 0;
  EXPECT_EQ(layers->CountLayers(&count), 0);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(layers->CountLayers(nullptr), fourCC("PARM"));
}

TEST(HostThatFillsOutParameters, RecordsNullForThem) {
  embedded::Host host(HostWithFaults().fillingOutsOfFailedCalls());
  std::int32_t count = 0;
  AILayerHandle layer = nullptr;
  EXPECT_EQ(test::acquire<AILayerSuite>(host)->GetNthLayer(0, &layer), fourCC("DOC?"));
  EXPECT_EQ(test::acquire<AILayerSuite>(host)->CountLayers(&count), 0);
  EXPECT_THAT(host.journal().jsonLines(), testing::HasSubstr(R"({"n":0,"layer":null})"));
}

}  // namespace
