// Art Style and Path Style.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/ai_art_style_suite.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_path_style_suite.h"
#include "hostapi/codes.h"
#include "stylelib/library.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kLibrary[] = "/somewhere/that is not there/brush_pressure.ai";

class StyleSuites : public testing::Test {
 protected:
  explicit StyleSuites(
      const test::HostWithFaults& options = test::HostWithFaults().withLibraryAt(kLibrary))
      : host(options) {
    host.newDocument();
  }

  AIErr import(std::string_view file, AIDocumentHandle& document) {
    test::HostFilePath path(host, file);
    return test::acquire<AIPathStyleSuite>(host)->ImportStyles(path.body(), &document);
  }

  AIErr find(std::string_view name, AIDocumentHandle document, AIArtStyleHandle& style) {
    return suite->GetArtStyleByNameFromDocument(&style, test::HostText(host, name).body(),
                                                document);
  }

  AIArtStyleHandle libraryStyle() {
    AIDocumentHandle document = nullptr;
    AIArtStyleHandle style = nullptr;
    EXPECT_EQ(import(kLibrary, document), 0);
    EXPECT_EQ(find("TrillowStyle", document, style), 0);
    return style;
  }

  AIErr addNamed(AIArtStyleHandle style, std::string_view name, bool unique,
                 AIArtStyleHandle& named) {
    return suite->AddNamedStyle(style, test::HostText(host, name).body(), unique ? 1 : 0, &named);
  }

  AIArtHandle makePath() {
    AIArtHandle path = nullptr;
    EXPECT_EQ(test::acquire<AIArtSuite>(host)->NewArt(kPathArt, kPlaceAboveAll, nullptr, &path), 0);
    return path;
  }

  std::vector<std::string> styleNames() {
    std::vector<std::string> names;
    for (const art::Style& style : host.document().styles)
      names.push_back(style.name);
    return names;
  }

  embedded::Host host;
  const AIArtStyleSuite* suite = test::acquire<AIArtStyleSuite>(host);
};

TEST_F(StyleSuites, TheBuiltInLibraryHasARoundPressurePenUnderTrillowStyle) {
  AIArtStyleHandle named = nullptr;
  ASSERT_EQ(addNamed(libraryStyle(), "mine", true, named), 0);
  const art::Style style = host.document().styles.at(0);
  EXPECT_EQ(style.name, "mine");
  EXPECT_EQ(style.strokeWeight, 1);
  EXPECT_EQ(style.strokeColor, art::Color());
  ASSERT_TRUE(style.brush);
  EXPECT_EQ(style.brush->size, (art::BrushValue{1.5, 1.2, art::BrushDriver::pressure}));
  EXPECT_EQ(style.brush->roundness, (art::BrushValue{100, 0, art::BrushDriver::fixed}));
  EXPECT_EQ(style.brush->angle, (art::BrushValue{0, 0, art::BrushDriver::fixed}));
  EXPECT_DOUBLE_EQ(style.brush->size.lightest(), 0.3);
  EXPECT_DOUBLE_EQ(style.brush->size.heaviest(), 2.7);
}

