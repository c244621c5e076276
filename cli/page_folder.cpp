#include "cli/page_folder.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <system_error>

#include "cli/outputs.h"
#include "cli/report.h"
#include "platform/folders.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEnding = ".html";
constexpr std::size_t kDigits = 16;
constexpr std::size_t kMostLetters = 60;
constexpr std::chrono::hours kKept{7 * 24};

bool isPlain(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9');
}

// 64 bits by the function FNV-1a, as hexadecimal digits.
std::string numberOf(std::string_view text) {
  std::uint64_t number = 0xCBF29CE484222325U;
  for (const char character : text) {
    number ^= static_cast<unsigned char>(character);
    number *= 0x100000001B3U;
  }
  std::string digits(kDigits, '0');
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, number >>= 4U)
    *digit = "0123456789abcdef"[number & 15U];
  return digits;
}

void removeOldPages(const fs::path& folder) {
  const fs::file_time_type oldest = fs::file_time_type::clock::now() - kKept;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::error_code unknown;
    if (!isPageName(nativeName(entry->path().filename()))) continue;
    if (entry->symlink_status(unknown).type() != fs::file_type::regular) continue;
    const fs::file_time_type made = entry->last_write_time(unknown);
    if (!unknown && made < oldest) fs::remove(entry->path(), unknown);
  }
}

}  // namespace

PageFolder preparePageFolder() {
  const std::optional<fs::path> folder = platform::cacheFolder();
  if (!folder) {
    return {{}, "there is no folder for the page: the system knows no home folder; use open -o"};
  }
  if (const std::error_code error = platform::makePrivateFolder(*folder)) {
    return {{},
            "the folder for the page, " + nativeName(*folder) +
                ", cannot be made: " + error.message() + "; use open -o"};
  }
  // One that was there may be open to others.
  std::error_code notOurs;
  fs::permissions(*folder, fs::perms::owner_all, notOurs);
  removeOldPages(*folder);
  return {*folder, {}};
}

std::string pageName(const fs::path& recording) {
  std::string name;
  for (const char character : nativeName(recording.stem())) {
    if (isPlain(character)) {
      name += character;
    } else if (!name.empty() && name.back() != '-') {
      name += '-';
    }
    if (name.size() == kMostLetters) break;
  }
  if (name.empty()) name = "drawing";
  if (name.back() != '-') name += '-';
  return name + numberOf(nativeName(canonicalName(recording))) + std::string(kEnding);
}

bool isPageName(const std::string& name) {
  if (name.size() < kEnding.size() + kDigits + 2 || !name.ends_with(kEnding)) return false;
  const std::string_view start = std::string_view(name).substr(0, name.size() - kEnding.size());
  const std::string_view digits = start.substr(start.size() - kDigits);
  return digits.find_first_not_of("0123456789abcdef") == std::string_view::npos &&
         start[start.size() - kDigits - 1] == '-' && isPlain(start.front()) &&
         std::ranges::all_of(start, [](char one) { return isPlain(one) || one == '-'; });
}

}  // namespace cli
