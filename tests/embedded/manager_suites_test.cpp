// SP Basic, SP Access and SP Plug-ins, and which suites there are.
#include <cstring>
#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/codes.h"
#include "hostapi/sp_access_suite.h"
#include "hostapi/sp_plugins_suite.h"
#include "hostapi/uncalled_suites.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using testing::ElementsAre;
using testing::IsEmpty;

class ManagerSuites : public testing::Test {
 protected:
  SPErr acquire(const char* name, std::int32_t version) {
    const void* table = nullptr;
    return host.basic()->AcquireSuite(name, version, &table);
  }

  embedded::Host host;
};

TEST_F(ManagerSuites, OffersEverySuiteThatThePlugInAsksForAtItsVersion) {
  const SuiteId named[] = {
      {"SP Access Suite", 3},         {"SP Plug-ins Suite", 4},
      {"AI Notifier Suite", 3},       {"AI Context Suite", 6},
      {"AI User Suite", 10},          {"AI File Path Suite", 3},
      {"AI Folders Suite", 4},        {"AI Unicode String Suite", 7},
      {"SP Blocks Suite", 2},         {"AI File Format Suite", 12},
      {"AI Document Suite", 13},      {"AI Text Frame Suite", 3},
      {"AI Art Suite", 16},           {"AI Path Suite", 10},
      {"AI Matching Art Suite", 6},   {"AI MdMemory Suite", 2},
      {"AI Application Suite", 2},    {"AI Document List Suite", 7},
      {"AI Path Style Suite", 12},    {"AI Layer Suite", 12},
      {"AI Real Bezier Suite", 3},    {"AI TabletData Suite", 2},
      {"AI Art Style Suite", 6},      {"AI Shape Construction Suite", 5},
      {"AI Runtime Suite", 11},       {"AI Art Set Suite", 7},
      {"ATE TextFrame Suite", 101},   {"ATE DocumentTextResources Suite", 101},
      {"ATE WordsIterator Suite", 1},
  };
  for (const SuiteId& suite : named)
    EXPECT_EQ(acquire(suite.name, suite.version), 0) << suite.name;
  for (const SuiteId& suite : kTextEngineSuites)
    EXPECT_EQ(acquire(suite.name, suite.version), 0) << suite.name;
  EXPECT_EQ(host.acquiredSuites(), std::size(named) + 78);
}

