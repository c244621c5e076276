// Path and TabletData.
#include <bit>
#include <cstdint>
#include <gmock/gmock.h>
#include <limits>

#include "embedded/host.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_path_suite.h"
#include "hostapi/ai_tablet_data_suite.h"
#include "hostapi/codes.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using testing::ElementsAre;
using testing::IsEmpty;

class PathSuites : public testing::Test {
 protected:
  PathSuites() {
    host.newDocument();
    art_->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path);
  }

  art::Path plain() { return std::get<art::Path>(host.document().layers[0].art[0].value); }

  AIArtHandle makeGroup() {
    AIArtHandle group = nullptr;
    EXPECT_EQ(art_->NewArt(kGroupArt, kPlaceAboveAll, nullptr, &group), 0);
    return group;
  }

  static AIPathSegment segment(float from) {
    return {{from, from + 1}, {from + 2, from + 3}, {from + 4, from + 5}, 0};
  }

  embedded::Host host;
  const AIPathSuite* suite = test::acquire<AIPathSuite>(host);
  const AITabletDataSuite* tablet = test::acquire<AITabletDataSuite>(host);
  AIArtHandle path = nullptr;

 private:
  const AIArtSuite* art_ = test::acquire<AIArtSuite>(host);
};

TEST_F(PathSuites, AddsAndRemovesSegments) {
  EXPECT_EQ(suite->SetPathSegmentCount(path, 3), 0);
  EXPECT_EQ(plain().segments.size(), 3U);
  EXPECT_EQ(suite->SetPathSegmentCount(path, 3), 0);
  EXPECT_EQ(suite->SetPathSegmentCount(path, 2), 0);
  EXPECT_EQ(plain().segments.size(), 2U);
  EXPECT_EQ(suite->SetPathSegmentCount(path, 0), 0);
  EXPECT_THAT(plain().segments, IsEmpty());
}

TEST_F(PathSuites, RefusesNegativeCountsAndMoreThan32000) {
  EXPECT_EQ(suite->SetPathSegmentCount(path, 32000), 0);
  EXPECT_EQ(suite->SetPathSegmentCount(path, 32001), fourCC("SEGM"));
  EXPECT_EQ(suite->SetPathSegmentCount(path, 32767), fourCC("SEGM"));
  EXPECT_EQ(suite->SetPathSegmentCount(path, -1), fourCC("SEGM"));
  EXPECT_EQ(suite->SetPathSegmentCount(path, -32768), fourCC("SEGM"));
  EXPECT_EQ(plain().segments.size(), 32000U);
  const AIPathSegment any = segment(0);
  EXPECT_EQ(suite->SetPathSegments(path, 0, -5, &any), fourCC("SEGM"));
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(PathSuites, KeepsSegmentsAsGiven) {
  AIPathSegment segments[2] = {segment(1.1F), segment(-7)};
  segments[1].corner = 1;
  ASSERT_EQ(suite->SetPathSegmentCount(path, 3), 0);
  EXPECT_EQ(suite->SetPathSegments(path, 1, 2, segments), 0);
  const art::Path kept = plain();
  EXPECT_EQ(kept.segments[0], art::Segment());
  EXPECT_EQ(kept.segments[1],
            (art::Segment{{1.1F, 1.1F + 1}, {1.1F + 2, 1.1F + 3}, {1.1F + 4, 1.1F + 5}, false}));
  EXPECT_EQ(kept.segments[2], (art::Segment{{-7, -6}, {-5, -4}, {-3, -2}, true}));
}

TEST_F(PathSuites, KeepsTheBitsOfEverySingle) {
  AIPathSegment segments[1] = {segment(0)};
  segments[0].p.h = -0.0F;
  segments[0].p.v = std::numeric_limits<float>::denorm_min();
  ASSERT_EQ(suite->SetPathSegmentCount(path, 1), 0);
  ASSERT_EQ(suite->SetPathSegments(path, 0, 1, segments), 0);
  const art::Path kept = plain();
  EXPECT_EQ(std::bit_cast<std::uint32_t>(kept.segments[0].p.h), 0x80000000U);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(kept.segments[0].p.v), 1U);
}

