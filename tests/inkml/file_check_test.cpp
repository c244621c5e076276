#include "inkml/file_check.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <tinyxml.h>

#include "platform/file.h"
#include "tests/support/ink/xml_text.h"
#include "tests/support/pen/temporary_folder.h"

#ifdef __linux__
#include <unistd.h>
#endif

namespace {

using inktest::openText;
using Orvo::checkBytes;
using Orvo::checkFile;
using Orvo::FileCheck;
using Orvo::FileRefusal;
using Orvo::ScanEnd;
using Orvo::XmlEncoding;

std::string times(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i)
    all += text;
  return all;
}

FileCheck check(const std::string& text) {
  return checkBytes(text, XmlEncoding::utf8);
}

int depthOf(const std::string& text) {
  return check(text).scan.depth;
}

TEST(CheckedFile, IsLeftAtItsStart) {
  const platform::File file = openText("<ink/>");
  ASSERT_EQ(std::fseek(file.get(), 3, SEEK_SET), 0);
  const FileCheck found = checkFile(file.get(), XmlEncoding::utf8);
  EXPECT_EQ(found.refusal, FileRefusal::none);
  EXPECT_EQ(found.size, 6);
  EXPECT_EQ(found.text, "<ink/>");
  EXPECT_EQ(std::fgetc(file.get()), '<');
}

TEST(CheckedFile, MayBeEmpty) {
  const FileCheck found = checkFile(openText("").get(), XmlEncoding::utf8);
  EXPECT_EQ(found.refusal, FileRefusal::none);
  EXPECT_EQ(found.size, 0);
}

#ifdef __linux__
TEST(CheckedFile, IsRefusedWhenItIsAFolder) {
  const pentest::TemporaryFolder folder;
  const platform::File file = platform::openFile(folder.path().wstring().c_str(), "rb");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(checkFile(file.get(), XmlEncoding::utf8).refusal, FileRefusal::unreadable);
}

TEST(CheckedFile, IsRefusedWhenItIsAPipe) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const platform::File in(fdopen(ends[0], "rb"));
  const platform::File out(fdopen(ends[1], "wb"));
  ASSERT_TRUE(in && out);
  EXPECT_EQ(checkFile(in.get(), XmlEncoding::utf8).refusal, FileRefusal::unreadable);
}
#endif

TEST(CheckedFile, IsRefusedWhenItHasTwoGibibytesOrMore) {
  const pentest::TemporaryFolder folder;
  const std::filesystem::path path = folder / "large.kvo";
  EXPECT_TRUE(std::ofstream(path, std::ios::binary));
  std::filesystem::resize_file(path, 0x80000000U);
  const platform::File file(std::fopen(path.string().c_str(), "rb"));
  const FileCheck found = checkFile(file.get(), XmlEncoding::utf8);
  EXPECT_EQ(found.refusal, FileRefusal::tooLarge);
  EXPECT_EQ(found.size, 0x80000000);
}

TEST(CheckedFile, IsRefusedWhenItsLastThreeBytesHoldAnUnfinishedCharacter) {
  for (const char* end : {"\xC3", "\xE2", "\xE2\x82", "\xF0", "\xF0\x9F", "\xF0\x9F\x96", "\xDF",
                          "\xF4\x80", "\xE2\n", "\xE2\x82\n", "\xF0\n\n", "\xC2 "}) {
    EXPECT_EQ(check("<ink/>" + std::string(end)).refusal, FileRefusal::cutCharacter);
  }
}

TEST(CheckedFile, IsRefusedWhenLineEndsHideAnUnfinishedCharacter) {
  // The library turns the two bytes of each line end into one.
  for (const char* end : {"\xE2\r\n", "\xF0\x41\r\n", "\xF0\r\n\r\n", "\xF0\x9F\r\n"}) {
    EXPECT_EQ(check("<ink>" + std::string(end)).refusal, FileRefusal::cutCharacter);
  }
}

TEST(CheckedFile, MayEndInAWholeCharacterOrInStrayBytes) {
  for (const char* end : {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x96\x8B", "\x80\xBF", "\xC1",
                          "\xF5", "\xFF", "\xC3\xA9>"}) {
    EXPECT_EQ(check("<ink/>" + std::string(end)).refusal, FileRefusal::none);
  }
}

