// The messages of a plug-in's life, sent to a small plug-in written here.
#include "embedded/session.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <stdexcept>

#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_document_suite.h"
#include "hostapi/ai_file_format_suite.h"
#include "hostapi/ai_notifier_suite.h"
#include "hostapi/ai_path_style_suite.h"
#include "hostapi/ai_path_suite.h"
#include "hostapi/ai_tablet_data_suite.h"
#include "hostapi/ai_user_suite.h"
#include "hostapi/codes.h"
#include "hostapi/sp_plugins_suite.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using embedded::Module;
using embedded::Opening;
using embedded::Session;
using embedded::StepReport;
using test::HostWithFaults;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The messages that the small plug-in received, and what it does.
struct SmallPlugin {
  std::vector<std::string> told;
  std::function<SPErr(const std::string& message, SPMessageData& data)> act;
};

SmallPlugin* plugin = nullptr;

SPErr pluginMain(const char* caller, const char* selector, void* message) {
  const std::string name = std::string(caller) + "/" + selector;
  plugin->told.push_back(name);
  return plugin->act ? plugin->act(name, *static_cast<SPMessageData*>(message)) : kNoErr;
}

template <class Suite>
const Suite* suiteOf(const SPMessageData& data) {
  const void* table = nullptr;
  data.basic->AcquireSuite(Suite::kId.name, Suite::kId.version, &table);
  data.basic->ReleaseSuite(Suite::kId.name, Suite::kId.version);
  return static_cast<const Suite*>(table);
}

SPErr registerFormat(const SPMessageData& data) {
  std::array<unsigned char, 1024> title{};
  std::memcpy(title.data(), " small", 6);
  char extension[] = "pnx";
  const PlatformAddFileFormatData format{
      .type = 0, .title = title.data(), .titleOrder = 0, .extension = extension};
  AIFileFormatHandle handle = nullptr;
  return suiteOf<AIFileFormatSuite>(data)->AddFileFormat(data.self, "small", &format, 1, &handle,
                                                         0);
}

class SessionTest : public testing::Test {
 protected:
  SessionTest() { plugin = &small; }
  ~SessionTest() override {
    session.reset();
    plugin = nullptr;
  }

  Session& run(embedded::Options options = {}) {
    session = std::make_unique<Session>(Module::ofEntry(&pluginMain, "small"), std::move(options));
    return *session;
  }

  // Registers a format at start-up and does `go` at "AI Go".
  void actAtGo(const std::function<SPErr(SPMessageData&)>& go) {
    small.act = [go](const std::string& message, SPMessageData& data) {
      if (message == "SP Interface/Startup") return registerFormat(data);
      if (message == "AI File Format/AI Go") return go(data);
      return kNoErr;
    };
  }

  SmallPlugin small;
  std::unique_ptr<Session> session;
};

TEST_F(SessionTest, SendsTheMessagesOfAWholeSessionInOrder) {
  small.act = [](const std::string& message, SPMessageData& data) {
    if (message != "SP Interface/Startup") return kNoErr;
    suiteOf<AINotifierSuite>(data)->AddNotifier(data.self, "started", kApplicationStarted, nullptr);
    return registerFormat(data);
  };
  Session& life = run();
  life.start();
  life.open("drawing.pnx");
  life.end();
  EXPECT_THAT(small.told,
              ElementsAre("SP Access/Reload", "SP Interface/Startup", "AI Notifier/AI Notify",
                          "AI File Format/AI Check", "AI File Format/AI Get Parameters",
                          "AI File Format/AI Go", "SP Interface/Shutdown", "SP Access/Unload"));
}

TEST_F(SessionTest, NotifiesOfTheStartOnlyWhoAskedForIt) {
  small.act = [](const std::string& message, SPMessageData& data) {
    if (message != "SP Interface/Startup") return kNoErr;
    return suiteOf<AINotifierSuite>(data)->AddNotifier(data.self, "n", "AI Art Selection Changed",
                                                       nullptr);
  };
  run().start();
  EXPECT_THAT(small.told, ElementsAre("SP Access/Reload", "SP Interface/Startup"));
}

