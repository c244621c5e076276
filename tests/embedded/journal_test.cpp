#include "embedded/journal.h"

#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/ai_art_set_suite.h"
#include "hostapi/ai_art_style_suite.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_document_suite.h"
#include "hostapi/ai_layer_suite.h"
#include "hostapi/ai_path_style_suite.h"
#include "hostapi/ai_path_suite.h"
#include "hostapi/ai_runtime_suite.h"
#include "hostapi/ai_tablet_data_suite.h"
#include "hostapi/ai_user_suite.h"
#include "hostapi/codes.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;

class JournalOfAHost : public testing::Test {
 protected:
  explicit JournalOfAHost(embedded::Options options = {}) : host(std::move(options)) {
    host.newDocument();
  }

  // The lines of the calls made since this was last called.
  std::string fresh() {
    const std::size_t from = seen_;
    seen_ = host.journal().size();
    return host.journal().jsonLines(from);
  }

  AIArtHandle makePath() {
    AIArtHandle path = nullptr;
    EXPECT_EQ(art->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path), 0);
    return path;
  }

  embedded::Host host;
  const AIArtSuite* art = test::acquire<AIArtSuite>(host);
  const AIPathSuite* paths = test::acquire<AIPathSuite>(host);
  const AILayerSuite* layers = test::acquire<AILayerSuite>(host);

 private:
  std::size_t seen_ = host.journal().size();
};

TEST_F(JournalOfAHost, WritesACallWithItsArgumentsAndResult) {
  AIArtHandle group = nullptr;
  AIArtHandle path = nullptr;
  AILayerHandle layer = nullptr;
  layers->GetFirstLayer(&layer);
  art->GetFirstArtOfLayer(layer, &group);
  art->NewArt(kPathArt, kPlaceInsideOnTop, group, &path);
  EXPECT_EQ(
      fresh(),
      R"({"suite":"AI Layer Suite","version":12,"function":"GetFirstLayer",)"
      R"("arguments":{"layer":"layer:1"},"result":0})"
      "\n"
      R"({"suite":"AI Art Suite","version":16,"function":"GetFirstArtOfLayer",)"
      R"("arguments":{"layer":"layer:1","group":"group:1"},"result":0})"
      "\n"
      R"({"suite":"AI Art Suite","version":16,"function":"NewArt",)"
      R"("arguments":{"type":2,"paintOrder":3,"reference":"group:1","art":"path:1"},"result":0})"
      "\n");
}

TEST_F(JournalOfAHost, WritesNullForTheOutParametersOfAFailedCall) {
  AIArtHandle path = nullptr;
  art->NewArt(99, kPlaceAboveAll, nullptr, &path);
  EXPECT_EQ(fresh(), R"({"suite":"AI Art Suite","version":16,"function":"NewArt",)"
                     R"("arguments":{"type":99,"paintOrder":5,"reference":null,"art":null},)"
                     R"("result":1095914559})"
                     "\n");  // 'ART?' = 0x4152543F
}

TEST_F(JournalOfAHost, NumbersLayersAndPathsInTheOrderOfTheirCreation) {
  AILayerHandle layer = nullptr;
  layers->InsertLayer(nullptr, kPlaceAboveAll, &layer);
  layers->SetLayerEditable(layer, 1);
  EXPECT_EQ(fresh(),
            R"({"suite":"AI Layer Suite","version":12,"function":"InsertLayer",)"
            R"("arguments":{"reference":null,"paintOrder":5,"layer":"layer:2"},"result":0})"
            "\n"
            R"({"suite":"AI Layer Suite","version":12,"function":"SetLayerEditable",)"
            R"("arguments":{"layer":"layer:2","editable":true},"result":0})"
            "\n");
}

TEST_F(JournalOfAHost, WritesLongArraysAsLengthAndChecksum) {
  const AIArtHandle path = makePath();
  fresh();
  const AIPathSegment segments[2] = {};
  paths->SetPathSegmentCount(path, 2);
  paths->SetPathSegments(path, 0, 2, segments);
  // The CRC-32 of 56 zero bytes.
  EXPECT_EQ(fresh(), R"({"suite":"AI Path Suite","version":10,"function":"SetPathSegmentCount",)"
                     R"("arguments":{"path":"path:1","count":2},"result":0})"
                     "\n"
                     R"({"suite":"AI Path Suite","version":10,"function":"SetPathSegments",)"
                     R"("arguments":{"path":"path:1","first":0,"count":2,)"
                     R"("segments":{"length":2,"checksum":"d3c8a549"}},"result":0})"
                     "\n");
}