TEST_F(PathSuites, ReportsSegmentsBeyondTheCount) {
  const AIPathSegment segments[3] = {segment(0), segment(1), segment(2)};
  ASSERT_EQ(suite->SetPathSegmentCount(path, 2), 0);
  EXPECT_EQ(suite->SetPathSegments(path, 0, 3, segments), fourCC("PARM"));
  EXPECT_EQ(suite->SetPathSegments(path, -1, 2, segments), fourCC("PARM"));
  EXPECT_EQ(suite->SetPathSegments(path, 32767, 2, segments), fourCC("PARM"));
  EXPECT_THAT(host.misuse(),
              ElementsAre(testing::HasSubstr("segments 0 to 2 of a path that has 2"),
                          testing::HasSubstr("segments -1 to 0 of a path that has 2"),
                          testing::HasSubstr("segments 32767 to 32768 of a path that has 2")));
  EXPECT_EQ(plain().segments[0], art::Segment());
}

TEST_F(PathSuites, OpensAndClosesPaths) {
  EXPECT_FALSE(plain().closed);
  EXPECT_EQ(suite->SetPathClosed(path, 1), 0);
  EXPECT_TRUE(plain().closed);
  EXPECT_EQ(suite->SetPathClosed(path, 0), 0);
  EXPECT_FALSE(plain().closed);
}

TEST_F(PathSuites, KeepsPressureAboveOneAndMoreSamplesThanSegments) {
  const AITabletProfile profiles[3] = {{0, 0.5F}, {0.5F, 1.9990234375F}, {1, 0}};
  EXPECT_EQ(tablet->SetTabletData(path, profiles, 3, kTabletPressure), 0);
  EXPECT_THAT(plain().pressure,
              ElementsAre(art::TabletSample{0, 0.5F}, art::TabletSample{0.5F, 1.9990234375F},
                          art::TabletSample{1, 0}));
  EXPECT_THAT(plain().segments, IsEmpty());
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(PathSuites, KeepsOtherTabletDataUnderItsKind) {
  const AITabletProfile profiles[1] = {{0, 0.25F}};
  EXPECT_EQ(tablet->SetTabletData(path, profiles, 1, kTabletTilt), 0);
  EXPECT_THAT(plain().pressure, IsEmpty());
  EXPECT_THAT(plain().otherTabletData[art::TabletKind::tilt],
              ElementsAre(art::TabletSample{0, 0.25F}));
}

TEST_F(PathSuites, NewTabletDataReplaceTheOldOnes) {
  const AITabletProfile profiles[2] = {{0, 0.5F}, {1, 0}};
  ASSERT_EQ(tablet->SetTabletData(path, profiles, 2, kTabletPressure), 0);
  ASSERT_EQ(tablet->SetTabletData(path, nullptr, 0, kTabletPressure), 0);
  EXPECT_THAT(plain().pressure, IsEmpty());
}

TEST_F(PathSuites, ReportsTabletDataOfAnUnknownKindOrNegativeCount) {
  const AITabletProfile profile{};
  EXPECT_EQ(tablet->SetTabletData(path, &profile, -1, kTabletPressure), fourCC("PARM"));
  EXPECT_EQ(tablet->SetTabletData(path, &profile, 1, static_cast<AITabletDataType>(5)),
            fourCC("PARM"));
  EXPECT_EQ(tablet->SetTabletData(path, nullptr, 1, kTabletPressure), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 3U);
}

TEST_F(PathSuites, RefusesNullAndReportsWhatIsNotAPath) {
  const AIPathSegment any = segment(0);
  const AITabletProfile profile{};
  EXPECT_EQ(suite->SetPathSegmentCount(nullptr, 1), fourCC("PARM"));
  EXPECT_EQ(suite->SetPathSegments(nullptr, 0, 1, &any), fourCC("PARM"));
  EXPECT_EQ(suite->SetPathClosed(nullptr, 0), fourCC("PARM"));
  EXPECT_EQ(tablet->SetTabletData(nullptr, &profile, 1, kTabletPressure), fourCC("PARM"));
  EXPECT_THAT(host.misuse(), IsEmpty()) << "a call that the host refuses leaves null behind";
  const AIArtHandle group = makeGroup();
  EXPECT_EQ(suite->SetPathSegmentCount(group, 1), fourCC("PARM"));
  EXPECT_EQ(suite->SetPathSegmentCount(reinterpret_cast<AIArtHandle>(&host), 1), fourCC("PARM"));
  EXPECT_EQ(suite->SetPathSegments(path, 0, 1, nullptr), fourCC("PARM"));
  EXPECT_THAT(host.misuse(), ElementsAre(testing::HasSubstr("path is a group"),
                                         testing::HasSubstr("path is not a valid handle"),
                                         testing::HasSubstr("segments is a null pointer")));
}

}  // namespace
