// The module file itself, loaded at run time.
#include <array>
#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <memory>
#include <string>

#include "embedded/session.h"
#include "tests/support/pen/pen_file_builder.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

using pentest::PenFileBuilder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string output(const std::string& command) {
  // NOLINTNEXTLINE(cert-env33-c): the tests write the commands themselves.
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
  std::string text;
  std::array<char, 4096> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) {
    text.append(buffer.data(), count);
  }
  return text;
}

class ModuleFile : public testing::Test {
 protected:
  std::unique_ptr<embedded::Module> load() {
    std::string error;
    std::unique_ptr<embedded::Module> module = embedded::Module::load(PENWICK_MODULE, error);
    EXPECT_EQ(error, "");
    return module;
  }

  std::string recording(const std::string& name) {
    PenFileBuilder()
        .descriptor()
        .status(1)
        .coordinate(0, 10)
        .coordinate(10, 20)
        .coordinate(20, 30)
        .write(folder_ / name);
    return (folder_ / name).string();
  }

 private:
  pentest::TemporaryFolder folder_;
  pentest::CurrentFolder inside_{folder_.path()};
};

TEST_F(ModuleFile, ExportsPluginMainAndNothingElse) {
  EXPECT_EQ(output("nm -D --defined-only --format=just-symbols '" PENWICK_MODULE "'"),
            "PluginMain\n");
}

TEST_F(ModuleFile, IsNotLinkedIntoTheCommand) {
  const std::string symbols = output("nm -C '" PENWICK_COMMAND "'");
  EXPECT_THAT(symbols, HasSubstr("embedded::Session"));
  EXPECT_THAT(symbols, Not(HasSubstr("PluginMain\n")));
  EXPECT_THAT(symbols, Not(HasSubstr("kvoexportfileplugin")));
}

TEST_F(ModuleFile, IsUnloadedAfterEveryRun) {
  for (int round = 0; round < 100; ++round) {
    embedded::Session session(load());
    EXPECT_TRUE(session.start().allAnsweredZero());
    EXPECT_TRUE(session.open(recording("a.pnx")).builderRan);
    EXPECT_THAT(session.end().misuse, IsEmpty());
    EXPECT_TRUE(session.unloaded());
    EXPECT_FALSE(embedded::Module::isResident(PENWICK_MODULE));
  }
}

TEST_F(ModuleFile, ForgetsTheFileKindWhenItIsLoadedAgain) {
  {
    embedded::Session session(load());
    session.start();
    EXPECT_FALSE(session.open(recording("a.kvo")).builderRan);
    EXPECT_FALSE(session.open(recording("a.bin")).builderRan);
  }
  embedded::Session session(load());
  session.start();
  EXPECT_TRUE(session.open(recording("a.bin")).builderRan);
}

TEST_F(ModuleFile, OpensSeveralFilesInOneSession) {
  embedded::Session session(load());
  session.start();
  for (int file = 0; file < 3; ++file) {
    const embedded::Opening opening = session.open(recording("a.pnx"));
    EXPECT_TRUE(opening.builderRan);
    EXPECT_TRUE(opening.allAnsweredZero());
    EXPECT_EQ(art::countPaths(opening.document), 1U);
  }
}

TEST_F(ModuleFile, GetsTheMessagesOfAHostInOrder) {
  embedded::Session session(load());
  std::vector<std::string> sent;
  const auto note = [&sent](const embedded::StepReport& report) {
    for (const embedded::MessageAnswer& message : report.messages)
      sent.push_back(message.selector);
  };
  note(session.start());
  note(session.open(recording("a.pnx")));
  note(session.end());
  EXPECT_THAT(sent, ElementsAre("Reload", "Startup", "AI Notify", "AI Check", "AI Get Parameters",
                                "AI Go", "Shutdown", "Unload"));
}

}  // namespace
