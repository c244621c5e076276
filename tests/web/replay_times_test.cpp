#include "web/replay_times.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>

namespace {

using testing::ElementsAre;
using web::orderOf;

art::Path pathThrough(const std::vector<art::Point>& points) {
  art::Path path;
  for (const art::Point& point : points)
    path.segments.push_back({point, point, point});
  return path;
}

// So many points, each 3 points of length from the last: 10 ms at the usual speed.
art::Path pathOf(std::size_t count) {
  std::vector<art::Point> points;
  for (std::size_t i = 0; i < count; ++i)
    points.push_back({3.0F * static_cast<float>(i), 0});
  return pathThrough(points);
}

std::vector<std::vector<std::uint32_t>> waitsOf(const std::vector<art::Path>& paths,
                                                const web::StrokeTimes& times) {
  std::vector<const art::Path*> all;
  all.reserve(paths.size());
  for (const art::Path& path : paths)
    all.push_back(&path);
  return web::waitsOf(all, times);
}

TEST(Waits, AreThoseOfTheClock) {
  EXPECT_THAT(waitsOf({pathOf(3), pathOf(2)}, {{1000, 1010, 1035}, {1135, 1140}}),
              ElementsAre(ElementsAre(0, 10, 25), ElementsAre(100, 5)));
}

TEST(Waits, AreShortenedWhereThePenPaused) {
  EXPECT_THAT(waitsOf({pathOf(3), pathOf(2)}, {{0, 10, 9000}, {20000, 20005}}),
              ElementsAre(ElementsAre(0, 10, 500), ElementsAre(500, 5)));
}

TEST(Waits, SpreadPointsThatShareATimeUntilTheNextTime) {
  // 30 ms over three points, and the last run goes on like that.
  EXPECT_THAT(waitsOf({pathOf(6)}, {{0, 0, 0, 30, 30, 30}}),
              ElementsAre(ElementsAre(0, 10, 10, 10, 10, 10)));
}

TEST(Waits, LoseNoTimeToRounding) {
  EXPECT_THAT(waitsOf({pathOf(4)}, {{0, 0, 0, 10}}), ElementsAre(ElementsAre(0, 3, 3, 4)));
}

TEST(Waits, AreEvenWithoutTimes) {
  EXPECT_THAT(waitsOf({pathOf(3), pathOf(2)}, {}),
              ElementsAre(ElementsAre(0, 10, 10), ElementsAre(200, 10)));
}

TEST(Waits, AreEvenWhereTheClockStandsStillOrFalls) {
  for (const std::vector<std::uint32_t>& times :
       {std::vector<std::uint32_t>{5, 5, 5}, {5, 3, 9}, {1, 2}, {}}) {
    EXPECT_THAT(waitsOf({pathOf(3)}, {times}), ElementsAre(ElementsAre(0, 10, 10)));
  }
}

TEST(Waits, BetweenStrokesAreTheUsualPauseWhereTheClockDoesNotTell) {
  // The clock falls; then it stands still.
  EXPECT_THAT(waitsOf({pathOf(2), pathOf(2), pathOf(2), pathOf(2)},
                      {{900, 910}, {100, 105}, {110, 110}, {115, 116}}),
              ElementsAre(ElementsAre(0, 10), ElementsAre(200, 5), ElementsAre(200, 10),
                          ElementsAre(200, 1)));
}

TEST(Waits, OfManyShortPiecesAddUp) {
  // Each piece takes a third of a millisecond.
  std::vector<art::Point> points(10);
  for (std::size_t i = 0; i < points.size(); ++i)
    points[i] = {0.1F * static_cast<float>(i) + 0.001F, 0};
  const auto waits = waitsOf({pathThrough(points)}, {});
  EXPECT_EQ(std::accumulate(waits[0].begin(), waits[0].end(), 0U), 3U);
}

TEST(Waits, AreThereForPathsOfAnyKind) {
  const float none = std::numeric_limits<float>::quiet_NaN();
  EXPECT_THAT(waitsOf({pathOf(1), pathThrough({{0, 0}, {none, 0}, {3, 0}})}, {}),
              ElementsAre(ElementsAre(0), ElementsAre(200, 0, 0)));
  EXPECT_THAT(waitsOf({pathOf(2)}, {{0, 4294967295}}), ElementsAre(ElementsAre(0, 500)));
}

TEST(TheOrder, IsThatOfTheClock) {
  EXPECT_THAT(orderOf({{50, 60}, {10, 20}, {20, 40}}), ElementsAre(1, 2, 0));
}

TEST(TheOrder, IsKeptWhereStrokesWouldOverlap) {
  EXPECT_THAT(orderOf({{50, 60}, {10, 20}, {19, 40}}), ElementsAre(0, 1, 2));
}

TEST(TheOrder, IsKeptWhereAStrokeHasNoTimes) {
  EXPECT_THAT(orderOf({{50, 60}, {10, 20}, {30, 30}}), ElementsAre(0, 1, 2));
  EXPECT_THAT(orderOf({{50, 60}, {10, 20}, {}}), ElementsAre(0, 1, 2));
}

}  // namespace
