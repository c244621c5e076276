// Every host call of every message fails in turn, before its work and after it, with codes that
// mean different things to the plug-in, while files of every kind are opened.
#include <gmock/gmock.h>
#include <string>
#include <string_view>
#include <vector>

#include "art/json.h"
#include "tests/plugin/answers.h"
#include "tests/plugin/sample_files.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/share/share.h"

namespace {

using namespace plugintest;
using embedded::FaultMoment;
using hostapi::AIErr;
using test::HostWithFaults;
using testing::IsEmpty;
using testing::SizeIs;

constexpr AIErr kNeverShown = fourCC("STOP");
constexpr AIErr kNotHandled = fourCC("!MSG");  // becomes 0
constexpr AIErr kCodes[] = {kCode, kNeverShown, kNotHandled};
constexpr FaultMoment kMoments[] = {FaultMoment::instead, FaultMoment::afterwards};

// The start-up, one file, and the end.
enum class Step { start, open, end };

// The k-th call of a function, counted over the life of the host.
struct FailingCall {
  Row row;
  Step step;
  std::size_t call;
  bool isLast;  // of its function in its step
  AIErr code = 0;
  FaultMoment moment = FaultMoment::instead;
};

constexpr const char* kBasic = "SP Basic Suite";

std::string art(const embedded::Opening& opening) {
  return art::toJson(opening.document);
}

// What the answer in the table becomes where the call fails with another code.
AIErr answerWith(AIErr code, AIErr answer) {
  if (answer != kCode) return answer;
  return code == kNotHandled ? 0 : code;
}

std::vector<std::string> alertsFor(AIErr answer) {
  if (answer == 0 || answer == kNeverShown || answer == fourCC("S!Fd")) return {};
  return {hostapi::codeText(answer)};
}

class EveryCallOf : public testing::TestWithParam<SampleFile> {
 protected:
  EveryCallOf() {
    PluginInHost plugin;
    addCalls(Step::start, plugin, [&] { plugin->start(); });
    addCalls(Step::open, plugin, [&] {
      const embedded::Opening opening = open(plugin);
      faultlessArt_ = art(opening);
      EXPECT_EQ(opening.builderRan, GetParam().opens);
    });
    addCalls(Step::end, plugin, [&] { plugin->end(); });
  }

  static embedded::Opening open(PluginInHost& plugin) {
    return plugin->open(plugin.writeText(GetParam().name, GetParam().bytes));
  }

  std::size_t caseCount() const { return calls_.size() * std::size(kCodes) * std::size(kMoments); }

  template <class Try>
  void eachCase(Try tryCase) {
    test::Share share(GetParam().name, caseCount(), GetParam().isLarge() ? 20 : 100);
    for (FailingCall failing : calls_) {
      for (const AIErr code : kCodes) {
        for (const FaultMoment moment : kMoments) {
          failing.code = code;
          failing.moment = moment;
          if (!share.takesNext()) continue;
          SCOPED_TRACE(describe(failing));
          tryCase(failing);
          if (HasFailure()) return;
        }
      }
    }
  }

  // A life of the plug-in in which the call fails, and another one after it.
  void expectAnswers(const FailingCall& failing) {
    expectLife(failing);
    if (failing.step != Step::start) return;
    PluginInHost afresh;
    afresh->start();
    EXPECT_EQ(art(open(afresh)), faultlessArt_);
  }

  // One life, in which the file is opened once more after the failure.
  void expectLife(const FailingCall& failing) {
    PluginInHost plugin(optionsOf(failing));
    expectStart(plugin->start(), failing);
    if (plugin->started() && !plugin.host().formats().empty() && !lacksASuite(failing)) {
      expectOpening(open(plugin), failing);
      const embedded::Opening next = open(plugin);
      EXPECT_EQ(art(next), faultlessArt_);
      EXPECT_TRUE(next.allAnsweredZero());
    }
    expectEnd(plugin->end(), failing);
    expectBalance(plugin.host(), failing);
  }

