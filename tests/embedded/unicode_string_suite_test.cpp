#include <deque>
#include <gmock/gmock.h>

#include "embedded/host.h"
#include "hostapi/codes.h"
#include "tests/support/host/host_with_faults.h"
#include "tests/support/host/suites.h"

namespace {

using namespace hostapi;
using testing::ElementsAre;
using testing::IsEmpty;

class UnicodeStringSuite : public testing::Test {
 protected:
  ~UnicodeStringSuite() override {
    for (UnicodeStringBody& body : made_)
      if (body.inside != nullptr) suite->Destroy(&body);
    EXPECT_EQ(host.liveStrings(), 0U);
  }

  UnicodeStringBody& make(std::string_view utf8) {
    UnicodeStringBody& body = made_.emplace_back();
    EXPECT_EQ(suite->Initialize(&body, utf8.data(), static_cast<std::int64_t>(utf8.size()),
                                kAIUTF8CharacterEncoding),
              0);
    return body;
  }

  UnicodeStringBody& empty() { return made_.emplace_back(); }

  std::u32string text(const UnicodeStringBody& body) { return test::characters(host, body); }

  std::int32_t compare(const UnicodeStringBody& a, const UnicodeStringBody& b) {
    return suite->Compare(&a, 0, kNpos, &b, 0, kNpos);
  }

  embedded::Host host;
  const AIUnicodeStringSuite* suite = test::acquire<AIUnicodeStringSuite>(host);

