// The module file itself in the embedded host, under Windows.
#include <filesystem>
#include <fstream>
#include <future>
#include <gmock/gmock.h>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>
#include <windows.h>
// The memory call needs the declarations above.
#include <psapi.h>

#include "art/json.h"
#include "embedded/session.h"
#include "hostapi/codes.h"
#include "platform/folders.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/pen/pen_file_builder.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/windows/failing_allocations.h"

namespace {

using embedded::Options;
using pentest::PenFileBuilder;
using test::HostWithFaults;
using testing::IsEmpty;

std::size_t privateBytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  counters.cb = sizeof counters;
  EXPECT_NE(K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters), 0);
  return counters.PagefileUsage;
}

// Holds every index of thread-local storage that is to be had.
class ThreadIndices {
 public:
  ThreadIndices() {
    for (DWORD index = TlsAlloc(); index != TLS_OUT_OF_INDEXES; index = TlsAlloc())
      taken_.push_back(index);
  }
  ~ThreadIndices() {
    for (const DWORD index : taken_)
      TlsFree(index);
  }
  ThreadIndices(const ThreadIndices&) = delete;
  ThreadIndices& operator=(const ThreadIndices&) = delete;

  std::size_t count() const { return taken_.size(); }

 private:
  std::vector<DWORD> taken_;
};

std::size_t freeThreadIndices() {
  return ThreadIndices().count();
}

// A host whose answer to a call ends the opening with an exception inside the plug-in.
Options refusingSegments() {
  Options options;
  options.faults.push_back(
      {.suite = "AI Path Suite", .function = "SetPathSegments", .call = 1, .code = 1});
  return options;
}

// A brush library in the user's folder, where the plug-in looks for it, with the style Mine alone.
class UsersLibrary {
 public:
  UsersLibrary() {
    if (std::filesystem::exists(file_)) throw std::runtime_error("the user has a library");
    std::filesystem::create_directory(file_.parent_path());
    std::ofstream(file_)
        << "%!PS-Adobe-3.0\n%AI9_BeginArtStyles\n/KnownStyle : (Mine) /Name , ;\n"
           "%AI9_EndArtStyles\n%AI9_BeginArtStyleList\n(Mine)\n%AI9_EndArtStyleList\n";
  }
  ~UsersLibrary() { std::filesystem::remove(file_); }
  UsersLibrary(const UsersLibrary&) = delete;
  UsersLibrary& operator=(const UsersLibrary&) = delete;

 private:
  std::filesystem::path file_ =
      std::filesystem::path(platform::localAppDataFolder().value()) / "Penwick/brush_pressure.ai";
};

class ModuleFile : public testing::Test {
 protected:
  static std::unique_ptr<embedded::Module> load() {
    std::string error;
    std::unique_ptr<embedded::Module> module = embedded::Module::load(PENWICK_MODULE, error);
    EXPECT_EQ(error, "");
    return module;
  }

  std::string recording() {
    PenFileBuilder()
        .descriptor()
        .status(1)
        .coordinate(0, 10)
        .coordinate(10, 20)
        .coordinate(20, 30)
        .write(folder_ / "a.pnx");
    return (folder_ / "a.pnx").string();
  }

  void run(const Options& options = {}) {
    embedded::Session session(load(), options);
    EXPECT_TRUE(session.start().allAnsweredZero());
    const embedded::Opening opening = session.open(recording());
    EXPECT_TRUE(opening.builderRan);
    EXPECT_EQ(art::countPaths(opening.document), 1U);
    EXPECT_THAT(session.end().misuse, IsEmpty());
    EXPECT_TRUE(session.unloaded());
  }

  // The plug-in answers by an exception of its own.
  std::optional<hostapi::SPErr> answerToGo(const Options& options) {
    embedded::Session session(load(), options);
    EXPECT_TRUE(session.start().allAnsweredZero());
    const auto code = session.open(recording()).code("AI Go");
    EXPECT_THAT(session.end().misuse, IsEmpty());
    return code;
  }

  std::string inkDocument() {
    std::ofstream(folder_ / "a.kvo")
        << R"(<ink><definitions><brush id="b"/><traceFormat id="f"/>)"
           R"(<context id="c" brushRef="#b" traceFormatRef="#f"/></definitions>)"
           R"(<tracegroup id="layer0"><trace contextRef="#c">0 0 0 1 0 0 1,9 9 0 2 0 0 2</trace>)"
           "</tracegroup></ink>";
    return (folder_ / "a.kvo").string();
  }