  // The calls of the alert itself: a first fault makes it appear, and these fail besides.
  void expectTheSameAnswerWithoutTheAlert() {
    const Row alertCalls[] = {{kBasic, "AcquireSuite", 0, kMakes},
                              {"AI Unicode String Suite", "Initialize", 0, kMakes},
                              {"AI User Suite", "ErrorAlert", 0},
                              {"AI Unicode String Suite", "Destroy", 0, kLeaks},
                              {kBasic, "ReleaseSuite", 0, kLeaks}};
    for (const Row& row : alertCalls) {
      for (const FaultMoment moment : kMoments) {
        SCOPED_TRACE(row.function);
        expectAnswerWithFaultyAlert(row, moment);
      }
    }
  }

 private:
  template <class Work>
  void addCalls(Step step, const PluginInHost& plugin, Work work) {
    std::vector<Row> rows;
    if (step == Step::start) rows.assign(std::begin(kStartRows), std::end(kStartRows));
    if (step == Step::open) rows.assign(std::begin(kGoRows), std::end(kGoRows));
    if (step == Step::end) rows.assign(std::begin(kEndRows), std::end(kEndRows));
    rows.push_back({kBasic, "AcquireSuite", 0, kMakes});
    rows.push_back({kBasic, "ReleaseSuite", 0, kLeaks});
    std::vector<std::size_t> before;
    before.reserve(rows.size());
    for (const Row& row : rows)
      before.push_back(plugin.calls(row.suite, row.function));
    const std::size_t all = plugin.host().journal().size();
    const std::size_t added = calls_.size();
    work();
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const std::size_t last = plugin.calls(rows[i].suite, rows[i].function);
      for (std::size_t call = before[i] + 1; call <= last; ++call)
        calls_.push_back({rows[i], step, call, call == last});
    }
    EXPECT_EQ(calls_.size() - added, plugin.host().journal().size() - all)
        << "a function that the tables do not list";
  }

  static std::string describe(const FailingCall& failing) {
    return std::string(failing.row.function) + ", call " + std::to_string(failing.call) +
           ", with " + hostapi::codeText(failing.code) +
           (failing.moment == FaultMoment::instead ? ", not carried out" : ", carried out");
  }

  static HostWithFaults optionsOf(const FailingCall& failing) {
    HostWithFaults host;
    host.answering(failing.row.suite, failing.row.function, failing.call, failing.code,
                   failing.moment);
    return host;
  }

  static bool lacksASuite(const FailingCall& failing) {
    return std::string_view(failing.row.function) == "AcquireSuite";
  }

  // The suites of the access, of the notifier and of the format, whose functions start-up calls.
  static bool isNeededSuite(std::size_t call) { return call == 1 || call == 3 || call == 10; }

  static AIErr answerOfStart(const FailingCall& failing) {
    if (failing.step != Step::start) return 0;
    if (lacksASuite(failing)) return isNeededSuite(failing.call) ? fourCC("S!Fd") : 0;
    return answerWith(failing.code, failing.row.answer);
  }

  static void expectStart(const embedded::StepReport& start, const FailingCall& failing) {
    const AIErr answer = answerOfStart(failing);
    EXPECT_EQ(start.code("Startup"), answer);
    EXPECT_EQ(start.alerts, alertsFor(answer));
    EXPECT_THAT(start.misuse, IsEmpty());
  }

  // The comparison that would have said what a document is takes place for every file.
  static bool hidesTheKind(const FailingCall& failing) {
    return GetParam().isInk() && failing.isLast &&
           std::string_view(failing.row.function) == "Compare";
  }

