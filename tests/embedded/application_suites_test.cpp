// Notifier, User, Runtime and File Format.
#include <array>
#include <cstring>
#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/ai_file_format_suite.h"
#include "hostapi/ai_notifier_suite.h"
#include "hostapi/ai_runtime_suite.h"
#include "hostapi/ai_user_suite.h"
#include "hostapi/codes.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using testing::ElementsAre;
using testing::IsEmpty;

class ApplicationSuites : public testing::Test {
 protected:
  embedded::Host host;
};

TEST_F(ApplicationSuites, KeepsANotifierWithItsNameAndType) {
  char name[] = "my notifier";
  AINotifierHandle handle = nullptr;
  EXPECT_EQ(
      test::acquire<AINotifierSuite>(host)->AddNotifier(host.plugin(), name, "a type", &handle), 0);
  std::memset(name, 'x', 2);
  ASSERT_EQ(host.notifiers().size(), 1U);
  EXPECT_EQ(host.notifiers()[0].name, "my notifier") << "the host copies the text";
  EXPECT_EQ(host.notifiers()[0].type, "a type");
  EXPECT_EQ(host.notifiers()[0].handle, handle);
}

TEST_F(ApplicationSuites, GivesNoNotifierHandleWhenNoneIsAskedFor) {
  EXPECT_EQ(test::acquire<AINotifierSuite>(host)->AddNotifier(host.plugin(), "n", "t", nullptr), 0);
  EXPECT_EQ(host.notifiers().size(), 1U);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(ApplicationSuites, CollectsAlerts) {
  const auto* suite = test::acquire<AIUserSuite>(host);
  suite->ErrorAlert(test::HostText(host, "CANT").body());
  suite->ErrorAlert(test::HostText(host, "\xC3\xA9").body());
  EXPECT_THAT(host.alerts(), ElementsAre("CANT", "\xC3\xA9"));
  suite->ErrorAlert(nullptr);
  EXPECT_EQ(host.alerts().size(), 2U);
  EXPECT_EQ(host.misuse().size(), 1U);
}

TEST_F(ApplicationSuites, ReportsAnAlertWhoseTextWasDestroyed) {
  UnicodeStringBody stale;
  {
    test::HostText text(host, "gone");
    stale = *text.body();
  }
  test::acquire<AIUserSuite>(host)->ErrorAlert(&stale);
  EXPECT_THAT(host.alerts(), IsEmpty());
  EXPECT_THAT(host.misuse(),
              ElementsAre("plug-in misbehaving: \"AI User Suite\" ErrorAlert: text is "
                          "a string that was destroyed"));
}

TEST_F(ApplicationSuites, IsVersion16) {
  EXPECT_EQ(test::acquire<AIRuntimeSuite>(host)->GetAppMajorVersion(), 16);
  EXPECT_EQ(test::acquire<AIRuntimeSuite>(host)->GetAppMinorVersion(), 0);
}

TEST(ApplicationVersion, IsTheOneInTheOptions) {
  const embedded::Host host(test::HostWithFaults().ofVersion(17, 2));
  EXPECT_EQ(test::acquire<AIRuntimeSuite>(host)->GetAppMajorVersion(), 17);
  EXPECT_EQ(test::acquire<AIRuntimeSuite>(host)->GetAppMinorVersion(), 2);
}

class FileFormats : public testing::Test {
 protected:
  // A buffer as large as the host may read, zero-filled after the title.
  AIErr add(const char* name, const char* title, std::string extensions) {
    std::array<unsigned char, 1024> buffer{};
    std::memcpy(buffer.data(), title, std::strlen(title));
    return add(name, buffer.data(), std::move(extensions));
  }

  AIErr add(const char* name, unsigned char* title, std::string extensions) {
    const PlatformAddFileFormatData data{
        .type = 0, .title = title, .titleOrder = 0, .extension = extensions.data()};
    return test::acquire<AIFileFormatSuite>(host)->AddFileFormat(host.plugin(), name, &data, 1,
                                                                 &format, 0);
  }

  embedded::Host host;
  AIFileFormatHandle format = nullptr;
};

TEST_F(FileFormats, AreKeptWithNameTitleExtensionsAndOptions) {
  EXPECT_EQ(add("  my files", " my files", "pnx,kvo"), 0);
  ASSERT_EQ(host.formats().size(), 1U);
  EXPECT_EQ(host.formats()[0].handle, format);
  EXPECT_EQ(host.formats()[0].name, "  my files");
  EXPECT_EQ(host.formats()[0].title, " my files");
  EXPECT_EQ(host.formats()[0].extensions, "pnx,kvo");
  EXPECT_EQ(host.formats()[0].options, 1);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(FileFormats, HaveUniqueNames) {
  EXPECT_EQ(add("name", " one", "pnx"), 0);
  EXPECT_EQ(add("name", " two", "kvo"), fourCC("NAM2"));
  EXPECT_EQ(host.formats().size(), 1U);
}

TEST_F(FileFormats, ReportATitleThatIsNotZeroFilled) {
  std::array<unsigned char, 33> buffer;
  buffer.fill('x');
  std::memcpy(buffer.data(), " my files", 10);
  EXPECT_EQ(add("name", buffer.data(), "pnx"), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 1U);
  EXPECT_THAT(host.formats(), IsEmpty());
}

TEST_F(FileFormats, HaveAtMost31CharactersOfExtensionsAnd5InEachOne) {
  EXPECT_EQ(add("five", " t", "inkml,abcde"), 0);
  EXPECT_EQ(add("six", " t", "pnx,abcdef"), fourCC("PARM"));
  EXPECT_EQ(add("31", " t", "abcde,abcde,abcde,abcde,abcde,a"), 0);
  EXPECT_EQ(add("32", " t", "abcde,abcde,abcde,abcde,abcde,ab"), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 2U);
}

TEST_F(FileFormats, ReportNullPointers) {
  const auto* suite = test::acquire<AIFileFormatSuite>(host);
  EXPECT_EQ(suite->AddFileFormat(host.plugin(), "n", nullptr, 1, &format, 0), fourCC("PARM"));
  EXPECT_EQ(add("n", static_cast<unsigned char*>(nullptr), "pnx"), fourCC("PARM"));
  EXPECT_EQ(suite->AddFileFormat(nullptr, nullptr, nullptr, 1, nullptr, 0), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 5U);
  EXPECT_THAT(host.formats(), IsEmpty());
}

}  // namespace
