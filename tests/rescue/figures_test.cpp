#include "tests/rescue/figures.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <ostream>

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

// Likewise: the traces of the first tens of thousands of bytes.
std::vector<std::string> shortDocuments() {
  std::vector<std::string> documents;
  const std::string end = "</trace>";
  for (const char* name : {"harbour.kvo", "melody.kvo", "teapot.inkml"}) {
    const std::string whole = sample(name);
    documents.push_back(whole.substr(0, whole.find(end, 24'000) + end.size()) +
                        "\n    </tracegroup>\n</ink>\n");
  }
  return documents;
}

constexpr std::uint64_t kSeed = 20121231;

struct Case {
  const char* name;
  const figures::Subject& (*subject)();
  std::vector<std::string> (*files)();
  std::size_t count;
  double mostMadeUp;  // For each hundred damages.
  double mostFar;
};

void PrintTo(const Case& what, std::ostream* out) {
  *out << what.name;
}

class RescueFigures : public testing::TestWithParam<Case> {
 protected:
  void SetUp() override {
    RecordProperty("seed", std::to_string(kSeed));
    constexpr std::size_t kTimes = 5;
    std::vector<Figures>& kinds = measured_[GetParam().name];
    if (kinds.empty()) {
      kinds = figures::measure(GetParam().subject(), GetParam().files(), kTimes, kSeed);
    }
    kinds_ = &kinds;
    for (const Figures& kind : kinds)
      all_.addAll(kind);
    judged_ = all_.withoutSound();
  }

  static std::map<std::string, std::vector<Figures>> measured_;
  std::vector<Figures>* kinds_ = nullptr;
  Figures all_;
  Figures judged_;  // Damage that leaves a file sound is not touched.
};

std::map<std::string, std::vector<Figures>> RescueFigures::measured_;

TEST_P(RescueFigures, EveryResultOpensWhole) {
  EXPECT_EQ(all_.count(), GetParam().count);
  EXPECT_EQ(all_.part(&Outcome::opens), 1.0) << "seed " << kSeed;
  EXPECT_GT(judged_.count(), GetParam().count / 2) << "seed " << kSeed;
}

TEST_P(RescueFigures, NearlyEveryPointIsSavedThatSurvived) {
  EXPECT_GE(judged_.shareAt(0.5), 0.999) << "seed " << kSeed;
  for (std::size_t i = 0; i < kinds_->size(); ++i) {
    const std::string_view name = damage::allKinds()[i].name;
    const bool isQuestionMarks = name == "bytes from 80 up turned into '?'";
    const Figures showing = (*kinds_)[i].withoutSound();
    // A transfer in text mode leaves every ink document sound.
    if (showing.count() == 0) continue;
    EXPECT_GE(showing.shareAt(0.05), isQuestionMarks ? 0.85 : 0.95) << name << ", seed " << kSeed;
  }
}

TEST_P(RescueFigures, FewPointsAreMadeUp) {
  EXPECT_LE(judged_.perHundred(&Outcome::madeUp), GetParam().mostMadeUp) << "seed " << kSeed;
  EXPECT_LE(judged_.perHundred(&Outcome::madeUpFar), GetParam().mostFar) << "seed " << kSeed;
}

TEST_P(RescueFigures, FewStrokesAreJoinedThatWereNot) {
  EXPECT_LE(judged_.perHundred(&Outcome::falseJoins), 3) << "seed " << kSeed;
}

TEST_P(RescueFigures, ThePageHardlyEverGrows) {
  EXPECT_LE(judged_.part(&Outcome::grows), 0.002) << "seed " << kSeed;
}

INSTANTIATE_TEST_SUITE_P(
    Of, RescueFigures,
    testing::Values(Case{"PenRecordings", figures::penRecordings, shortRecordings, 750, 10, 3},
                    Case{"InkDocuments", figures::inkDocuments, shortDocuments, 450, 3, 2}),
    [](const auto& test) { return test.param.name; });

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

// The same of an ink document: a point that is moved and joined to another stroke.
TEST(RescueMeasuring, ReadsInkDocuments) {
  const std::string sound =
      "<ink><tracegroup id=\"layer0\"><trace contextRef=\"#c\">10 20 0 0 0 0 1, 30 40 0 0 0 0 2"
      "</trace><trace contextRef=\"#c\">50 60 0 0 0 0 3</trace></tracegroup></ink>";
  const std::vector<figures::Drawn> drawn = figures::inkDocuments().pointsOf(sound);
  ASSERT_EQ(drawn.size(), 3U);
  EXPECT_EQ(sound.substr(drawn[1].offset, drawn[1].length), "30 40 0 0 0 0 2");
  EXPECT_EQ(drawn[1].rawX, 30);
  EXPECT_EQ(drawn[1].rawY, 40);
  EXPECT_EQ(drawn[1].stroke, drawn[0].stroke);
  EXPECT_NE(drawn[2].stroke, drawn[1].stroke);

  damage::Damaged file{sound, std::vector<std::int64_t>(sound.size())};
  for (std::size_t i = 0; i < sound.size(); ++i)
    file.origin[i] = static_cast<std::int64_t>(i);
  file.origin[drawn[0].offset + 14] = damage::Damaged::kNowhere;
  const Outcome outcome =
      figures::judge(file,
                     figures::inkDocuments().pointsOf(
                         "<trace a=\"\">30 40 0 0 0 0 2,50 60 0 0 0 0 3,510 60 0 0 0 0 4</trace>"),
                     drawn);
  EXPECT_EQ(outcome.reachable, 2U);
  EXPECT_EQ(outcome.recovered, 2U);
  EXPECT_EQ(outcome.madeUp, 1U);
  EXPECT_EQ(outcome.madeUpFar, 1U);
  EXPECT_EQ(outcome.falseJoins, 1U);
  EXPECT_TRUE(outcome.grows);
}

}  // namespace
