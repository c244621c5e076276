#include "text/base64.h"

#include <gtest/gtest.h>

namespace {

// The examples of RFC 4648, section 10.
TEST(Base64, EncodesTheExamplesOfItsStandard) {
  EXPECT_EQ(text::base64(""), "");
  EXPECT_EQ(text::base64("f"), "Zg==");
  EXPECT_EQ(text::base64("fo"), "Zm8=");
  EXPECT_EQ(text::base64("foo"), "Zm9v");
  EXPECT_EQ(text::base64("foob"), "Zm9vYg==");
  EXPECT_EQ(text::base64("fooba"), "Zm9vYmE=");
  EXPECT_EQ(text::base64("foobar"), "Zm9vYmFy");
}

TEST(Base64, TakesBytesOfEveryValue) {
  EXPECT_EQ(text::base64(std::string_view("\0\xFB\xFF", 3)), "APv/");
  EXPECT_EQ(text::base64("\xFB\xEF\xBE"), "++++");
}

}  // namespace
