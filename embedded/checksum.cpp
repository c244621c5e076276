#include "embedded/checksum.h"

#include <array>

namespace embedded {

namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320;  // 0x04C11DB7, bits reversed
constexpr std::size_t kLanes = 8;                  // bytes taken at a time

using Tables = std::array<std::array<std::uint32_t, 256>, kLanes>;

// tables[k][b]: what byte b does to the remainder when k more bytes follow it.
constexpr Tables makeTables() {
  Tables tables{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t remainder = byte;
    for (int bit = 0; bit < 8; ++bit)
      remainder = remainder >> 1U ^ ((remainder & 1U) != 0 ? kPolynomial : 0U);
    tables[0][byte] = remainder;
  }
  for (std::size_t lane = 1; lane < kLanes; ++lane) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const std::uint32_t before = tables[lane - 1][byte];
      tables[lane][byte] = before >> 8U ^ tables[0][before & 0xFFU];
    }
  }
  return tables;
}

constexpr Tables kTables = makeTables();

std::uint32_t littleEndian(const unsigned char* bytes) {
  return std::uint32_t{bytes[0]} | std::uint32_t{bytes[1]} << 8U | std::uint32_t{bytes[2]} << 16U |
         std::uint32_t{bytes[3]} << 24U;
}

}  // namespace

std::uint32_t crc32(const void* data, std::size_t size) {
  const auto* bytes = static_cast<const unsigned char*>(data);
  std::uint32_t remainder = 0xFFFFFFFF;
  for (; size >= kLanes; size -= kLanes, bytes += kLanes) {
    const std::uint32_t first = remainder ^ littleEndian(bytes);
    const std::uint32_t second = littleEndian(bytes + 4);
    remainder = kTables[7][first & 0xFFU] ^ kTables[6][first >> 8U & 0xFFU] ^
                kTables[5][first >> 16U & 0xFFU] ^ kTables[4][first >> 24U] ^
                kTables[3][second & 0xFFU] ^ kTables[2][second >> 8U & 0xFFU] ^
                kTables[1][second >> 16U & 0xFFU] ^ kTables[0][second >> 24U];
  }
  for (; size > 0; --size, ++bytes)
    remainder = remainder >> 8U ^ kTables[0][(remainder ^ *bytes) & 0xFFU];
  return ~remainder;
}

}  // namespace embedded