 private:
  std::deque<UnicodeStringBody> made_;
};

TEST_F(UnicodeStringSuite, MakesStringsOfUtf8) {
  EXPECT_EQ(text(make("p\xC3\xA9n\xF0\x9F\x96\x8A")), U"p\u00E9n\U0001F58A");
  EXPECT_EQ(host.liveStrings(), 1U);
}

TEST_F(UnicodeStringSuite, ReadsNoMoreBytesThanItIsGiven) {
  UnicodeStringBody& body = empty();
  EXPECT_EQ(suite->Initialize(&body, "pnxyz", 3, kAIPlatformCharacterEncoding), 0);
  EXPECT_EQ(text(body), U"pnx");
}

#ifndef _WIN32
TEST_F(UnicodeStringSuite, ThePlatformEncodingIsUtf8) {
  UnicodeStringBody& body = empty();
  EXPECT_EQ(suite->Initialize(&body, "\xC3\xA9", 2, kAIPlatformCharacterEncoding), 0);
  EXPECT_EQ(text(body), U"\u00E9");
}
#endif

TEST_F(UnicodeStringSuite, RefusesMalformedText) {
  UnicodeStringBody& body = empty();
  EXPECT_EQ(suite->Initialize(&body, "a\xFFz", 3, kAIUTF8CharacterEncoding), fourCC("US!F"));
  EXPECT_EQ(suite->InitializeUTF16(&body, u"a\xD800z", 3), fourCC("US!F"));
  EXPECT_EQ(suite->Initialize(&body, "abc", 3, kAIUTF16CharacterEncoding), fourCC("US!F"));
  EXPECT_EQ(suite->InitializeUTF32Char(&body, 1, 0x110000), fourCC("US!F"));
  EXPECT_EQ(body.inside, nullptr);
  EXPECT_THAT(host.misuse(), IsEmpty());
}

TEST_F(UnicodeStringSuite, RefusesANegativeLength) {
  UnicodeStringBody& body = empty();
  EXPECT_EQ(suite->Initialize(&body, "abc", -1, kAIUTF8CharacterEncoding), fourCC("US#L"));
  EXPECT_EQ(body.inside, nullptr);
}

TEST_F(UnicodeStringSuite, ReportsAnEncodingThatIsNotSupported) {
  UnicodeStringBody& body = empty();
  EXPECT_EQ(suite->Initialize(&body, "abc", 3, kAIRomanCharacterEncoding), fourCC("PARM"));
  EXPECT_EQ(host.misuse().size(), 1U);
}

TEST_F(UnicodeStringSuite, JoinsUtf16UnitsToCodePoints) {
  UnicodeStringBody& counted = empty();
  EXPECT_EQ(suite->InitializeUTF16(&counted, u"\xD83D\xDD8Azz", 3), 0);
  EXPECT_EQ(text(counted), U"\U0001F58Az");
  UnicodeStringBody& terminated = empty();
  EXPECT_EQ(suite->InitializeUTF16(&terminated, u"pen", kNpos), 0);
  EXPECT_EQ(text(terminated), U"pen");
  UnicodeStringBody& bytes = empty();
  EXPECT_EQ(suite->Initialize(&bytes, reinterpret_cast<const char*>(u"pen"), 6,
                              kAIUTF16CharacterEncoding),
            0);
  EXPECT_EQ(text(bytes), U"pen");
}

TEST_F(UnicodeStringSuite, RepeatsACharacter) {
  UnicodeStringBody& body = empty();
  EXPECT_EQ(suite->InitializeUTF32Char(&body, 3, 0x1F58A), 0);
  EXPECT_EQ(text(body), U"\U0001F58A\U0001F58A\U0001F58A");
  EXPECT_EQ(suite->InitializeUTF32Char(&empty(), kNpos, 'a'), fourCC("US#L"));
}

TEST_F(UnicodeStringSuite, EndsOnlyPastTheLastCharacter) {
  UnicodeStringBody& body = make("ab");
  UTF32TextChar character = 0;
  EXPECT_EQ(suite->GetChar(&body, 1, &character), 0);
  EXPECT_EQ(character, U'b');
  EXPECT_EQ(suite->GetChar(&body, 2, &character), fourCC("US!I"));
  EXPECT_EQ(suite->GetChar(&body, kNpos, &character), fourCC("US!I"));
  EXPECT_EQ(suite->GetChar(&empty(), 0, &character), fourCC("US!I"));
  EXPECT_EQ(character, U'b');
}

TEST_F(UnicodeStringSuite, AppendsStringsAndPartsOfThem) {
  UnicodeStringBody& body = make("ab");
  UnicodeStringBody& more = make("cdef");
  EXPECT_EQ(suite->Append(&body, &more), 0);
  EXPECT_EQ(text(body), U"abcdef");
  EXPECT_EQ(suite->AppendSubString(&body, &more, 1, 2), 0);
  EXPECT_EQ(text(body), U"abcdefde");
  EXPECT_EQ(suite->AppendSubString(&body, &more, 3, kNpos), 0);
  EXPECT_EQ(text(body), U"abcdefdef");
  EXPECT_EQ(suite->AppendSubString(&body, &more, 4, 1), 0);
  EXPECT_EQ(suite->AppendSubString(&body, &more, 5, 1), fourCC("US!I"));
  EXPECT_EQ(text(body), U"abcdefdef");
}

TEST_F(UnicodeStringSuite, AppendsAStringToItselfAndToOneNeverInitialised) {
  UnicodeStringBody& body = make("ab");
  EXPECT_EQ(suite->Append(&body, &body), 0);
  EXPECT_EQ(text(body), U"abab");
  UnicodeStringBody& fresh = empty();
  EXPECT_EQ(suite->Append(&fresh, &body), 0);
  EXPECT_EQ(text(fresh), U"abab");
}

TEST_F(UnicodeStringSuite, CopiesAndAssigns) {
  UnicodeStringBody& source = make("pen");
  UnicodeStringBody& copy = empty();
  EXPECT_EQ(suite->Copy(&copy, &source), 0);
  EXPECT_NE(copy.inside, source.inside);
  suite->Append(&copy, &source);
  EXPECT_EQ(text(source), U"pen");
  EXPECT_EQ(suite->Assign(&source, &copy), 0);
  EXPECT_EQ(text(source), U"penpen");
  UnicodeStringBody& none = empty();
  UnicodeStringBody& alsoNone = empty();
  EXPECT_EQ(suite->Copy(&alsoNone, &none), 0);
  EXPECT_EQ(alsoNone.inside, nullptr);
  EXPECT_EQ(suite->Assign(&source, &none), 0);
  EXPECT_EQ(text(source), U"");
}

TEST_F(UnicodeStringSuite, ClearsWithoutDestroying) {
  UnicodeStringBody& body = make("pen");
  suite->Clear(&body);
  EXPECT_EQ(text(body), U"");
  EXPECT_EQ(host.liveStrings(), 1U);
}

TEST_F(UnicodeStringSuite, ComparesWholeStringsExactly) {
  EXPECT_EQ(compare(make("pnx"), make("pnx")), 0);
  EXPECT_LT(compare(make("PNX"), make("pnx")), 0);
  EXPECT_GT(compare(make("pnxy"), make("pnx")), 0);
  EXPECT_LT(compare(make("pn"), make("pnx")), 0);
  EXPECT_LT(compare(make("\xEF\xBF\xBD"), make("\xF0\x9F\x96\x8A")), 0)
      << "by code points: in UTF-16 units the first would be greater";
}

TEST_F(UnicodeStringSuite, ComparesParts) {
  UnicodeStringBody& a = make("xxpen");
  UnicodeStringBody& b = make("penyy");
  EXPECT_EQ(suite->Compare(&a, 2, kNpos, &b, 0, 3), 0);
  EXPECT_NE(suite->Compare(&a, 2, 2, &b, 0, 3), 0);
  EXPECT_EQ(suite->Compare(&a, 9, 2, &b, 9, 3), 0) << "past the end there is nothing";
}

TEST_F(UnicodeStringSuite, AStringNeverInitialisedEqualsAnEmptyOneAndIsLessThanAnyOther) {
  EXPECT_EQ(compare(empty(), make("")), 0);
  EXPECT_EQ(compare(make(""), empty()), 0);
  EXPECT_EQ(compare(empty(), empty()), 0);
  EXPECT_LT(compare(empty(), make("a")), 0);
  EXPECT_GT(compare(make("a"), empty()), 0);
}

TEST_F(UnicodeStringSuite, ReportsTheUseOfADestroyedString) {
  UnicodeStringBody& body = make("pen");
  UnicodeStringBody copyOfBody = body;
  ASSERT_EQ(suite->Destroy(&body), 0);
  EXPECT_EQ(body.inside, nullptr);
  UTF32TextChar character = 0;
  EXPECT_EQ(suite->GetChar(&copyOfBody, 0, &character), fourCC("PARM"));
  EXPECT_EQ(suite->Destroy(&copyOfBody), fourCC("PARM"));
  EXPECT_THAT(host.misuse(),
              ElementsAre("plug-in misbehaving: \"AI Unicode String Suite\" GetChar: "
                          "a destroyed string is used",
                          "plug-in misbehaving: \"AI Unicode String Suite\" Destroy: "
                          "a destroyed string is used"));
}

TEST_F(UnicodeStringSuite, ReportsWhatIsNotAString) {
  int something = 0;
  UnicodeStringBody body{&something};
  EXPECT_EQ(suite->Append(&body, &body), fourCC("PARM"));
  EXPECT_EQ(suite->Initialize(&body, "a", 1, kAIUTF8CharacterEncoding), fourCC("PARM"));
  EXPECT_EQ(suite->Compare(&body, 0, 1, &body, 0, 1), fourCC("PARM"));
  EXPECT_THAT(host.misuse(),
              testing::Each(testing::HasSubstr("this is not a string of this host")));
  EXPECT_GE(host.misuse().size(), 3U);
}

TEST_F(UnicodeStringSuite, ReportsNullPointers) {
  UTF32TextChar character = 0;
  EXPECT_EQ(suite->Initialize(nullptr, "a", 1, kAIUTF8CharacterEncoding), fourCC("PARM"));
  EXPECT_EQ(suite->Initialize(&empty(), nullptr, 1, kAIUTF8CharacterEncoding), fourCC("PARM"));
  EXPECT_EQ(suite->GetChar(nullptr, 0, &character), fourCC("PARM"));
  EXPECT_EQ(suite->GetChar(&make("a"), 0, nullptr), fourCC("PARM"));
  suite->Clear(nullptr);
  EXPECT_EQ(host.misuse().size(), 5U);
}

TEST_F(UnicodeStringSuite, HasLengthAndUnitsInTheSlotsOfThe38SlotTable) {
  const auto* slots = reinterpret_cast<const ReservedSlot*>(suite);
  UnicodeStringBody& body = make("p\xF0\x9F\x96\x8A");
  EXPECT_EQ(reinterpret_cast<UnicodeStringLength>(slots[16])(&body), 2U);
  const ASUnicode* units = nullptr;
  ASSERT_EQ(reinterpret_cast<UnicodeStringUTF16>(slots[34])(&body, &units), 3U);
  EXPECT_EQ(std::u16string(units, 3), u"p\xD83D\xDD8A");
  EXPECT_EQ(reinterpret_cast<UnicodeStringUTF16>(slots[34])(&empty(), &units), 0U);
  EXPECT_EQ(units, nullptr);
}

TEST(UnicodeStringLayouts, The36SlotTableHasThemTwoSlotsEarlier) {
  const embedded::Host host(
      test::HostWithFaults().withUnicodeStringLayout(embedded::UnicodeStringLayout::slots36));
  const auto* slots =
      reinterpret_cast<const ReservedSlot*>(test::acquire<AIUnicodeStringSuite>(host));
  test::HostText text(host, "pen");
  EXPECT_EQ(reinterpret_cast<UnicodeStringLength>(slots[14])(text.body()), 3U);
  const ASUnicode* units = nullptr;
  EXPECT_EQ(reinterpret_cast<UnicodeStringUTF16>(slots[32])(text.body(), &units), 3U);
  EXPECT_EQ(std::u16string(units, 3), u"pen");
  EXPECT_THAT(host.misuse(), IsEmpty());
  EXPECT_EQ(reinterpret_cast<AIErr (*)()>(slots[34])(), fourCC("!IMP"));
}

}  // namespace
