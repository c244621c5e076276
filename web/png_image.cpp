#include "web/png_image.h"

#include <cstdint>

namespace web {

namespace {

constexpr std::string_view kSignature("\x89PNG\r\n\x1A\n", 8);
constexpr std::size_t kHead = 8;      // of a chunk: its length and its type
constexpr std::size_t kChecksum = 4;  // behind it
constexpr std::size_t kHeaderData = 13;

unsigned char byteAt(std::string_view bytes, std::size_t place) {
  return static_cast<unsigned char>(bytes[place]);
}

std::uint32_t numberAt(std::string_view bytes, std::size_t place) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i)
    number = number << 8U | byteAt(bytes, place + i);
  return number;
}

// Takes the header; false for a kind of picture that is not read.
bool takeHeader(std::string_view data, PngImage& image) {
  constexpr unsigned char kGrey = 0;
  constexpr unsigned char kColor = 2;
  if (data.size() != kHeaderData || byteAt(data, 8) != 8 || byteAt(data, 12) != 0) return false;
  const unsigned char type = byteAt(data, 9);
  if (type != kGrey && type != kColor) return false;
  image.width = static_cast<int>(numberAt(data, 0));
  image.height = static_cast<int>(numberAt(data, 4));
  image.channels = type == kGrey ? 1 : 3;
  return image.width > 0 && image.height > 0;
}

}  // namespace

std::optional<PngImage> readPng(std::string_view file) {
  if (!file.starts_with(kSignature)) return {};
  file.remove_prefix(kSignature.size());
  PngImage image;
  while (file.size() >= kHead + kChecksum) {
    const std::size_t length = numberAt(file, 0);
    if (file.size() - kHead - kChecksum < length) return {};
    const std::string_view type = file.substr(4, 4);
    const std::string_view data = file.substr(kHead, length);
    if (type == "IHDR" && !takeHeader(data, image)) return {};
    if (type == "IDAT") image.pixels += data;
    file.remove_prefix(kHead + length + kChecksum);
  }
  return image.channels == 0 || image.pixels.empty() ? std::nullopt : std::optional(image);
}

}  // namespace web
