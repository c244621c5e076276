#include "cli/picture_words.h"

#include <charconv>
#include <cstdint>

namespace cli {

namespace {

std::optional<std::uint32_t> number(std::string_view text, int base) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole ? std::optional(value) : std::nullopt;
}

art::Color fromBytes(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
  return {red / 255.0, green / 255.0, blue / 255.0};
}

}  // namespace

std::optional<art::Color> parseColor(std::string_view word) {
  if (word == "white") return fromBytes(255, 255, 255);
  if (word == "black") return fromBytes(0, 0, 0);
  if (!word.starts_with('#')) return {};
  const std::optional<std::uint32_t> value = number(word.substr(1), 16);
  if (!value) return {};
  if (word.size() == 7) return fromBytes(*value >> 16, *value >> 8 & 0xFF, *value & 0xFF);
  if (word.size() != 4) return {};
  return fromBytes((*value >> 8) * 17, (*value >> 4 & 0xF) * 17, (*value & 0xF) * 17);
}

std::optional<render::PixelBox> parseSize(std::string_view word) {
  constexpr std::uint32_t kMost = 1'000'000;
  const std::size_t cross = word.find('x');
  const std::string_view width = word.substr(0, cross);
  const std::string_view height = cross == word.npos ? "" : word.substr(cross + 1);
  render::PixelBox box;
  for (const auto& [text, side] : {std::pair{width, &box.width}, std::pair{height, &box.height}}) {
    if (text.empty()) continue;
    const std::optional<std::uint32_t> value = number(text, 10);
    if (!value || *value == 0 || *value > kMost) return {};
    *side = static_cast<int>(*value);
  }
  return box.width == 0 && box.height == 0 ? std::nullopt : std::optional(box);
}

}  // namespace cli