TEST(CheckedFile, MayNestFiveHundredDeep) {
  EXPECT_EQ(check(times(500, "<a>")).refusal, FileRefusal::none);
  EXPECT_EQ(check(times(499, "<a>") + "<a/>" + times(499, "</a>")).refusal, FileRefusal::none);
  EXPECT_EQ(check(times(501, "<a>")).refusal, FileRefusal::tooDeep);
  EXPECT_EQ(check(times(500, "<a>") + "<a/>").refusal, FileRefusal::tooDeep);
  EXPECT_EQ(check(times(2000, "<a></a><b/>")).refusal, FileRefusal::none);
}

TEST(CheckedFile, KeepsLineEndsAfterANulAsTheLibraryDoes) {
  EXPECT_EQ(check(std::string("a\0b\r\n", 5)).text, std::string("a\0b\r\n", 5));
  EXPECT_EQ(check(std::string("a\r\n\0b\r\n", 7)).text.substr(0, 2), "a\n");
  // A lead byte swallows the NUL, and the library reads on after it.
  EXPECT_EQ(check(std::string("<a>\xE2\0'", 6) + times(600, "\xE2\r\n<a>")).refusal,
            FileRefusal::tooDeep);
}

std::string attributes(int count) {
  return times(count, " b=''");
}