  // Opens a file once for each allocation that this makes, which then fails together with those
  // that follow it. Returns how many openings failed so.
  std::size_t openWithoutMemory(const std::string& file, std::size_t failuresInARow) {
    for (std::size_t successes = 0;; ++successes) {
      embedded::Session session(load());
      EXPECT_TRUE(session.start().allAnsweredZero());
      embedded::Opening opening;
      {
        const windowstest::FailingAllocations failing(L"kvoexportfile.aip", successes,
                                                      failuresInARow);
        opening = session.open(file);
        if (failing.failed() == 0) return successes;
      }
      EXPECT_EQ(opening.code("AI Go"), hostapi::fourCC("CANT")) << successes;
      EXPECT_THAT(opening.misuse, IsEmpty()) << successes;
      session.end();
      EXPECT_TRUE(session.unloaded());
    }
  }

  // The same for start-up.
  std::size_t startWithoutMemory(std::size_t failuresInARow) {
    for (std::size_t successes = 0;; ++successes) {
      embedded::Session session(load());
      embedded::StepReport start;
      {
        const windowstest::FailingAllocations failing(L"kvoexportfile.aip", successes,
                                                      failuresInARow);
        start = session.start();
        if (failing.failed() == 0) return successes;
      }
      const hostapi::AIErr answer =
          successes < 2 ? hostapi::kOutOfMemoryErr : hostapi::fourCC("CANT");
      EXPECT_EQ(start.code("Startup"), answer) << successes;
      EXPECT_EQ(session.host().acquiredSuites() + session.host().accessCount(), 0U) << successes;
      EXPECT_THAT(session.end().misuse, IsEmpty()) << successes;
      EXPECT_TRUE(session.unloaded());
    }
  }

  std::string artIn(const Options& options) {
    embedded::Session session(load(), options);
    EXPECT_TRUE(session.start().allAnsweredZero());
    const embedded::Opening opening = session.open(recording());
    EXPECT_TRUE(opening.allAnsweredZero());
    EXPECT_THAT(opening.misuse, IsEmpty());
    EXPECT_THAT(session.end().misuse, IsEmpty());
    return art::toJson(opening.document);
  }

  embedded::Opening openWithoutStyle(embedded::MissingStyle answer) {
    const UsersLibrary withoutTheStyle;
    Options options;
    options.missingStyle = answer;
    embedded::Session session(load(), options);
    EXPECT_TRUE(session.start().allAnsweredZero());
    embedded::Opening opening = session.open(recording());
    EXPECT_THAT(session.end().misuse, IsEmpty());
    EXPECT_TRUE(session.unloaded());
    return opening;
  }

 private:
  pentest::TemporaryFolder folder_;
  pentest::CurrentFolder inside_{folder_.path()};
};

TEST_F(ModuleFile, LeavesMemoryAfterEachOfAHundredRuns) {
  for (int round = 0; round < 100; ++round) {
    run();
    ASSERT_FALSE(embedded::Module::isResident(PENWICK_MODULE)) << "round " << round;
  }
}

// A process has 1088 indices of thread-local storage in all, whatever its memory.
TEST_F(ModuleFile, KeepsNeitherMemoryNorThreadIndicesAfterAHundredRuns) {
  const Options failing = refusingSegments();
  const auto rounds = [&](int count) {
    for (int round = 0; round < count; ++round) {
      run();
      EXPECT_EQ(answerToGo(failing), hostapi::fourCC("CANT"));
    }
  };
  rounds(20);
  const std::size_t bytes = privateBytes();
  const std::size_t indices = freeThreadIndices();
  EXPECT_GT(indices, 1000U);
  rounds(100);
  EXPECT_EQ(freeThreadIndices(), indices);
  constexpr std::size_t kEightPages = 32768;
  EXPECT_LT(privateBytes(), bytes + kEightPages);
}

TEST_F(ModuleFile, NeedsNoThreadIndexToDrawAndToAnswerAnException) {
  // This program's own run time takes its indices at its first exception.
  EXPECT_THROW(throw std::runtime_error(""), std::runtime_error);
  const ThreadIndices none;
  run();
  EXPECT_EQ(answerToGo(refusingSegments()), hostapi::fourCC("CANT"));
}

TEST_F(ModuleFile, AnswersAnExceptionOnAThreadThatIsOlderThanItsLoading) {
  std::optional<embedded::Session> session;
  std::promise<void> started;
  auto answer = std::async(std::launch::async, [&] {
    started.get_future().wait();
    return session->open(recording()).code("AI Go");
  });
  session.emplace(load(), refusingSegments());
  session->start();
  started.set_value();
  EXPECT_EQ(answer.get(), hostapi::fourCC("CANT"));
}