  void expectOpening(const embedded::Opening& opening, const FailingCall& failing) {
    const bool concerned = failing.step == Step::open;
    const bool counts = (failing.row.traits & kLastOnly) == 0 || failing.isLast;
    const AIErr answer = concerned && counts ? answerWith(failing.code, failing.row.answer) : 0;
    EXPECT_EQ(opening.code("AI Go"), answer);
    EXPECT_EQ(opening.alerts, alertsFor(answer));
    EXPECT_THAT(opening.misuse, IsEmpty());
    if (hidesTheKind(failing)) {
      EXPECT_FALSE(opening.builderRan) << "an ink document is no recording";
    } else if (!concerned || (failing.row.traits & kSameArt) != 0) {
      EXPECT_EQ(art(opening), faultlessArt_);
    }
  }

  // What the call leaves behind in a host that failed it.
  static std::size_t leftBy(const FailingCall& failing) {
    const unsigned trait = failing.moment == FaultMoment::instead ? kLeaks : kMakes;
    return (failing.row.traits & trait) != 0 ? 1 : 0;
  }

  static bool concernsSuites(const Row& row) { return std::string_view(row.suite) == kBasic; }

  static void expectEnd(const embedded::StepReport& end, const FailingCall& failing) {
    const AIErr answer =
        failing.step == Step::end ? answerWith(failing.code, failing.row.answer) : 0;
    if (const auto shutdown = end.code("Shutdown")) {
      EXPECT_EQ(*shutdown, answer);
    }
    EXPECT_EQ(end.alerts, alertsFor(answer));
    const std::size_t unreleased = concernsSuites(failing.row) ? leftBy(failing) : 0;
    EXPECT_THAT(end.misuse, SizeIs(unreleased));
  }

  static void expectBalance(const embedded::Host& host, const FailingCall& failing) {
    const std::size_t left = leftBy(failing);
    EXPECT_EQ(host.liveStrings() + host.livePaths() + host.accessCount() + host.acquiredSuites(),
              left);
    EXPECT_EQ(host.acquiredSuites(), concernsSuites(failing.row) ? left : 0);
    EXPECT_EQ(host.liveBlocks(), 0U);
  }

  // The alert comes last: its calls are the last ones of a run in which it works.
  void expectAnswerWithFaultyAlert(const Row& row, FaultMoment moment) {
    const HostWithFaults refusing = HostWithFaults().answering(
        "AI Path Style Suite", "ImportStyles", 1, kCode, FaultMoment::instead);
    std::size_t call = 0;
    {
      PluginInHost plugin(refusing);
      plugin->start();
      EXPECT_THAT(open(plugin).alerts, SizeIs(1));
      call = plugin.calls(row.suite, row.function);
    }
    HostWithFaults host = refusing;
    host.answering(row.suite, row.function, call, kCode, moment);
    PluginInHost plugin(host);
    plugin->start();
    const embedded::Opening opening = open(plugin);
    EXPECT_EQ(opening.code("AI Go"), fourCC("PARM"));
    const std::string_view function = row.function;
    const bool isShown = function == "Destroy" || function == "ReleaseSuite" ||
                         (function == "ErrorAlert" && moment == FaultMoment::afterwards);
    EXPECT_THAT(opening.alerts, SizeIs(isShown ? 1 : 0));
    EXPECT_EQ(art(open(plugin)), faultlessArt_);
    const FailingCall failing{row, Step::open, call, true, kCode, moment};
    expectEnd(plugin->end(), failing);
    expectBalance(plugin.host(), failing);
  }

  std::vector<FailingCall> calls_;
  std::string faultlessArt_;
};

TEST_P(EveryCallOf, WhenItFailsGivesTheAnswerInTheTableAndTheNextFileOpens) {
  EXPECT_GT(caseCount(), 1000U);
  eachCase([this](const FailingCall& failing) { expectAnswers(failing); });
}

TEST_P(EveryCallOf, TheAlertMayFailAndTheAnswerStays) {
  expectTheSameAnswerWithoutTheAlert();
}

INSTANTIATE_TEST_SUITE_P(, EveryCallOf, testing::ValuesIn(sampleFiles()),
                         [](const auto& file) { return file.param.title(); });

}  // namespace