TEST_F(SessionTest, TheStartNotificationHasAHandleATypeAndNoData) {
  AINotifierHandle registered = nullptr;
  AINotifierMessage received{};
  small.act = [&](const std::string& message, SPMessageData& data) {
    if (message == "SP Interface/Startup") {
      suiteOf<AINotifierSuite>(data)->AddNotifier(data.self, "n", kApplicationStarted, &registered);
    } else if (message == "AI Notifier/AI Notify") {
      std::memcpy(static_cast<void*>(&received), &data, sizeof received);
      EXPECT_STREQ(received.type, kApplicationStarted);
    }
    return kNoErr;
  };
  run().start();
  EXPECT_NE(registered, nullptr);
  EXPECT_EQ(received.notifier, registered);
  EXPECT_EQ(received.notifyData, nullptr);
}

TEST_F(SessionTest, EveryMessageBeginsWithTheCommonPart) {
  const SPBasicSuite* basic = nullptr;
  SPPluginRef self = nullptr;
  int messages = 0;
  small.act = [&](const std::string&, SPMessageData& data) {
    EXPECT_EQ(data.SPCheck, 0x5350436B);
    EXPECT_TRUE(basic == nullptr || data.basic == basic);
    EXPECT_TRUE(self == nullptr || data.self == self);
    basic = data.basic;
    self = data.self;
    ++messages;
    return messages == 2 ? registerFormat(data) : kNoErr;
  };
  Session& life = run();
  life.start();
  life.open("a.pnx");
  life.end();
  EXPECT_NE(basic, nullptr);
  EXPECT_NE(self, nullptr);
  EXPECT_EQ(messages, 7);
}

TEST_F(SessionTest, KeepsTheGlobalsFromOneMessageToTheNext) {
  int thing = 0;
  std::vector<void*> seen;
  small.act = [&](const std::string& message, SPMessageData& data) {
    seen.push_back(data.globals);
    if (message == "SP Interface/Startup") data.globals = &thing;
    if (message == "SP Interface/Shutdown") data.globals = nullptr;
    return kNoErr;
  };
  Session& life = run();
  life.start();
  EXPECT_EQ(life.globals(), &thing);
  life.end();
  EXPECT_THAT(seen, ElementsAre(nullptr, nullptr, &thing, nullptr));
}

TEST_F(SessionTest, AccessMessagesSayWhenTheyAreSent) {
  std::vector<std::int32_t> when;
  small.act = [&](const std::string& message, SPMessageData& data) {
    if (message.starts_with("SP Access")) {
      SPAccessMessage access{};
      std::memcpy(static_cast<void*>(&access), &data, sizeof access);
      when.push_back(access.when);
    }
    return kNoErr;
  };
  Session& life = run();
  life.start();
  life.end();
  EXPECT_THAT(when, ElementsAre(0, 2));  // start-up, shut-down
}

TEST_F(SessionTest, AFailedStartupIsFollowedOnlyByUnloading) {
  small.act = [](const std::string& message, SPMessageData&) {
    return message == "SP Interface/Startup" ? fourCC("!MEM") : kNoErr;
  };
  Session& life = run();
  const StepReport start = life.start();
  EXPECT_EQ(start.code("Startup"), fourCC("!MEM"));
  EXPECT_FALSE(start.allAnsweredZero());
  EXPECT_FALSE(life.started());
  const Opening opening = life.open("a.pnx");
  EXPECT_EQ(opening.problem, "the plug-in did not start");
  EXPECT_THAT(opening.messages, IsEmpty());
  life.end();
  EXPECT_THAT(small.told,
              ElementsAre("SP Access/Reload", "SP Interface/Startup", "SP Access/Unload"));
}

TEST_F(SessionTest, OpensNothingWithoutARegisteredFormat) {
  Session& life = run();
  life.start();
  EXPECT_EQ(life.open("a.pnx").problem, "the plug-in registered no file format");
}

TEST_F(SessionTest, TheFileMessageHasFormatOptionAndPath) {
  AIFileFormatMessage received{};
  std::u32string path;
  actAtGo([&](SPMessageData& data) {
    std::memcpy(static_cast<void*>(&received), &data, sizeof received);
    UnicodeStringBody text;
    suiteOf<AIFilePathSuite>(data)->GetFullPath(&received.filePath, 0, &text);
    path = test::characters(session->host(), text);
    return suiteOf<AIUnicodeStringSuite>(data)->Destroy(&text);
  });
  Session& life = run();
  life.start();
  const std::string file = (std::filesystem::current_path() / "drawing.pnx").string();
  life.open("drawing.pnx");
  EXPECT_EQ(received.fileFormat, life.host().formats()[0].handle);
  EXPECT_EQ(received.option, 1);
  EXPECT_EQ(received.extendedData, nullptr);
  EXPECT_EQ(received.actionParm, nullptr);
  EXPECT_EQ(std::filesystem::path(path).string(), file) << "the full path of a relative one";
}

