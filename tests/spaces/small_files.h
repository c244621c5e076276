// Small files, and every damage of one place in them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/pen/text_file.h"

namespace spaces {

/// A file of at most 4 kB, and what it is called in messages.
struct SmallFile {
  std::string name;
  std::string bytes;
};

/// Files of a folder, evenly spread over it in the order of their names: those that have more than
/// a few bytes and at most 4 kB.
inline std::vector<SmallFile> spreadOver(const std::filesystem::path& folder, std::size_t count) {
  std::vector<SmallFile> all;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.file_size() <= 60 || entry.file_size() > 4096) continue;
    all.push_back({entry.path().filename().string(), pentest::readText(entry.path())});
  }
  std::ranges::sort(all, {}, &SmallFile::name);
  std::vector<SmallFile> some;
  for (std::size_t i = 0; i < count && !all.empty(); ++i)
    some.push_back(all[i * all.size() / count]);
  return some;
}

/// The first bytes of a file.
inline SmallFile headOf(const std::filesystem::path& path, std::size_t size) {
  return {"head of " + path.filename().string(), pentest::readText(path).substr(0, size)};
}

/// How many cases `eachDamage` has.
inline std::size_t damagesOf(std::string_view bytes) {
  constexpr std::size_t kValues = 12;
  return bytes.size() + kValues * bytes.size();
}

/// The values that a byte is set to: none, all bits, one more, one less, and each bit the other
/// way.
inline std::array<unsigned char, 12> otherValues(unsigned char byte) {
  std::array<unsigned char, 12> values{0, 0xFF, static_cast<unsigned char>(byte + 1),
                                       static_cast<unsigned char>(byte - 1)};
  for (unsigned bit = 0; bit < 8; ++bit)
    values[4 + bit] = static_cast<unsigned char>(byte ^ (1U << bit));
  return values;
}

/// Calls `visit(cut, place)` with the file cut before each of its bytes.
template <class Visit>
void eachCut(const std::string& bytes, Visit visit) {
  for (std::size_t length = 0; length < bytes.size(); ++length)
    visit(bytes.substr(0, length), "cut after " + std::to_string(length) + " bytes");
}

/// Calls `visit(changed, place)` with each byte of the file set to each other value. Some values
/// are the same, and some are the byte itself: those are visited too, and count.
template <class Visit>
void eachChange(const std::string& bytes, Visit visit) {
  std::string changed = bytes;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (const unsigned char value : otherValues(static_cast<unsigned char>(bytes[i]))) {
      changed[i] = static_cast<char>(value);
      visit(changed, "byte " + std::to_string(i) + " set to " + std::to_string(value));
    }
    changed[i] = bytes[i];
  }
}

}  // namespace spaces
