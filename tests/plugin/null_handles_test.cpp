// Hosts that answer 0 but give a null handle. No such handle is passed back to the host, which
// would report it as misuse.
#include <gmock/gmock.h>

#include "tests/plugin/plugin_in_host.h"

namespace {

using namespace plugintest;
using testing::ElementsAre;
using testing::IsEmpty;

// What "AI Go" answers for a recording of two layers of two strokes when every call of the function
// gives null.
struct Row {
  const char* suite;
  const char* function;
  hostapi::AIErr answer;
  std::size_t paths;
};

const Row kRows[] = {
    {"AI Path Style Suite", "ImportStyles", fourCC("PARM"), 0},
    {"AI Art Style Suite", "GetArtStyleByNameFromDocument", 0, 4},
    {"AI Art Style Suite", "AddNamedStyle", 0, 4},
    {"AI Layer Suite", "GetFirstLayer", fourCC("PARM"), 0},
    {"AI Layer Suite", "InsertLayer", fourCC("PARM"), 2},
    {"AI Layer Suite", "GetNthLayer", 0, 4},
    {"AI Art Suite", "GetFirstArtOfLayer", fourCC("CANT"), 0},
    {"AI Art Suite", "NewArt", fourCC("CANT"), 0},
    {"AI Art Set Suite", "NewArtSet", fourCC("PARM"), 4},
    {"AI Art Set Suite", "IndexArtSet", fourCC("PARM"), 4},
};

class NullHandle : public testing::TestWithParam<Row> {};

TEST_P(NullHandle, IsNotPassedBackToTheHost) {
  PluginInHost plugin(failing(GetParam().suite, GetParam().function, 0, 0));
  plugin->start();
  const embedded::Opening opening = plugin.open(twoLayers(2));
  EXPECT_EQ(opening.code("AI Go"), GetParam().answer);
  EXPECT_EQ(art::countPaths(opening.document), GetParam().paths);
  EXPECT_THAT(opening.misuse, IsEmpty());
  EXPECT_THAT(plugin->end().misuse, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, NullHandle, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.function); });

TEST(NullAccess, IsNotReleasedAtShutdownWhichAnswersWithABadParameter) {
  PluginInHost plugin(failing("SP Access Suite", "AcquirePlugin", 0));
  EXPECT_TRUE(plugin->start().allAnsweredZero());
  const embedded::StepReport end = plugin->end();
  EXPECT_EQ(end.code("Shutdown"), fourCC("PARM"));
  EXPECT_THAT(end.alerts, ElementsAre("PARM"));
  EXPECT_THAT(end.misuse, IsEmpty());
  EXPECT_EQ(plugin.calls("SP Access Suite", "ReleasePlugin"), 0U);
}

}  // namespace
