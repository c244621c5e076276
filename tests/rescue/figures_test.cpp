#include "tests/rescue/figures.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

using figures::Figures;
using figures::Outcome;

std::string sample(const std::string& name) {
  std::ifstream file(std::string(PENWICK_SAMPLES) + "/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Parts of the samples, so that many damages take little time. A recording may end anywhere between
// two strokes.
std::vector<std::string> shortRecordings() {
  std::vector<std::string> recordings{sample("signature.pnx")};
  const std::string penUp = {'\xF1', 3, 0};
  for (const char* name :
       {"lighthouse.pnx", "handwriting.pnx", "hatching.pnx", "tilted-sketch.pnx"}) {
    const std::string whole = sample(name);
    recordings.push_back(whole.substr(0, whole.find(penUp, 24'000) + penUp.size()));
  }
  return recordings;
}

constexpr std::uint64_t kSeed = 20121231;

class RescueFigures : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    constexpr std::size_t times = 5;
    kinds_ = new std::vector<Figures>(
        figures::measure(figures::penRecordings(), shortRecordings(), times, kSeed));
    all_ = new Figures;
    for (const Figures& kind : *kinds_)
      all_->addAll(kind);
    showing_ = new Figures(all_->withoutSound());
  }
  static void TearDownTestSuite() {
    delete kinds_;
    delete all_;
    delete showing_;
  }
  void SetUp() override { RecordProperty("seed", std::to_string(kSeed)); }

  static std::vector<Figures>* kinds_;
  static Figures* all_;
  static Figures* showing_;  // Damage that leaves a file sound is not touched.
};

std::vector<Figures>* RescueFigures::kinds_ = nullptr;
Figures* RescueFigures::all_ = nullptr;
Figures* RescueFigures::showing_ = nullptr;

TEST_F(RescueFigures, EveryResultOpensWhole) {
  EXPECT_EQ(all_->count(), 750U);
  EXPECT_EQ(all_->part(&Outcome::opens), 1.0) << "seed " << kSeed;
  EXPECT_GT(showing_->count(), 400U) << "seed " << kSeed;
}

TEST_F(RescueFigures, NearlyEveryPointIsSavedThatSurvived) {
  EXPECT_GE(showing_->shareAt(0.5), 0.999) << "seed " << kSeed;
  for (std::size_t i = 0; i < kinds_->size(); ++i) {
    const std::string_view name = damage::allKinds()[i].name;
    const bool isQuestionMarks = name == "bytes from 80 up turned into '?'";
    EXPECT_GE((*kinds_)[i].withoutSound().shareAt(0.05), isQuestionMarks ? 0.85 : 0.95)
        << name << ", seed " << kSeed;
  }
}

TEST_F(RescueFigures, FewPointsAreMadeUp) {
  EXPECT_LE(showing_->perHundred(&Outcome::madeUp), 10) << "seed " << kSeed;
  EXPECT_LE(showing_->perHundred(&Outcome::madeUpFar), 3) << "seed " << kSeed;
}

TEST_F(RescueFigures, FewStrokesAreJoinedThatWereNot) {
  EXPECT_LE(showing_->perHundred(&Outcome::falseJoins), 3) << "seed " << kSeed;
}

TEST_F(RescueFigures, ThePageHardlyEverGrows) {
  EXPECT_LE(showing_->part(&Outcome::grows), 0.002) << "seed " << kSeed;
}

// The measuring itself, on a recording of two strokes: a point each of which is lost, moved and
// joined.
TEST(RescueMeasuring, CountsWhatIsLostMadeUpAndJoined) {
  const std::string head = {1, 6, 0, 2, 0, 0};
  const auto point = [](char x, char y) { return std::string{'a', 6, x, 0, y, 0}; };
  const std::string up = {'\xF1', 3, 0};
  const std::string down = {'\xF1', 3, 1};
  const std::string sound =
      head + down + point(1, 1) + point(2, 1) + up + down + point(3, 1) + point(4, 1);
  const std::vector<figures::Drawn> drawn = figures::penRecordings().pointsOf(sound);
  ASSERT_EQ(drawn.size(), 4U);
  EXPECT_EQ(drawn[1].stroke, drawn[0].stroke);
  EXPECT_NE(drawn[2].stroke, drawn[1].stroke);

  const std::string mended = head + down + point(2, 1) + point(3, 1) + point(70, 1);
  damage::Damaged file{sound, std::vector<std::int64_t>(sound.size())};
  for (std::size_t i = 0; i < sound.size(); ++i)
    file.origin[i] = static_cast<std::int64_t>(i);
  file.origin[9] = damage::Damaged::kNowhere;
  const Outcome outcome = figures::judge(file, figures::penRecordings().pointsOf(mended), drawn);
  EXPECT_EQ(outcome.reachable, 3U);
  EXPECT_EQ(outcome.recovered, 2U);
  EXPECT_EQ(outcome.madeUp, 1U);
  EXPECT_EQ(outcome.madeUpFar, 1U);
  EXPECT_EQ(outcome.falseJoins, 1U);
  EXPECT_TRUE(outcome.grows);
}

}  // namespace