TEST_F(SessionTest, SendsNothingMoreForAFileThatTheCheckRefuses) {
  small.act = [](const std::string& message, SPMessageData& data) {
    if (message == "SP Interface/Startup") return registerFormat(data);
    return message == "AI File Format/AI Check" ? fourCC("FMT?") : kNoErr;
  };
  Session& life = run();
  life.start();
  const Opening opening = life.open("a.pnx");
  ASSERT_EQ(opening.messages.size(), 1U);
  EXPECT_EQ(opening.code("AI Check"), fourCC("FMT?"));
  EXPECT_EQ(opening.code("AI Go"), std::nullopt);
  EXPECT_EQ(opening.problem, "");
}

TEST_F(SessionTest, FillsTheFileRecordOfAMessageThatHasOne) {
  AIFileFormatMessageWithFileRecord received{};
  actAtGo([&](SPMessageData& data) {
    std::memcpy(static_cast<void*>(&received), &data, sizeof received);
    return kNoErr;
  });
  run(HostWithFaults().withMessageLayout(embedded::MessageLayout::driveRecord)).start();
  session->open("/a/b.pnx");
  EXPECT_TRUE(std::isalpha(static_cast<unsigned char>(received.fileRecord[0])));
  EXPECT_EQ(received.fileRecord[1], ':');
  EXPECT_EQ(received.fileRecord[299], '\0');
  EXPECT_EQ(received.option, 1);
  EXPECT_NE(received.filePath.inside, nullptr);
  session.reset();

  run(HostWithFaults().withMessageLayout(embedded::MessageLayout::networkRecord)).start();
  session->open("/" + std::string(400, 'a') + ".pnx");
  EXPECT_EQ(std::string(received.fileRecord, 2), "\\\\");
  EXPECT_EQ(received.fileRecord[299], '\0');
  EXPECT_EQ(received.option, 1);
}

TEST_F(SessionTest, CanSendMessagesWhileAPluginImportsStyles) {
  std::vector<std::string> order;
  small.act = [&](const std::string& message, SPMessageData& data) {
    if (message == "SP Interface/Startup") return registerFormat(data);
    if (message == "AI Menu/AI Go") {
      order.emplace_back("menu");
      AIDocumentSetup setup{};
      return suiteOf<AIDocumentSuite>(data)->GetDocumentSetup(&setup);
    }
    if (message != "AI File Format/AI Go") return kNoErr;
    order.emplace_back("begin");
    AIDocumentHandle document = nullptr;
    const AIErr code = suiteOf<AIPathStyleSuite>(data)->ImportStyles(
        test::HostFilePath(session->host(), "/no library").body(), &document);
    order.emplace_back("end");
    return code;
  };
  run(HostWithFaults().withoutLibrary().whileImporting(
      [&] { EXPECT_EQ(session->send("AI Menu", "AI Go"), 0); }));
  session->start();
  const Opening opening = session->open("a.pnx");
  EXPECT_THAT(order, ElementsAre("begin", "menu", "end"));
  EXPECT_EQ(opening.code("AI Go"), fourCC("!Imp"));
  EXPECT_THAT(opening.misuse, IsEmpty());
  ASSERT_TRUE(opening.firstFailure);
  EXPECT_EQ(opening.firstFailure->function, "ImportStyles") << "each call keeps its own answer";
  const std::string journal = session->host().journal().jsonLines();
  EXPECT_LT(journal.find("\"ImportStyles\""), journal.find("\"GetDocumentSetup\""));
}

TEST_F(SessionTest, SendsAFileMessageWithAnyOptionWord) {
  std::int32_t option = -1;
  actAtGo([&](SPMessageData& data) {
    AIFileFormatMessage message{};
    std::memcpy(static_cast<void*>(&message), &data, sizeof message);
    option = message.option;
    return 5;
  });
  Session& life = run();
  life.start();
  EXPECT_EQ(life.sendFileFormat("AI Go", "a.pnx", 0), 5);
  EXPECT_EQ(option, 0);
}

TEST_F(SessionTest, SendsASingleMessage) {
  Session& life = run();
  small.act = [](const std::string& message, SPMessageData&) {
    return message == "AI Menu/AI Go" ? 3 : 4;
  };
  EXPECT_EQ(life.send("AI Menu", "AI Go"), 3);
  SPInterfaceMessage about{};
  EXPECT_EQ(life.send("SP Interface", "About", &about), 4);
  EXPECT_EQ(about.d.SPCheck, kSPCheck);
  small.act = nullptr;
}

