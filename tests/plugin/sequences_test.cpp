// Messages and files in any order: what is drawn is what each file gives alone.
#include <gmock/gmock.h>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "art/json.h"
#include "hostapi/ai_file_format_suite.h"
#include "tests/plugin/sample_files.h"
#include "tests/support/share/share.h"

namespace {

using namespace plugintest;
using namespace hostapi;
using testing::IsEmpty;

// What a file gives alone, read as one kind or the other: its name does not always say it.
class Alone {
 public:
  const std::string& artOf(const SampleFile& file, std::uint32_t kind) {
    std::string& art = arts_[{file.name, kind}];
    if (art.empty()) art = drawn(file, kind);
    return art;
  }

 private:
  static std::string drawn(const SampleFile& file, std::uint32_t kind) {
    PluginInHost plugin;
    plugin->start();
    const std::string name = kind == Orvo::kInkML ? "alone.kvo" : "alone.pnx";
    return art::toJson(plugin->open(plugin.writeText(name, file.bytes)).document);
  }

  std::map<std::pair<std::string, std::uint32_t>, std::string> arts_;
};

// The files of the sequences: the small ones, and some whose names do not say what they are.
std::vector<SampleFile> files() {
  std::vector<SampleFile> all;
  for (SampleFile& file : sampleFiles()) {
    if (file.isLarge()) continue;
    SampleFile unnamed = file;
    unnamed.name += file.name == "varied.eli" ? ".PNX" : ".bak";
    all.push_back(unnamed);
    all.push_back(std::move(file));
  }
  return all;
}

// One life of the plug-in under messages in random order.
class Sequence {
 public:
  Sequence(std::uint64_t seed, const std::vector<SampleFile>& files, Alone& alone)
      : random_(seed), files_(files), alone_(alone) {}

  void run() {
    for (std::size_t step = 10 + below(15); step > 0 && !testing::Test::HasFailure(); --step)
      act();
    if (plugin_->globals() != nullptr) shutDown();
    EXPECT_THAT(plugin_->end().misuse, IsEmpty());
    EXPECT_EQ(plugin_.host().acquiredSuites() + plugin_.host().accessCount(), 0U);
    EXPECT_EQ(plugin_.host().liveStrings() + plugin_.host().livePaths(), 0U);
  }

  /// How many files were compared.
  std::size_t compared() const { return compared_; }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  template <class T>
  const T& oneOf(const std::vector<T>& things) {
    return things[below(things.size())];
  }

  void act() {
    switch (below(20)) {
      case 0:
      case 6:
        start();
        break;
      case 1:
        shutDown();
        break;
      case 2:
        sendUnknown();
        break;
      case 3:
        reload();
        break;
      case 4:
        goWithoutReading();
        break;
      case 5:
        sendNothing();
        break;
      default:
        openFile();
    }
  }

  // The host takes a format once alone: a plug-in that has ended cannot start again.
  void start() {
    const bool canRun = plugin_->globals() != nullptr || plugin_.host().formats().empty();
    EXPECT_EQ(plugin_->send(caller::kInterface, selector::kStartup), canRun ? 0 : fourCC("NAM2"));
    EXPECT_EQ(plugin_->globals() != nullptr, canRun);
    EXPECT_EQ(plugin_.host().acquiredSuites(), canRun ? 104U : 0U);
    EXPECT_EQ(plugin_.host().accessCount(), canRun ? 1U : 0U);
  }

  void shutDown() {
    EXPECT_EQ(plugin_->send(caller::kInterface, selector::kShutdown), 0);
    EXPECT_EQ(plugin_->globals(), nullptr);
    EXPECT_EQ(plugin_.host().acquiredSuites(), 0U);
  }

  void sendUnknown() {
    static const std::vector<const char*> callers = {
        "", "ai file format", "AI File Formats", "SP Nobody", caller::kMenu, caller::kTool};
    static const std::vector<const char*> selectors = {"",        "AI go",          "AI Gone",
                                                       "Startup", selector::kCheck, selector::kGo};
    EXPECT_EQ(plugin_->send(oneOf(callers), oneOf(selectors)), 0);
    EXPECT_EQ(PluginMain(caller::kInterface, selector::kStartup, nullptr), 0);
  }

  void reload() {
    EXPECT_EQ(plugin_->send(caller::kAccess, below(2) == 0 ? selector::kReload : selector::kUnload),
              0);
  }

  // A record of zeros names no file.
  void sendNothing() {
    const auto before = Orvo::fileKind;
    plugin_->send(caller::kFileFormat, selector::kGo);
    EXPECT_EQ(Orvo::fileKind, before);
  }

  // Does not read, but the kind of the file is kept.
  void goWithoutReading() {
    const art::Document drawn = go(oneOf(files_), 0);
    EXPECT_EQ(art::countPaths(drawn), 0U);
  }

  void openFile() {
    const SampleFile& file = oneOf(files_);
    SCOPED_TRACE(file.name);
    const bool runs = plugin_->globals() != nullptr;
    const art::Document drawn = go(file, kFileFormatRead);
    if (runs) {
      EXPECT_EQ(art::toJson(drawn), alone_.artOf(file, kind_));
      ++compared_;
    } else {
      EXPECT_EQ(art::countPaths(drawn), 0U);
    }
  }

  art::Document go(const SampleFile& file, std::int32_t option) {
    plugin_->host().newDocument();
    const std::string path = plugin_.writeText(file.name, file.bytes);
    EXPECT_EQ(plugin_->sendFileFormat(selector::kGo, path, option), 0);
    if (plugin_->globals() != nullptr) kind_ = kindAfter(file);
    return plugin_->host().takeDocument();
  }

  // A name that says nothing leaves the kind as it was.
  std::uint32_t kindAfter(const SampleFile& file) const {
    if (file.isInk()) return Orvo::kInkML;
    return file.name.ends_with(".pnx") || file.name.ends_with(".eli") ? Orvo::kPenFile : kind_;
  }

  std::mt19937_64 random_;
  const std::vector<SampleFile>& files_;
  Alone& alone_;
  PluginInHost plugin_;
  std::uint32_t kind_ = Orvo::kPenFile;
  std::size_t compared_ = 0;
};

TEST(MessagesInAnyOrder, DrawEachFileAsAloneButForTheKindThatIsKept) {
  constexpr std::size_t kSequences = 1000;
  const std::vector<SampleFile> all = files();
  Alone alone;
  // Hosts follow one another: what a file gives alone is drawn before the sequences.
  for (const SampleFile& file : all) {
    alone.artOf(file, Orvo::kPenFile);
    alone.artOf(file, Orvo::kInkML);
  }
  test::Share share("sequences", kSequences, kSequences);
  std::size_t compared = 0;
  for (std::size_t number = 0; number < kSequences && !HasFailure(); ++number) {
    if (!share.takesNext()) continue;
    SCOPED_TRACE("sequence " + std::to_string(number));
    Sequence sequence(test::Share::seed() + number, all, alone);
    sequence.run();
    compared += sequence.compared();
  }
  std::cout << compared << " files compared" << std::endl;
  EXPECT_GT(compared, 0U);
}

}  // namespace
