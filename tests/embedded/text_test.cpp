#include "embedded/text.h"

#include <gtest/gtest.h>

#include "embedded/handles.h"

namespace {

using namespace embedded;

TEST(Text, DecodesUtf8OfEveryLength) {
  EXPECT_EQ(decodeUtf8("A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x96\x8A"), U"A\u00E9\u20AC\U0001F58A");
  EXPECT_EQ(decodeUtf8("\xF4\x8F\xBF\xBF"), std::u32string(1, 0x10FFFF));
  EXPECT_EQ(decodeUtf8(""), U"");
}

TEST(Text, RefusesWhatIsNotUtf8) {
  for (const char* bytes :
       {"\x80", "\xC0\xAF", "\xC3", "\xC3(", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF0\x80\x80\xAF",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "a\xE2\x82"}) {
    EXPECT_EQ(decodeUtf8(bytes), std::nullopt) << bytes;
  }
}

TEST(Text, JoinsSurrogatePairs) {
  EXPECT_EQ(decodeUtf16(u"a\xD83D\xDD8Az"), U"a\U0001F58Az");
  EXPECT_EQ(encodeUtf16(U"a\U0001F58Az"), u"a\xD83D\xDD8Az");
}

TEST(Text, KeepsLoneSurrogatesThatStandForBytesAndRefusesOthers) {
  EXPECT_EQ(decodeUtf16(u"a\xDC80\xDCFF"), (std::u32string{U'a', 0xDC80, 0xDCFF}));
  EXPECT_EQ(decodeUtf16(u"\xD800"), std::nullopt);
  EXPECT_EQ(decodeUtf16(u"\xD800z"), std::nullopt);
  EXPECT_EQ(decodeUtf16(u"\xDC00"), std::nullopt);
  EXPECT_EQ(decodeUtf16(u"\xDD00"), std::nullopt);
}

TEST(Text, EncodesWhatIsNotACharacterAsTheReplacementCharacter) {
  EXPECT_EQ(encodeUtf8(std::u32string{U'a', 0xD800, 0x110000, 0x20AC}),
            "a\xEF\xBF\xBD\xEF\xBF\xBD\xE2\x82\xAC");
}

TEST(Handles, AreNamedByKindAndNumber) {
  EXPECT_EQ(handleName(toHandle<void*>(HandleKind::path, 3)), "path:3");
  EXPECT_EQ(handleName(toHandle<void*>(HandleKind::plugin, 1)), "plugin:1");
  EXPECT_EQ(handleName(toHandle<void*>(HandleKind::layer, 70000)), "layer:70000");
}

TEST(Handles, CanBeToldFromNullAndFromAddresses) {
  const int thing = 0;
  EXPECT_EQ(handleName(nullptr), "");
  EXPECT_EQ(handleName(&thing), "");
  EXPECT_EQ(numberOf(toHandle<void*>(HandleKind::path, 3), HandleKind::group), 0U);
  EXPECT_EQ(numberOf(toHandle<void*>(HandleKind::path, 3), HandleKind::path), 3U);
}

#ifndef _WIN32

TEST(Text, CarriesBytesOfFileNamesThatAreNotUtf8AsLoneSurrogates) {
  EXPECT_EQ(fromNativePath("/a\xFF\xC3\xA9"), (std::u32string{U'/', U'a', 0xDCFF, 0xE9}));
  EXPECT_EQ(toNativePath(std::u32string{U'/', U'a', 0xDCFF, 0xE9}), "/a\xFF\xC3\xA9");
}

#endif

}  // namespace