TEST_F(SessionTest, KeepsWhatWasDrawn) {
  actAtGo([](SPMessageData& data) {
    AIArtHandle path = nullptr;
    suiteOf<AIArtSuite>(data)->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path);
    return suiteOf<AIPathSuite>(data)->SetPathSegmentCount(path, 5);
  });
  Session& life = run();
  life.start();
  const Opening opening = life.open("a.pnx");
  ASSERT_EQ(opening.document.layers.size(), 1U);
  EXPECT_EQ(std::get<art::Path>(opening.document.layers[0].art[0].value).segments.size(), 5U);
  EXPECT_TRUE(opening.allAnsweredZero());
  EXPECT_FALSE(opening.builderRan);
  const Opening second = life.open("b.pnx");
  EXPECT_EQ(art::countPaths(second.document), 1U) << "each file has its own document";
}

TEST_F(SessionTest, SaysThatTheBuilderRanWhenTheSetupWasAskedFor) {
  actAtGo([](SPMessageData& data) {
    AIDocumentSetup setup{};
    return suiteOf<AIDocumentSuite>(data)->GetDocumentSetup(&setup);
  });
  Session& life = run();
  life.start();
  EXPECT_TRUE(life.open("a.pnx").builderRan);
}

TEST_F(SessionTest, ReportsAlertsMisuseAndTheFirstFailureOfEachStep) {
  actAtGo([this](SPMessageData& data) {
    AIArtHandle path = nullptr;
    suiteOf<AIArtSuite>(data)->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path);
    suiteOf<AIPathSuite>(data)->SetPathSegmentCount(path, -1);
    suiteOf<AIUserSuite>(data)->ErrorAlert(test::HostText(session->host(), "SEGM").body());
    return suiteOf<AIArtSuite>(data)->NewArt(kPathArt, kPlaceAboveAll, nullptr, nullptr);
  });
  Session& life = run();
  const StepReport start = life.start();
  EXPECT_THAT(start.alerts, IsEmpty());
  EXPECT_EQ(start.firstFailure, std::nullopt);
  for (int i = 0; i < 2; ++i) {
    const Opening opening = life.open("a.pnx");
    EXPECT_THAT(opening.alerts, ElementsAre("SEGM"));
    EXPECT_THAT(opening.misuse, ElementsAre(HasSubstr("art is a null pointer")));
    ASSERT_TRUE(opening.firstFailure);
    EXPECT_EQ(opening.firstFailure->code, fourCC("SEGM"));
    EXPECT_EQ(opening.firstFailure->path, 1U);
    EXPECT_EQ(opening.code("AI Go"), fourCC("PARM"));
  }
}

TEST_F(SessionTest, ReportsAnExceptionThatLeavesThePlugIn) {
  actAtGo([](SPMessageData&) -> SPErr { throw std::runtime_error("out"); });
  Session& life = run();
  life.start();
  const Opening opening = life.open("a.pnx");
  EXPECT_EQ(opening.code("AI Go"), fourCC("CANT"));
  EXPECT_THAT(opening.misuse,
              ElementsAre("plug-in misbehaving: an exception left PluginMain during "
                          "\"AI File Format\" \"AI Go\""));
}

TEST_F(SessionTest, ReportsSuitesThatAreNotReleasedAtTheEnd) {
  small.act = [](const std::string& message, SPMessageData& data) {
    const void* table = nullptr;
    if (message != "SP Interface/Startup") return kNoErr;
    return data.basic->AcquireSuite("AI Art Suite", 16, &table);
  };
  Session& life = run();
  EXPECT_THAT(life.start().misuse, IsEmpty());
  EXPECT_THAT(life.end().misuse,
              ElementsAre("plug-in misbehaving: \"AI Art Suite\" 16 was not released"));
}

TEST_F(SessionTest, CapturesWhatIsPrinted) {
  actAtGo([](SPMessageData&) {
    std::printf("there are 2 layers in this document\n");
    EXPECT_GE(std::fputs("debug", stderr), 0);
    return kNoErr;
  });
  Session& life = run();
  EXPECT_TRUE(life.start().output.empty());
  const Opening opening = life.open("a.pnx");
  EXPECT_EQ(opening.output.standardOutput, "there are 2 layers in this document\n");
  EXPECT_EQ(opening.output.standardError, "debug");
  EXPECT_TRUE(life.end().output.empty());
}