TEST_F(JournalOfAHost, TakesTheChecksumOverTheWholeArrayAsItLiesInMemory) {
  const AIArtHandle path = makePath();
  const AITabletProfile profiles[2] = {{0, 0.5F}, {1, 0.25F}};
  fresh();
  test::acquire<AITabletDataSuite>(host)->SetTabletData(path, profiles, 2, kTabletPressure);
  // The CRC-32 of the 16 bytes 00000000 0000003f 0000803f 0000803e.
  EXPECT_NE(fresh().find(R"("profiles":{"length":2,"checksum":"da10fa39"})"), std::string::npos);
}

TEST_F(JournalOfAHost, WritesOnlyTheLengthOfAnArrayThatCannotBeRead) {
  const AIArtHandle path = makePath();
  fresh();
  const AIPathSegment segment{};
  paths->SetPathSegments(path, 0, -3, &segment);
  EXPECT_NE(fresh().find(R"("count":-3,"segments":{"length":-3,"checksum":null}})"),
            std::string::npos);
  test::acquire<AITabletDataSuite>(host)->SetTabletData(path, nullptr, 0, kTabletPressure);
  EXPECT_NE(fresh().find(R"({"path":"path:1","profiles":null,"count":0,"type":0})"),
            std::string::npos);
}

TEST_F(JournalOfAHost, WritesStructuresAsObjects) {
  const auto* suite = test::acquire<AIDocumentSuite>(host);
  fresh();
  const AIRealPoint origin{0, 0.1F};
  suite->SetDocumentRulerOrigin(&origin);
  EXPECT_NE(fresh().find(R"("arguments":{"origin":{"h":0,"v":0.1}},"result":0})"),
            std::string::npos);
  AIDocumentSetup setup{};
  suite->GetDocumentSetup(&setup);
  EXPECT_NE(fresh().find(R"("arguments":{"setup":{"width":595.276,"height":841.89,)"),
            std::string::npos);
  host.takeDocument();
  suite->GetDocumentSetup(&setup);
  EXPECT_NE(fresh().find(R"("arguments":{"setup":null},)"), std::string::npos);
}

TEST_F(JournalOfAHost, RecordsStringsAndPathsButDoesNotWriteThem) {
  const std::size_t before = host.journal().size();
  fresh();
  {
    test::HostText text(host, "pen");
    test::HostFilePath path(host, "pen");
  }
  EXPECT_GT(host.journal().size(), before + 4);
  EXPECT_GT(host.journal().count("AI Unicode String Suite", "Initialize"), 1U);
  EXPECT_EQ(fresh().find("AI Unicode String Suite\",\"version\":7,\"function\":\"Init"),
            std::string::npos);
}

TEST_F(JournalOfAHost, ShowsAFilePathAsItsLastName) {
  const auto* suite = test::acquire<AIPathStyleSuite>(host);
  test::HostFilePath path(host, "/home/someone\\Penwick/brush_pressure.ai");
  fresh();
  AIDocumentHandle document = nullptr;
  suite->ImportStyles(path.body(), &document);
  EXPECT_NE(fresh().find(R"("arguments":{"file":"brush_pressure.ai","document":)"),
            std::string::npos);
}

TEST_F(JournalOfAHost, WritesAcquisitionsAndReleasesOfSuites) {
  const void* table = nullptr;
  host.basic()->AcquireSuite("AI User Suite", 10, &table);
  host.basic()->ReleaseSuite("AI User Suite", 10);
  EXPECT_EQ(fresh(), R"({"suite":"SP Basic Suite","version":4,"function":"AcquireSuite",)"
                     R"("arguments":{"name":"AI User Suite","version":10},"result":0})"
                     "\n"
                     R"({"suite":"SP Basic Suite","version":4,"function":"ReleaseSuite",)"
                     R"("arguments":{"name":"AI User Suite","version":10},"result":0})"
                     "\n");
}

TEST_F(JournalOfAHost, WritesTheTextOfAnAlertAndNoResult) {
  const auto* suite = test::acquire<AIUserSuite>(host);
  test::HostText text(host, "CANT");
  fresh();
  suite->ErrorAlert(text.body());
  EXPECT_EQ(fresh(), R"({"suite":"AI User Suite","version":10,"function":"ErrorAlert",)"
                     R"("arguments":{"text":"CANT"},"result":null})"
                     "\n");
}

