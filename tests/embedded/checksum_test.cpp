#include "embedded/checksum.h"

#include <gtest/gtest.h>
#include <string>

namespace {

// One bit at a time, straight from the polynomial.
std::uint32_t bitByBit(const std::string& bytes) {
  std::uint32_t remainder = 0xFFFFFFFF;
  for (const char byte : bytes) {
    remainder ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) {
      const bool odd = (remainder & 1U) != 0;
      remainder >>= 1U;
      if (odd) remainder ^= 0xEDB88320U;
    }
  }
  return ~remainder;
}

TEST(Checksum, OfTheNineDigitsIsTheKnownOne) {
  EXPECT_EQ(embedded::crc32("123456789", 9), 0xCBF43926U);
}

TEST(Checksum, OfNothingIsZero) {
  EXPECT_EQ(embedded::crc32(nullptr, 0), 0U);
}

TEST(Checksum, IsTheSameAsReckonedBitByBitAtEveryLength) {
  std::string bytes;
  for (int length = 0; length < 70; ++length) {
    EXPECT_EQ(embedded::crc32(bytes.data(), bytes.size()), bitByBit(bytes)) << length;
    bytes += static_cast<char>(length * 37 + 200);
  }
}

}  // namespace