TEST(CheckedFile, MayHaveTenThousandAttributesOnEachElement) {
  EXPECT_EQ(check("<a" + attributes(10'000) + "/>").refusal, FileRefusal::none);
  EXPECT_EQ(check("<a" + attributes(10'000) + "><b" + attributes(10'000) + "/></a>").refusal,
            FileRefusal::none);
  for (const char* end : {"/>", "></a>", " / >", ""}) {
    const std::string text = "<ink>\n<c" + attributes(10'000) + "/>\n\n<a" + attributes(10'001);
    const FileCheck found = check(text + end);
    EXPECT_EQ(found.refusal, FileRefusal::tooManyAttributes) << end;
    EXPECT_EQ(found.scan.offset, text.find("<a")) << end;
    EXPECT_EQ(found.line(), 4) << end;
  }
}

TEST(CheckedFile, MayRepeatTheAttributesOfADeclaration) {
  // The library does not compare these with each other.
  const std::string declaration = "<?xml" + times(10'001, " version='1.0'") + "?>";
  EXPECT_EQ(check(declaration + "<ink/>").refusal, FileRefusal::none);
}

TEST(CheckedFile, GivesTheLineOfTheElementThatIsTooDeep) {
  const FileCheck found = check(times(600, "<a>\r\n"));
  EXPECT_EQ(found.refusal, FileRefusal::tooDeep);
  EXPECT_EQ(found.line(), 501);
}

TEST(Depth, CountsElementsOnly) {
  EXPECT_EQ(depthOf("<a><\x7F></\x7F></a>"), 2);
  EXPECT_EQ(depthOf("<a><b/><c><d/></c></a>"), 3);
  EXPECT_EQ(depthOf("<a><!--<b><c>--><![CDATA[<b>]]><?b <c>?><!b><d/></a>"), 2);
  EXPECT_EQ(depthOf("<a x='<b>' y=\"<c>\"></a>"), 1);
  EXPECT_EQ(depthOf("text"), 0);
}

// Each of these hides a closing tag: to the library, the element is still open after it.
TEST(Depth, IsNotReducedByWhatOnlyLooksLikeAClosingTag) {
  for (const std::string hidden :
       {"<!--</a>-->", "<![CDATA[</a>]]>", "<b x='</a>'/>", "<b x=\"</a>\"/>", "<?b </a>",
        "\xF0</a>", "\xE2</a>", "\xC3</a>", "&#x</a>x41;", "&#</a>#65;", "<b x='\xC3'</a>'/>",
        "<?xml version='</a>'?>", "<?XML standalone=\"></a>\"?>"}) {
    EXPECT_EQ(depthOf(times(3, "<a>" + hidden)), hidden.find("<b") == 0 ? 4 : 3) << hidden;
    EXPECT_EQ(check(times(501, "<a>" + hidden)).refusal, FileRefusal::tooDeep) << hidden;
  }
}

TEST(Depth, DependsOnTheDeclaredEncodingWhenThatIsUsed) {
  const auto declaredDepth = [](const std::string& text) {
    return checkBytes(text, XmlEncoding::declared).scan.depth;
  };
  const std::string hidden = times(3, "<a>\xF0</a>");
  EXPECT_EQ(declaredDepth(hidden), 1);
  EXPECT_EQ(declaredDepth("<?xml version='1.0'?>" + hidden), 3);
  EXPECT_EQ(declaredDepth("<?xml encoding='utf-8'?>" + hidden), 3);
  EXPECT_EQ(declaredDepth("<?xml encoding='UTF8'?>" + hidden), 3);
  EXPECT_EQ(declaredDepth("<?xml encoding='Utf-8'?>" + hidden), 3);
  EXPECT_EQ(declaredDepth("<?xml encoding='uTf8'?>" + hidden), 3);
  EXPECT_EQ(declaredDepth("<?xml encoding='UTF_8'?>" + hidden), 1);
  EXPECT_EQ(declaredDepth("<?xml encoding=latin1 ?>" + hidden), 1);
  EXPECT_EQ(declaredDepth("\xEF\xBB\xBF" + hidden), 3);
}

// The check of a text that the library loads without an error, though perhaps only in part.
FileCheck quietEnd(const std::string& text) {
  TiXmlDocument xml;
  EXPECT_TRUE(inktest::load(text, xml)) << text;
  return check(text);
}

TEST(QuietEnd, IsAtTextAfterTheRoot) {
  const FileCheck found = quietEnd("<ink/>\njunk<ink/>");
  EXPECT_EQ(found.scan.end, ScanEnd::text);
  EXPECT_EQ(found.scan.offset, 7U);
  EXPECT_EQ(found.line(), 2);
  EXPECT_TRUE(found.scan.afterElement);
  EXPECT_FALSE(found.scan.afterDocumentType);
}

TEST(QuietEnd, IsInsideADocumentTypeWithDeclarations) {
  const FileCheck found = quietEnd("<!DOCTYPE ink [ <!ENTITY e \"v\"> ]><ink/>");
  EXPECT_EQ(found.scan.end, ScanEnd::text);
  EXPECT_TRUE(found.scan.afterDocumentType);
  EXPECT_FALSE(found.scan.afterElement);
}

TEST(QuietEnd, IsInsideAnInstructionWithAClosingSign) {
  const FileCheck found = quietEnd("<?pi a > b ?><ink/>");
  EXPECT_EQ(found.scan.end, ScanEnd::text);
  EXPECT_TRUE(found.scan.afterInstruction);
}

TEST(QuietEnd, IsAtANulAfterTheRoot) {
  const FileCheck found = quietEnd(std::string("<ink/>\n\0<ink/>", 14));
  EXPECT_EQ(found.scan.end, ScanEnd::nul);
  EXPECT_EQ(found.line(), 2);
}

TEST(QuietEnd, IsAtADeclarationThatCannotBeRead) {
  EXPECT_EQ(quietEnd("<?xml version ?><ink/>").scan.end, ScanEnd::declaration);
  EXPECT_EQ(quietEnd("<?xml version='1.0' <ink/").scan.end, ScanEnd::declaration);
}

TEST(QuietEnd, DoesNotExistInADeclarationThatSwallowsTheRoot) {
  const FileCheck found = quietEnd("<?xml version='1.0' <ink/>\n");
  EXPECT_EQ(found.scan.end, ScanEnd::wholeFile);
  EXPECT_EQ(found.scan.depth, 0);
}

TEST(QuietEnd, DoesNotExistInAWholeFile) {
  for (const char* text :
       {"<ink/>", " <?xml version='1.0' ?>\n<!DOCTYPE ink>\n<ink>a</ink>\n<!--c-->", "<ink/><ink/>",
        "<ink/>\xEF\xBB\xBF\n", "<!-- never ends"}) {
    EXPECT_EQ(quietEnd(text).scan.end, ScanEnd::wholeFile) << text;
  }
}

int depthOfTree(const TiXmlNode& node) {
  int deepest = 0;
  for (const TiXmlElement* child = node.FirstChildElement(); child;
       child = child->NextSiblingElement()) {
    deepest = std::max(deepest, 1 + depthOfTree(*child));
  }
  return deepest;
}

std::string markupSoup(std::mt19937& random) {
  static const std::vector<std::string> parts = {"<a>",
                                                 "</a>",
                                                 "<b x='1'>",
                                                 "</b>",
                                                 "<a/>",
                                                 "<b y=2/>",
                                                 "text",
                                                 " ",
                                                 "\n",
                                                 "\r",
                                                 "\r\n",
                                                 "\xE2\r\n",
                                                 std::string("\xE2\0", 2),
                                                 "<!--",
                                                 "-->",
                                                 "<![CDATA[",
                                                 "]]>",
                                                 "<?pi",
                                                 "?>",
                                                 "<?xml",
                                                 " version='1'",
                                                 " encoding=\"x\"",
                                                 "<!D",
                                                 ">",
                                                 "\xF0",
                                                 "\xE2",
                                                 "\xC3",
                                                 "\xA9",
                                                 "\xEF\xBB\xBF",
                                                 "&",
                                                 "&#x",
                                                 "41;",
                                                 "x;",
                                                 "&#",
                                                 "#65;",
                                                 "'",
                                                 "\"",
                                                 "<b z='",
                                                 "'>",
                                                 "=",
                                                 "/",
                                                 "<",
                                                 std::string(1, '\0')};
  std::string soup = random() % 2 == 0 ? "<a>" : "";
  for (auto count = random() % 60; count > 0; --count)
    soup += parts[random() % parts.size()];
  if (random() % 2 == 0) soup += "</a>";
  return soup;
}

// Whatever the library makes of a text, the scan must not find it less deep; and where the scan
// sees broken markup, the library must have reported an error.
void expectScanFollows(const std::string& text, const FileCheck& found, bool loaded,
                       const TiXmlDocument& xml) {
  if (found.scan.end == ScanEnd::failure) {
    ASSERT_FALSE(loaded) << text;
  }
  const int depth = depthOfTree(xml);
  ASSERT_LE(depth, found.scan.depth) << text;
  if (loaded) {
    ASSERT_EQ(depth, found.scan.depth) << text;
  }
}

TEST(Scan, FollowsTheLibraryThroughAnyMarkup) {
  std::mt19937 random(4);
  int loads = 0;
  for (int i = 0; i < 60'000; ++i) {
    const std::string soup = markupSoup(random);
    const FileCheck found = check(soup);
    if (found.refusal != FileRefusal::none) continue;
    TiXmlDocument xml;
    const bool loaded = inktest::load(soup, xml);
    loads += loaded ? 1 : 0;
    expectScanFollows(soup, found, loaded, xml);
    ASSERT_FALSE(HasFatalFailure());
  }
  // Some of the texts must load, and some must not.
  EXPECT_GT(loads, 3000);
  EXPECT_LT(loads, 50'000);
}

TEST(Scan, FollowsTheLibraryInTheDeclaredEncoding) {
  const pentest::TemporaryFolder folder;
  const std::string path = (folder / "soup.kvo").string();
  std::mt19937 random(5);
  for (int i = 0; i < 20'000; ++i) {
    const std::string soup = markupSoup(random);
    const FileCheck found = checkBytes(soup, XmlEncoding::declared);
    if (found.refusal != FileRefusal::none) continue;
    const platform::File file = openText(soup);
    TiXmlDocument xml;
    const bool loaded = xml.LoadFile(file.get(), TIXML_ENCODING_UNKNOWN);
    expectScanFollows(soup, found, loaded, xml);
    ASSERT_FALSE(HasFatalFailure());
  }
}

TEST(Scan, TakesLinearTime) {
  // A careless search for any of these takes quadratic time.
  for (const std::string part : {"<!--c-->", "&#65;", "<?pi ?>", "<![CDATA[]]>", "<b x='1'/>"}) {
    const std::string text = "<a>" + times(400'000, part) + "</a>";
    EXPECT_EQ(check(text).scan.end, ScanEnd::wholeFile) << part;
  }
}

}  // namespace
