#include "text/base64.h"

#include <cstdint>

namespace text {

namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Up to three bytes as four characters; bytes that are missing count as 0.
void appendGroup(std::string& out, std::string_view bytes) {
  std::uint32_t group = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    group = group << 8U | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
  }
  for (const unsigned shift : {18U, 12U, 6U, 0U})
    out += kAlphabet[group >> shift & 63U];
}

}  // namespace

std::string base64(std::string_view bytes) {
  std::string out;
  out.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3)
    appendGroup(out, bytes.substr(i, 3));
  if (const std::size_t rest = bytes.size() % 3; rest != 0) {
    out.replace(out.size() - (3 - rest), 3 - rest, 3 - rest, '=');
  }
  return out;
}

}  // namespace text