TEST_F(SessionTest, LetsOutputThroughWhenTheOptionsSaySo) {
  actAtGo([](SPMessageData&) {
    std::printf("through");
    return kNoErr;
  });
  Session& life = run(HostWithFaults().lettingOutputThrough());
  life.start();
  embedded::OutputCapture outside;
  const Opening opening = life.open("a.pnx");
  EXPECT_EQ(outside.finish().standardOutput, "through");
  EXPECT_TRUE(opening.output.empty());
}

TEST_F(SessionTest, CallsThePlugInByTheNameOfItsModule) {
  std::string name;
  small.act = [&](const std::string&, SPMessageData& data) {
    const char* text = nullptr;
    suiteOf<SPPluginsSuite>(data)->GetPluginName(data.self, &text);
    name = text;
    return kNoErr;
  };
  run().start();
  EXPECT_EQ(name, "small");
  session.reset();
  embedded::Options options;
  options.pluginName = "other";
  run(options).start();
  EXPECT_EQ(name, "other");
  session.reset();  // before the name is destroyed
}

TEST_F(SessionTest, EndsOnceAtTheLatestInTheDestructor) {
  Session& life = run();
  life.start();
  life.end();
  EXPECT_TRUE(life.unloaded());
  EXPECT_THAT(life.end().messages, IsEmpty());
  EXPECT_EQ(life.send("AI Menu", "AI Go"), fourCC("CANT")) << "the module is gone";
  session.reset();
  EXPECT_EQ(std::count(small.told.begin(), small.told.end(), "SP Access/Unload"), 1);
  small.told.clear();
  run().start();
  session.reset();
  EXPECT_EQ(small.told.back(), "SP Access/Unload");
}

TEST_F(SessionTest, AMessageRecordIsZeroedBeyondItsFields) {
  bool zero = true;
  actAtGo([&](SPMessageData& data) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(&data);
    for (std::size_t i = sizeof(AIFileFormatMessage); i < 256; ++i)
      zero = zero && bytes[i] == 0;
    return kNoErr;
  });
  Session& life = run();
  life.start();
  life.open("a.pnx");
  EXPECT_TRUE(zero);
}

TEST(SessionOfALoadedModule, UnloadsTheModuleAtItsEnd) {
  std::string error;
  auto module = Module::load(TINY_MODULE, error);
  ASSERT_NE(module, nullptr) << error;
  Session session(std::move(module));
  EXPECT_EQ(session.send("SP Access", "Reload"), 1);
  EXPECT_EQ(session.send("SP Access", "Reload"), 2);
  session.end();
  EXPECT_TRUE(session.unloaded());
  EXPECT_FALSE(Module::isResident(TINY_MODULE));
}

// 3,000 strokes of 100 points, seven calls each: the calls are recorded and nothing is quadratic.
TEST_F(SessionTest, DrawsThreeThousandStrokesWithoutDelay) {
  std::vector<AIPathSegment> segments(100);
  std::vector<AITabletProfile> profiles(100);
  actAtGo([&](SPMessageData& data) {
    const auto* art = suiteOf<AIArtSuite>(data);
    const auto* paths = suiteOf<AIPathSuite>(data);
    const auto* tablet = suiteOf<AITabletDataSuite>(data);
    for (int stroke = 0; stroke < 3000; ++stroke) {
      AIArtHandle group = nullptr;
      AIArtHandle path = nullptr;
      art->GetFirstArtOfLayer(nullptr, &group);
      art->NewArt(kPathArt, kPlaceInsideOnTop, group, &path);
      paths->SetPathSegmentCount(path, 100);
      paths->SetPathSegmentCount(path, 100);
      paths->SetPathSegments(path, 0, 100, segments.data());
      paths->SetPathClosed(path, 0);
      tablet->SetTabletData(path, profiles.data(), 100, kTabletPressure);
    }
    return kNoErr;
  });
  for (const bool checksums : {true, false}) {
    embedded::Options options;
    options.journalChecksums = checksums;
    Session& life = run(options);
    life.start();
    const auto begin = std::chrono::steady_clock::now();
    const Opening opening = life.open("a.pnx");
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    RecordProperty(checksums ? "with_checksums" : "without_checksums",
                   std::to_string(took.count()));
    EXPECT_EQ(art::countPaths(opening.document), 3000U);
    EXPECT_EQ(life.host().journal().count("AI Path Suite", "SetPathSegmentCount"), 6000U);
    EXPECT_LT(took, std::chrono::seconds(20));
    session.reset();
  }
}

}  // namespace