TEST_F(ManagerSuites, OffersNoOtherNameVersionOrCase) {
  EXPECT_EQ(acquire("AI Art Suite", 15), fourCC("S!Fd"));
  EXPECT_EQ(acquire("AI Art Suite", 17), fourCC("S!Fd"));
  EXPECT_EQ(acquire("ai art suite", 16), fourCC("S!Fd"));
  EXPECT_EQ(acquire("AI Color Suite", 1), fourCC("S!Fd"));
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(ManagerSuites, LeavesTheTableAloneWhenThereIsNoSuchSuite) {
  const void* table = &host;
  host.basic()->AcquireSuite("AI Color Suite", 1, &table);
  EXPECT_EQ(table, &host);
}

TEST_F(ManagerSuites, GivesTheSameTableEachTimeAndCountsAcquisitions) {
  const auto* first = test::acquire<SPAccessSuite>(host);
  EXPECT_EQ(test::acquire<SPAccessSuite>(host), first);
  EXPECT_EQ(host.acquiredSuites(), 2U);
  EXPECT_EQ(host.basic()->ReleaseSuite("SP Access Suite", 3), 0);
  EXPECT_EQ(host.basic()->ReleaseSuite("SP Access Suite", 3), 0);
  EXPECT_EQ(host.acquiredSuites(), 0U);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(ManagerSuites, ReportsTheReleaseOfASuiteThatWasNotAcquired) {
  EXPECT_EQ(host.basic()->ReleaseSuite("AI Art Suite", 16), fourCC("Parm"));
  EXPECT_THAT(host.misuse(), ElementsAre("plug-in misbehaving: \"SP Basic Suite\" ReleaseSuite: "
                                         "\"AI Art Suite\" 16 was not acquired"));
}

TEST_F(ManagerSuites, ReportsSuitesThatAreNotReleasedAtTheEnd) {
  EXPECT_EQ(acquire("AI Art Suite", 16), 0);
  host.checkSuitesReleased();
  EXPECT_THAT(host.misuse(),
              ElementsAre("plug-in misbehaving: \"AI Art Suite\" 16 was not released"));
}

TEST_F(ManagerSuites, ReportsNullPointers) {
  const void* table = nullptr;
  EXPECT_EQ(host.basic()->AcquireSuite(nullptr, 1, &table), fourCC("Parm"));
  EXPECT_EQ(host.basic()->AcquireSuite("AI Art Suite", 16, nullptr), fourCC("Parm"));
  EXPECT_THAT(
      host.misuse(),
      ElementsAre("plug-in misbehaving: \"SP Basic Suite\" AcquireSuite: name is a null pointer",
                  "plug-in misbehaving: \"SP Basic Suite\" AcquireSuite: suite is a null "
                  "pointer"));
  EXPECT_EQ(host.acquiredSuites(), 0U);
}

TEST_F(ManagerSuites, ComparesTexts) {
  EXPECT_EQ(host.basic()->IsEqual("abc", "abc"), 1);
  EXPECT_EQ(host.basic()->IsEqual("abc", "abC"), 0);
}

TEST_F(ManagerSuites, KeepsWhatIsInABlockWhenItGrows) {
  void* block = nullptr;
  ASSERT_EQ(host.basic()->AllocateBlock(5, &block), 0);
  std::memcpy(block, "pens", 5);
  void* larger = nullptr;
  ASSERT_EQ(host.basic()->ReallocateBlock(block, 5000, &larger), 0);
  EXPECT_STREQ(static_cast<char*>(larger), "pens");
  EXPECT_EQ(host.liveBlocks(), 1U);
  EXPECT_EQ(host.basic()->FreeBlock(larger), 0);
  EXPECT_EQ(host.liveBlocks(), 0U);
}

TEST_F(ManagerSuites, ReportsABlockThatIsFreedTwice) {
  void* block = nullptr;
  ASSERT_EQ(host.basic()->AllocateBlock(0, &block), 0);
  EXPECT_NE(block, nullptr);
  EXPECT_EQ(host.basic()->FreeBlock(block), 0);
  EXPECT_EQ(host.basic()->FreeBlock(block), fourCC("Parm"));
  EXPECT_EQ(host.basic()->ReallocateBlock(block, 1, &block), fourCC("Parm"));
  EXPECT_EQ(host.misuse().size(), 2U);
}

TEST_F(ManagerSuites, RefusesABlockThatDoesNotFitIntoMemory) {
  void* block = nullptr;
  EXPECT_EQ(host.basic()->AllocateBlock(static_cast<std::size_t>(-1), &block), fourCC("!MEM"));
  EXPECT_EQ(block, nullptr);
}

TEST_F(ManagerSuites, ReportsACallOfTheFunctionThatStandsForMissingOnes) {
  EXPECT_EQ(host.basic()->Undefined(), fourCC("!IMP"));
  EXPECT_EQ(host.misuse().size(), 1U);
}

TEST_F(ManagerSuites, CountsUsesOfThePlugIn) {
  const auto* suite = test::acquire<SPAccessSuite>(host);
  SPAccessRef access = nullptr;
  EXPECT_EQ(suite->AcquirePlugin(host.plugin(), &access), 0);
  EXPECT_EQ(suite->AcquirePlugin(host.plugin(), &access), 0);
  EXPECT_EQ(host.accessCount(), 2U);
  EXPECT_EQ(suite->ReleasePlugin(access), 0);
  EXPECT_EQ(suite->ReleasePlugin(access), 0);
  EXPECT_EQ(host.accessCount(), 0U);
  EXPECT_THAT(host.misuse(), IsEmpty());
  EXPECT_EQ(suite->ReleasePlugin(access), fourCC("Parm"));
  EXPECT_EQ(host.misuse().size(), 1U);
}

TEST_F(ManagerSuites, RefusesAReferenceThatIsNotThePlugInsOwn) {
  const auto* suite = test::acquire<SPAccessSuite>(host);
  SPAccessRef access = nullptr;
  const auto foreign = reinterpret_cast<SPPluginRef>(&host);
  EXPECT_EQ(suite->AcquirePlugin(foreign, &access), fourCC("Parm"));
  EXPECT_EQ(access, nullptr);
  EXPECT_THAT(host.misuse(), ElementsAre("plug-in misbehaving: \"SP Access Suite\" AcquirePlugin: "
                                         "plugin is not a valid handle"));
}

TEST_F(ManagerSuites, GivesThePlugInItsName) {
  host.setPluginName("kvoexportfile");
  const char* name = nullptr;
  EXPECT_EQ(test::acquire<SPPluginsSuite>(host)->GetPluginName(host.plugin(), &name), 0);
  EXPECT_STREQ(name, "kvoexportfile");
}

TEST_F(ManagerSuites, ReportsACallOfASlotThatIsNotOffered) {
  const void* table = nullptr;
  ASSERT_EQ(host.basic()->AcquireSuite("AI Art Suite", 16, &table), 0);
  const auto slots = static_cast<AIErr (*const*)()>(table);
  EXPECT_EQ(slots[7](), fourCC("!IMP"));
  EXPECT_EQ(slots[70](), fourCC("!IMP"));
  EXPECT_THAT(host.misuse(),
              ElementsAre("plug-in misbehaving: called slot 7 of \"AI Art Suite\"",
                          "plug-in misbehaving: called slot 70 of \"AI Art Suite\""));
  EXPECT_EQ(host.journal().firstFailure()->function, "slot 7");
}

TEST_F(ManagerSuites, ReportsACallOfASuiteThatIsOnlyAcquired) {
  const void* table = nullptr;
  ASSERT_EQ(host.basic()->AcquireSuite("ATE Kinsoku Suite", 1, &table), 0);
  const auto text = static_cast<AIErr (*const*)()>(table);
  EXPECT_EQ(text[31](), fourCC("!IMP"));
  EXPECT_EQ(text[200](), fourCC("!IMP"));
  ASSERT_EQ(host.basic()->AcquireSuite("AI Context Suite", 6, &table), 0);
  EXPECT_EQ(static_cast<AIErr (*const*)()>(table)[1](), fourCC("!IMP"));
  EXPECT_THAT(host.misuse(),
              ElementsAre("plug-in misbehaving: called slot 31 of \"ATE Kinsoku Suite\"",
                          "plug-in misbehaving: called slot 32 or a later one of \"ATE Kinsoku "
                          "Suite\"",
                          "plug-in misbehaving: called slot 1 of \"AI Context Suite\""));
}

TEST(ActiveHost, IsOneAtATime) {
  {
    const embedded::Host host;
    EXPECT_THROW(embedded::Host(), std::logic_error);
    EXPECT_NE(test::acquire<SPAccessSuite>(host), nullptr) << "the first one is still active";
  }
  EXPECT_NO_THROW(embedded::Host());
}

TEST(ActiveHost, KeepsOnlyTheFirstHundredSentences) {
  embedded::Host host;
  for (int i = 0; i < 1000; ++i)
    host.basic()->ReleaseSuite("AI Art Suite", 16);
  EXPECT_EQ(host.misuse().size(), 100U);
}

}  // namespace
