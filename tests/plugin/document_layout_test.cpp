// Detecting the layout of the Document suite by its slot 40.
#include <gmock/gmock.h>

#include "hostapi/ai_document_suite.h"
#include "tests/plugin/changed_suite.h"
#include "tests/plugin/plugin_in_host.h"
#include "tests/support/host/host_with_faults.h"

namespace {

using namespace plugintest;
using test::HostWithFaults;
using testing::IsEmpty;

constexpr char kDocument[] = "AI Document Suite";

std::size_t questions(const PluginInHost& plugin) {
  return plugin.calls(kDocument, "GetAIVersion") + plugin.calls(kDocument, "GetDocumentTargeting");
}

TEST(DocumentLayout, IsDetectedOnceWithoutHarm) {
  for (const auto layout : {embedded::DocumentLayout::newer, embedded::DocumentLayout::older}) {
    PluginInHost plugin(HostWithFaults().withDocumentLayout(layout));
    plugin->start();
    for (int file = 0; file < 2; ++file) {
      const embedded::Opening opening = plugin.open(oneStroke());
      EXPECT_TRUE(opening.builderRan);
      EXPECT_EQ(opening.code("AI Go"), 0);
      EXPECT_THAT(opening.misuse, IsEmpty());
      EXPECT_FLOAT_EQ(opening.document.width, 200 * 0.2834F);
    }
    EXPECT_EQ(questions(plugin), 1U);
  }
}

// How often a host that gives this answer in slot 40 is asked while two files are opened.
std::size_t questionsWhereTheVersionIs(hostapi::AIErr answer) {
  PluginInHost plugin(HostWithFaults().answering(kDocument, "GetAIVersion", 0, answer));
  plugin->start();
  for (int file = 0; file < 2; ++file) {
    const embedded::Opening opening = plugin.open(oneStroke());
    EXPECT_EQ(opening.code("AI Go"), 0);
    EXPECT_THAT(opening.misuse, IsEmpty());
  }
  return questions(plugin);
}

TEST(DocumentLayout, IsRememberedAfterASmallVersionNumber) {
  for (const hostapi::AIErr version : {1, 16, 99})
    EXPECT_EQ(questionsWhereTheVersionIs(version), 1U) << version;
}

TEST(DocumentLayout, IsAskedForAgainWithTheNextFileAfterAnyOtherNumber) {
  for (const hostapi::AIErr code : {0, -1, -108, 100, fourCC("DOC?")})
    EXPECT_EQ(questionsWhereTheVersionIs(code), 2U) << code;
}

TEST(DocumentLayout, CanStillBeTheOlderOneAfterAnUnclearAnswer) {
  PluginInHost plugin(HostWithFaults()
                          .withDocumentLayout(embedded::DocumentLayout::older)
                          .answering(kDocument, "GetDocumentTargeting", 1, fourCC("DOC?")));
  plugin->start();
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), fourCC("!IMP"));
  const embedded::Opening second = plugin.open(oneStroke());
  EXPECT_EQ(second.code("AI Go"), 0);
  EXPECT_THAT(second.misuse, IsEmpty());
  EXPECT_FLOAT_EQ(second.document.width, 200 * 0.2834F);
}

TEST(DocumentLayout, IsTheSameForReadingAndForWritingThePageOfAFile) {
  PluginInHost plugin(HostWithFaults()
                          .withDocumentLayout(embedded::DocumentLayout::older)
                          .answering(kDocument, "GetDocumentTargeting", 1, fourCC("DOC?")));
  plugin->start();
  // A page that can be read in the newer layout; writing it is not offered there.
  ChangedSuite<hostapi::AIDocumentSuite> document;
  document->GetDocumentSetup = [](hostapi::AIDocumentSetup*) { return hostapi::kNoErr; };
  EXPECT_EQ(plugin.open(oneStroke()).code("AI Go"), fourCC("!IMP"));
  EXPECT_EQ(plugin.calls(kDocument, "SetDocumentSetup"), 0U);
  EXPECT_EQ(questions(plugin), 1U);
}

// One of the three numbers changes, and the answer is small.
template <int changed>
hostapi::AIErr changeOne(std::int16_t* type, std::int16_t* x, std::int16_t* y) {
  *(changed == 0 ? type : changed == 1 ? x : y) = 0;
  return 16;
}

TEST(DocumentLayout, IsTheOlderOneWhicheverOfTheThreeNumbersChanges) {
  for (const auto targeting : {&changeOne<0>, &changeOne<1>, &changeOne<2>}) {
    PluginInHost plugin(HostWithFaults().withDocumentLayout(embedded::DocumentLayout::older));
    plugin->start();
    ChangedSuite<hostapi::AIDocumentSuite> document;
    document->GetDocumentTargeting = targeting;
    const embedded::Opening opening = plugin.open(oneStroke());
    EXPECT_EQ(opening.code("AI Go"), 0);
    EXPECT_THAT(opening.misuse, IsEmpty());
    EXPECT_FLOAT_EQ(opening.document.width, 200 * 0.2834F);
  }
}

}  // namespace