TEST_F(StyleSuites, ImportsNothingFromAnyOtherPath) {
  AIDocumentHandle document = nullptr;
  EXPECT_EQ(import("/somewhere/else.ai", document), fourCC("!Imp"));
  EXPECT_EQ(import("", document), fourCC("!Imp"));
  EXPECT_EQ(document, nullptr);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

#ifndef _WIN32
TEST_F(StyleSuites, FindsTheLibraryByAPathWithBackslashes) {
  AIDocumentHandle document = nullptr;
  EXPECT_EQ(import("/somewhere/that is not there\\brush_pressure.ai", document), 0);
  EXPECT_NE(document, nullptr);
}
#endif

TEST_F(StyleSuites, EachImportGivesADocumentThatNeedNotBeClosed) {
  AIDocumentHandle first = nullptr;
  AIDocumentHandle second = nullptr;
  EXPECT_EQ(import(kLibrary, first), 0);
  EXPECT_EQ(import(kLibrary, second), 0);
  EXPECT_NE(first, second);
  EXPECT_THAT(host.notes(), IsEmpty());
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(StyleSuites, AnswersAMissingStyleWithACodeAndNull) {
  AIDocumentHandle document = nullptr;
  ASSERT_EQ(import(kLibrary, document), 0);
  AIArtStyleHandle style = libraryStyle();
  EXPECT_EQ(find("trillowstyle", document, style), fourCC("NAM?"));
  EXPECT_EQ(style, nullptr);
}

TEST_F(StyleSuites, ANullDocumentHasNoStyles) {
  AIArtStyleHandle style = libraryStyle();
  EXPECT_EQ(find("TrillowStyle", nullptr, style), fourCC("NAM?"));
  EXPECT_EQ(style, nullptr);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(StyleSuites, AStyleOfAnotherDocumentCannotBeApplied) {
  const AIArtHandle path = makePath();
  EXPECT_EQ(suite->SetArtStyle(path, libraryStyle()), fourCC("STYD"));
  EXPECT_EQ(std::get<art::Path>(host.document().layers[0].art[0].value).style, std::nullopt);
}

TEST_F(StyleSuites, ANamedStyleIsCopiedIntoTheDocumentAndCanBeApplied) {
  const AIArtHandle path = makePath();
  AIArtStyleHandle named = nullptr;
  ASSERT_EQ(addNamed(libraryStyle(), "kvoaiexportset", true, named), 0);
  EXPECT_EQ(suite->SetArtStyle(path, named), 0);
  EXPECT_THAT(styleNames(), ElementsAre("kvoaiexportset"));
  EXPECT_EQ(std::get<art::Path>(host.document().layers[0].art[0].value).style, 0U);
}

TEST_F(StyleSuites, ANullStyleRemovesTheStyle) {
  const AIArtHandle path = makePath();
  AIArtStyleHandle named = nullptr;
  ASSERT_EQ(addNamed(libraryStyle(), "mine", true, named), 0);
  ASSERT_EQ(suite->SetArtStyle(path, named), 0);
  EXPECT_EQ(suite->SetArtStyle(path, nullptr), 0);
  EXPECT_EQ(std::get<art::Path>(host.document().layers[0].art[0].value).style, std::nullopt);
}

TEST_F(StyleSuites, GroupsCanHaveStylesToo) {
  AIArtHandle group = nullptr;
  ASSERT_EQ(test::acquire<AIArtSuite>(host)->NewArt(kGroupArt, kPlaceAboveAll, nullptr, &group), 0);
  AIArtStyleHandle named = nullptr;
  ASSERT_EQ(addNamed(libraryStyle(), "mine", true, named), 0);
  EXPECT_EQ(suite->SetArtStyle(group, named), 0);
  EXPECT_EQ(std::get<art::Group>(host.document().layers[0].art[0].value).style, 0U);
}

TEST_F(StyleSuites, ANameInUseGetsANumberWhenItIsToBeUnique) {
  const AIArtStyleHandle source = libraryStyle();
  AIArtStyleHandle named = nullptr;
  EXPECT_EQ(addNamed(source, "mine", true, named), 0);
  EXPECT_EQ(addNamed(source, "mine", true, named), 0);
  EXPECT_EQ(addNamed(source, "mine", true, named), 0);
  EXPECT_THAT(styleNames(), ElementsAre("mine", "mine 2", "mine 3"));
}

TEST_F(StyleSuites, ANameInUseIsRefusedWhenItNeedNotBeUnique) {
  const AIArtStyleHandle source = libraryStyle();
  AIArtStyleHandle named = nullptr;
  EXPECT_EQ(addNamed(source, "mine", false, named), 0);
  AIArtStyleHandle second = nullptr;
  EXPECT_EQ(addNamed(source, "mine", false, second), fourCC("NAM2"));
  EXPECT_EQ(second, nullptr);
  EXPECT_THAT(styleNames(), ElementsAre("mine"));
}

TEST_F(StyleSuites, NamesHaveOneTo63Characters) {
  const AIArtStyleHandle source = libraryStyle();
  AIArtStyleHandle named = nullptr;
  const std::string longest(63, 'n');
  EXPECT_EQ(addNamed(source, longest, true, named), 0);
  EXPECT_EQ(addNamed(source, longest, true, named), 0);
  EXPECT_EQ(addNamed(source, longest + "n", true, named), fourCC("PARM"));
  EXPECT_EQ(addNamed(source, "", true, named), fourCC("PARM"));
  EXPECT_THAT(styleNames(), ElementsAre(longest, std::string(61, 'n') + " 2"));
}

TEST_F(StyleSuites, ANullStyleCannotBeNamed) {
  AIArtStyleHandle named = nullptr;
  EXPECT_EQ(addNamed(nullptr, "mine", true, named), fourCC("PARM"));
  EXPECT_EQ(named, nullptr);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(StyleSuites, ReportsUnknownHandlesAndNullPointers) {
  AIArtStyleHandle style = nullptr;
  const auto foreign = reinterpret_cast<AIArtStyleHandle>(&host);
  EXPECT_EQ(addNamed(foreign, "mine", true, style), fourCC("PARM"));
  EXPECT_EQ(suite->SetArtStyle(makePath(), foreign), fourCC("PARM"));
  EXPECT_EQ(suite->SetArtStyle(reinterpret_cast<AIArtHandle>(&host), nullptr), fourCC("PARM"));
  EXPECT_EQ(find("any", reinterpret_cast<AIDocumentHandle>(&host), style), fourCC("PARM"));
  EXPECT_EQ(suite->AddNamedStyle(nullptr, nullptr, 1, &style), fourCC("PARM"));
  EXPECT_EQ(
      suite->GetArtStyleByNameFromDocument(nullptr, test::HostText(host, "n").body(), nullptr),
      fourCC("PARM"));
  AIDocumentHandle document = nullptr;
  EXPECT_EQ(test::acquire<AIPathStyleSuite>(host)->ImportStyles(nullptr, &document),
            fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 7U);
  EXPECT_EQ(suite->SetArtStyle(nullptr, nullptr), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 7U);
}

TEST_F(StyleSuites, RefusesTheStylesOfAClosedDocument) {
  AIArtStyleHandle named = nullptr;
  ASSERT_EQ(addNamed(libraryStyle(), "mine", true, named), 0);
  host.newDocument();
  EXPECT_EQ(suite->SetArtStyle(makePath(), named), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 1U);
}

class SilentStyleSuites : public StyleSuites {
 protected:
  SilentStyleSuites()
      : StyleSuites(test::HostWithFaults().withLibraryAt(kLibrary).answeringMissingStyles(
            embedded::MissingStyle::nullStyle)) {}
};

TEST_F(SilentStyleSuites, AnswerAMissingStyleWithZeroAndNull) {
  AIArtStyleHandle style = libraryStyle();
  AIDocumentHandle document = nullptr;
  ASSERT_EQ(import(kLibrary, document), 0);
  EXPECT_EQ(find("missing", document, style), 0);
  EXPECT_EQ(style, nullptr);
  EXPECT_EQ(find("missing", nullptr, style), 0);
}

class StyleSuitesThatReportNullHandles : public StyleSuites {
 protected:
  StyleSuitesThatReportNullHandles()
      : StyleSuites(test::HostWithFaults().withLibraryAt(kLibrary).namingNullHandles()) {}
};

TEST_F(StyleSuitesThatReportNullHandles, ReportThemWhereAStyleADocumentOrAnObjectIsNeeded) {
  AIArtStyleHandle style = nullptr;
  EXPECT_EQ(find("TrillowStyle", nullptr, style), fourCC("PARM"));
  EXPECT_EQ(addNamed(nullptr, "mine", true, style), fourCC("PARM"));
  EXPECT_EQ(suite->SetArtStyle(nullptr, nullptr), fourCC("PARM"));
  EXPECT_THAT(
      host.misuse(),
      ElementsAre(testing::HasSubstr("GetArtStyleByNameFromDocument: document is a null handle"),
                  testing::HasSubstr("AddNamedStyle: style is a null handle"),
                  testing::HasSubstr("SetArtStyle: art is a null handle")));
}

TEST_F(StyleSuitesThatReportNullHandles, AcceptANullStyleThatRemovesTheStyle) {
  EXPECT_EQ(suite->SetArtStyle(makePath(), nullptr), 0);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

class NoLibrary : public StyleSuites {
 protected:
  NoLibrary() : StyleSuites(test::HostWithFaults().withLibraryAt(kLibrary).withoutLibrary()) {}
};

TEST_F(NoLibrary, IsProvidedWhenTheOptionsSaySo) {
  AIDocumentHandle document = nullptr;
  EXPECT_EQ(import(kLibrary, document), fourCC("!Imp"));
  EXPECT_EQ(document, nullptr);
}

TEST(UsersLibrary, ThatCannotBeReadIsReportedAndReplacedByTheBuiltInOne) {
  const auto file = std::filesystem::temp_directory_path() / "penwick-host-test-library.ai";
  std::ofstream(file) << "%!PS-Adobe-3.0";
  embedded::Host host(test::HostWithFaults().withLibraryAt(file.string()));
  AIDocumentHandle document = nullptr;
  for (int i = 0; i < 2; ++i) {
    test::HostFilePath path(host, file.string());
    EXPECT_EQ(test::acquire<AIPathStyleSuite>(host)->ImportStyles(path.body(), &document), 0);
  }
  EXPECT_NE(document, nullptr);
  EXPECT_THAT(host.notes(),
              ElementsAre(testing::StartsWith("the brush style library " + file.string() +
                                              " was not read: it lists no graphic")));
  std::filesystem::remove(file);
}

TEST(UsersLibrary, IsReadInsteadOfTheBuiltInOne) {
  const auto file = std::filesystem::temp_directory_path() / "penwick-host-test-own-library.ai";
  std::ofstream(file) << "%!PS-Adobe-3.0\n%AI9_BeginArtStyles\n/KnownStyle : (Mine) /Name , ;\n"
                         "%AI9_EndArtStyles\n%AI9_BeginArtStyleList\n(Mine)\n"
                         "%AI9_EndArtStyleList\n";
  embedded::Host host(test::HostWithFaults().withLibraryAt(file.string()));
  AIDocumentHandle document = nullptr;
  AIArtStyleHandle style = nullptr;
  test::HostFilePath path(host, file.string());
  EXPECT_EQ(test::acquire<AIPathStyleSuite>(host)->ImportStyles(path.body(), &document), 0);
  const AIArtStyleSuite* styles = test::acquire<AIArtStyleSuite>(host);
  EXPECT_EQ(
      styles->GetArtStyleByNameFromDocument(&style, test::HostText(host, "Mine").body(), document),
      0);
  EXPECT_EQ(styles->GetArtStyleByNameFromDocument(
                &style, test::HostText(host, "TrillowStyle").body(), document),
            fourCC("NAM?"));
  EXPECT_THAT(host.notes(), IsEmpty());
  std::filesystem::remove(file);
}

TEST(LibraryPath, IsInTheUsersApplicationDataFolder) {
  EXPECT_TRUE(stylelib::defaultLibraryPath().ends_with("brush_pressure.ai"));
  EXPECT_NE(stylelib::defaultLibraryPath().find("Penwick"), std::string::npos);
}

}  // namespace