TEST_F(JournalOfAHost, WritesCountsIndicesAndBooleansThatAreGivenBack) {
  const auto* sets = test::acquire<AIArtSetSuite>(host);
  makePath();
  AILayerHandle layer = nullptr;
  AIArtSet set = nullptr;
  layers->GetNthLayer(0, &layer);
  fresh();
  AIBoolean hasArt = 0;
  std::uint64_t count = 0;
  AIArtHandle member = nullptr;
  layers->LayerHasArt(layer, &hasArt);
  sets->NewArtSet(&set);
  sets->LayerArtSet(layer, set);
  sets->CountArtSet(set, &count);
  sets->IndexArtSet(set, 0, &member);
  const std::string lines = fresh();
  EXPECT_NE(lines.find(R"({"layer":"layer:1","hasArt":true})"), std::string::npos);
  EXPECT_NE(lines.find(R"({"layer":"layer:1","set":"set:1"})"), std::string::npos);
  EXPECT_NE(lines.find(R"({"set":"set:1","count":1})"), std::string::npos);
  EXPECT_NE(lines.find(R"({"set":"set:1","index":0,"art":"path:1"})"), std::string::npos);
}

TEST_F(JournalOfAHost, ShowsAnInvalidHandleAsUnknown) {
  art->NewArt(kPathArt, kPlaceAboveAll, reinterpret_cast<AIArtHandle>(&host), nullptr);
  EXPECT_NE(fresh().find(R"("reference":"unknown","art":null)"), std::string::npos);
}

TEST_F(JournalOfAHost, KeepsTheFirstFailureWithItsCodeAndPath) {
  EXPECT_EQ(host.journal().firstFailure(), std::nullopt);
  makePath();
  const AIArtHandle second = makePath();
  paths->SetPathSegmentCount(second, 1);
  paths->SetPathSegmentCount(second, -1);
  paths->SetPathSegmentCount(nullptr, 1);
  const auto failure = host.journal().firstFailure();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->suite, "AI Path Suite");
  EXPECT_EQ(failure->function, "SetPathSegmentCount");
  EXPECT_EQ(failure->code, fourCC("SEGM"));
  EXPECT_EQ(failure->path, 2U);
  EXPECT_FALSE(failure->injected);
  EXPECT_EQ(failure->sentence(), "\"AI Path Suite\" SetPathSegmentCount answered 'SEGM'");
  const auto next = host.journal().firstFailure(failure->call + 1);
  ASSERT_TRUE(next);
  EXPECT_EQ(next->code, fourCC("PARM"));
  EXPECT_EQ(next->path, std::nullopt);
}

TEST_F(JournalOfAHost, CountsPathsWithinTheirDocument) {
  makePath();
  host.newDocument();
  const AIArtHandle path = makePath();
  paths->SetPathSegmentCount(path, -1);
  EXPECT_EQ(host.journal().firstFailure()->path, 1U);
}

TEST_F(JournalOfAHost, CountsARefusedPathAsTheNextOne) {
  makePath();
  AILayerHandle layer = nullptr;
  layers->GetFirstLayer(&layer);
  layers->SetLayerEditable(layer, 0);
  AIArtHandle path = nullptr;
  art->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path);
  EXPECT_EQ(host.journal().firstFailure()->path, 2U);
}

TEST_F(JournalOfAHost, TheEndOfAStringIsNotAFailure) {
  test::HostText text(host, "pen");
  EXPECT_EQ(test::characters(host, *text.body()), U"pen");
  EXPECT_EQ(host.journal().firstFailure(), std::nullopt);
}

class JournalWithoutChecksums : public JournalOfAHost {
 protected:
  JournalWithoutChecksums() : JournalOfAHost(test::HostWithFaults().withoutChecksums()) {}
};

TEST_F(JournalWithoutChecksums, HasOnlyTheLengths) {
  const AIArtHandle path = makePath();
  const AIPathSegment segment{};
  paths->SetPathSegmentCount(path, 1);
  fresh();
  paths->SetPathSegments(path, 0, 1, &segment);
  EXPECT_NE(fresh().find(R"("segments":{"length":1,"checksum":null})"), std::string::npos);
}

}  // namespace