// The second is that of the exception, the third that of what guards the memory held ready for it.
TEST_F(ModuleFile, CannotGoOnWhereAllocationsFailAloneOrInARow) {
  for (const std::size_t inARow : {1U, 2U, 3U, 8U}) {
    EXPECT_GT(openWithoutMemory(recording(), inARow), 30U);
    EXPECT_GT(openWithoutMemory(inkDocument(), inARow), 30U);
  }
}

TEST_F(ModuleFile, CannotGoOnWhereMemoryEnds) {
  constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();
  EXPECT_GT(openWithoutMemory(recording(), kAll), 30U);
  EXPECT_GT(openWithoutMemory(inkDocument(), kAll), 30U);
}

// The first two are the plug-in object and the suites holder.
TEST_F(ModuleFile, SaysAtStartUpThatMemoryRanOutOrThatItCannotGoOn) {
  constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();
  for (const std::size_t inARow :
       {std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{8}, kAll}) {
    EXPECT_GE(startWithoutMemory(inARow), 4U) << inARow;
  }
}

TEST_F(ModuleFile, ShutsDownWithoutMemory) {
  embedded::Session session(load());
  EXPECT_TRUE(session.start().allAnsweredZero());
  const windowstest::FailingAllocations failing(L"kvoexportfile.aip", 0,
                                                std::numeric_limits<std::size_t>::max());
  EXPECT_EQ(session.send("SP Interface", "Shutdown"), 0);
  EXPECT_EQ(session.host().acquiredSuites() + session.host().accessCount(), 0U);
}

TEST_F(ModuleFile, DrawsTheSameInEveryLayoutThatTheHostMayHave) {
  const std::string usual = artIn({});
  EXPECT_THAT(usual, testing::HasSubstr("kvoaiexportset"));
  const auto strings = embedded::UnicodeStringLayout::slots36;
  const auto setUp = embedded::DocumentLayout::older;
  const auto drive = embedded::MessageLayout::driveRecord;
  const auto network = embedded::MessageLayout::networkRecord;
  const auto wide = embedded::ArtSetNumbers::bits64;
  const auto group = embedded::LayerGroup::counted;
  const HostWithFaults hosts[] = {
      HostWithFaults().withUnicodeStringLayout(strings),
      HostWithFaults().withDocumentLayout(setUp),
      HostWithFaults().withMessageLayout(drive),
      HostWithFaults().withMessageLayout(network),
      HostWithFaults().withArtSetNumbers(wide),
      HostWithFaults().withLayerGroup(group),
      HostWithFaults()
          .withUnicodeStringLayout(strings)
          .withDocumentLayout(setUp)
          .withMessageLayout(drive)
          .withArtSetNumbers(wide)
          .withLayerGroup(group),
  };
  for (const HostWithFaults& host : hosts)
    EXPECT_EQ(artIn(host), usual) << "host " << &host - hosts;
}

TEST_F(ModuleFile, AnswersThatAStyleWasNotFoundAndDrawsNothing) {
  const embedded::Opening opening = openWithoutStyle(embedded::MissingStyle::nameNotFound);
  EXPECT_EQ(opening.code("AI Go"), hostapi::fourCC("NAM?"));
  EXPECT_FALSE(opening.builderRan);
}

TEST_F(ModuleFile, DrawsPathsWithoutAStyleWhereNoneIsFoundWithoutAnError) {
  const embedded::Opening opening = openWithoutStyle(embedded::MissingStyle::nullStyle);
  EXPECT_EQ(opening.code("AI Go"), 0);
  ASSERT_EQ(opening.document.layers.at(0).art.size(), 1U);
  const auto& path = std::get<art::Path>(opening.document.layers[0].art[0].value);
  EXPECT_EQ(path.segments.size(), 3U);
  EXPECT_EQ(path.style, std::nullopt);
}

// The first, third and tenth are SP Access, AI Notifier and AI File Format, the ones that start-up
// calls and tests.
TEST_F(ModuleFile, StartsOrSaysWhyWithAnyOneSuiteRefused) {
  std::size_t asked = 0;
  {
    embedded::Session session(load());
    session.start();
    asked = session.host().journal().count("SP Basic Suite", "AcquireSuite");
  }
  ASSERT_EQ(asked, 104U);
  for (std::size_t call = 1; call <= asked; ++call) {
    Options options;
    options.faults.push_back({"SP Basic Suite", "AcquireSuite", call, hostapi::fourCC("S!Fd")});
    embedded::Session session(load(), options);
    const embedded::StepReport start = session.start();
    const bool isNeeded = call == 1 || call == 3 || call == 10;
    EXPECT_EQ(start.code("Startup"), isNeeded ? hostapi::fourCC("S!Fd") : 0) << call;
    EXPECT_THAT(session.end().misuse, IsEmpty()) << call;
    EXPECT_TRUE(session.unloaded()) << call;
  }
}

}  // namespace
