#include <gmock/gmock.h>

#include "hostapi/ai_file_path_suite.h"
#include "hostapi/ai_unicode_string_suite.h"
#include "plugin/error.h"
#include "plugin/file_path.h"
#include "plugin/plugin.h"
#include "plugin/suites.h"
#include "plugin/unicode_string.h"
#include "tests/plugin/changed_suite.h"
#include "tests/plugin/plugin_in_host.h"

namespace {

using namespace plugintest;

// The wrappers need the suites of a started plug-in.
class WideText : public testing::Test {
 protected:
  void SetUp() override { plugin->start(); }

  PluginInHost plugin;
};

TEST_F(WideText, RoundTripsEveryKindOfCharacter) {
  for (const wchar_t* text : {L"", L"a", L"\u00FC\u20AC\u7ED8", L"\U0001D11E\U0010FFFF!"}) {
    EXPECT_EQ(ai::UnicodeString::fromWide(text).toWide(), text);
  }
}

TEST_F(WideText, ReadsPlatformText) {
  EXPECT_EQ(ai::UnicodeString("pnx").toWide(), L"pnx");
}

TEST_F(WideText, ComparesOverTheWholeOfBothStrings) {
  const ai::UnicodeString text("pnx");
  EXPECT_EQ(text.compare(ai::UnicodeString("pnx")), 0);
  EXPECT_NE(text.compare(ai::UnicodeString("pnxx")), 0);
  EXPECT_NE(text.compare(ai::UnicodeString("pn")), 0);
  EXPECT_NE(text.compare(ai::UnicodeString("PNX")), 0);
  EXPECT_NE(text.compare(ai::UnicodeString()), 0);
  EXPECT_EQ(ai::UnicodeString("").compare(ai::UnicodeString()), 0);
}

TEST_F(WideText, CopiesAndAppends) {
  const ai::UnicodeString first("one");
  ai::UnicodeString second(first);
  second.append(ai::UnicodeString(" two"));
  EXPECT_EQ(first.toWide(), L"one");
  EXPECT_EQ(second.toWide(), L"one two");
  second = first;
  EXPECT_EQ(second.toWide(), L"one");
}

TEST_F(WideText, LeavesNothingBehindInTheHost) {
  const std::size_t before = plugin.host().liveStrings();
  {
    const ai::UnicodeString text("text");
    ai::UnicodeString copy(text);
    copy.append(text);
    EXPECT_EQ(plugin.host().liveStrings(), before + 2);
  }
  EXPECT_EQ(plugin.host().liveStrings(), before);
}

TEST_F(WideText, AsksTheHostForNothingWhenAStringOrAPathIsEmpty) {
  const std::size_t before = plugin.host().journal().size();
  {
    const ai::UnicodeString text;
    const ai::FilePath path;
    EXPECT_EQ(text.body()->inside, nullptr);
    EXPECT_EQ(path.body()->inside, nullptr);
  }
  EXPECT_EQ(plugin.host().journal().size(), before);
}

std::vector<hostapi::AICharacterEncoding> encodings;

TEST_F(WideText, IsMadeFromNarrowTextInThePlatformsEncoding) {
  ChangedSuite<hostapi::AIUnicodeStringSuite> strings;
  static const auto hostsOwn = strings.hostsOwn().Initialize;
  strings->Initialize = [](hostapi::UnicodeStringBody* string, const char* text,
                           std::int64_t length, hostapi::AICharacterEncoding encoding) {
    encodings.push_back(encoding);
    return hostsOwn(string, text, length, encoding);
  };
  encodings.clear();
  EXPECT_EQ(ai::UnicodeString("pnx").toWide(), L"pnx");
  Plugin::showErrorAlert(fourCC("TEST"));
  EXPECT_THAT(plugin.host().alerts(), testing::ElementsAre("TEST"));
  EXPECT_THAT(encodings, testing::ElementsAre(hostapi::kAIPlatformCharacterEncoding,
                                              hostapi::kAIPlatformCharacterEncoding));
}

std::vector<int> expansions;

TEST_F(WideText, BecomesAPathWhoseShortNamesAreExpanded) {
  ChangedSuite<hostapi::AIFilePathSuite> paths;
  paths->Set = [](const hostapi::UnicodeStringBody*, hostapi::AIBool8 expand,
                  hostapi::FilePathBody*) {
    expansions.push_back(expand);
    return hostapi::kNoErr;
  };
  expansions.clear();
  const ai::FilePath expanded(ai::UnicodeString("C:\\PROGRA~1"));
  const ai::FilePath asItIs(ai::UnicodeString("C:\\PROGRA~1"), false);
  EXPECT_THAT(expansions, testing::ElementsAre(1, 0));
}

TEST(WideTextOfAFaultyHost, EndsOnlyAtTheIndexErrorAndThrowsAnyOther) {
  PluginInHost plugin(failing("AI Unicode String Suite", "GetChar", fourCC("US!F"), 2));
  plugin->start();
  const ai::UnicodeString text("pnx");
  try {
    text.toWide();
    FAIL() << "a malformed string was read";
  } catch (const ai::Error& error) {
    EXPECT_EQ(static_cast<hostapi::AIErr>(error), fourCC("US!F"));
  }
}

TEST(WideTextWithoutASuite, ThrowsThatItIsMissing) {
  EXPECT_EQ(heldSuite<hostapi::AIUnicodeStringSuite>, nullptr);
  EXPECT_THROW(ai::UnicodeString("pnx"), ai::Error);
  const ai::UnicodeString empty;
  EXPECT_THROW(empty.toWide(), ai::Error);
}

}  // namespace
