#include "translate/other_kinds.h"

#include <array>
#include <utility>

namespace translate {
namespace {

using namespace std::string_view_literals;

constexpr std::array<std::pair<std::string_view, std::string_view>, 10> kBeginnings = {{
    {"PK\x03\x04"sv, "a ZIP archive"},
    {"\xD0\xCF\x11\xE0"sv, "a compound file, perhaps an encrypted one"},
    {"%PDF"sv, "a PDF document"},
    {"\x89PNG"sv, "a PNG picture"},
    {"\xFF\xD8\xFF"sv, "a JPEG picture"},
    {"SQLite format 3"sv, "a database"},
    {"Rar!"sv, "a RAR archive"},
    {"7z\xBC\xAF"sv, "a 7z archive"},
    {"-----BEGIN"sv, "an encrypted or signed text"},
    {"{"sv, "JSON or another text"},
}};

bool mayBeginXml(std::string_view bytes) {
  for (const std::string_view mark : {"\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "\xFE\xFF"sv}) {
    if (bytes.starts_with(mark)) return true;
  }
  const std::size_t first = bytes.find_first_not_of(" \t\r\n\0"sv);
  return first == std::string_view::npos || bytes[first] == '<';
}

bool isText(std::string_view bytes) {
  constexpr std::size_t kLooked = 1000;
  for (const char c : bytes.substr(0, kLooked)) {
    if (static_cast<unsigned char>(c) < ' ' && (c < '\t' || c > '\r')) return false;
  }
  return true;
}

}  // namespace

std::string_view otherKindOf(std::string_view bytes) {
  if (mayBeginXml(bytes)) return {};
  for (const auto& [beginning, kind] : kBeginnings) {
    if (bytes.starts_with(beginning)) return kind;
  }
  return isText(bytes) ? "a text without XML" : "a binary file";
}

}  // namespace translate
