#include "inkml/file_text.h"

#include <algorithm>

#include "inkml/characters.h"
#include "inkml/spellings.h"

namespace Orvo {

std::string foreignEncoding(std::string_view text) {
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  if (!text.starts_with("<?xml") || std::all_of(text.begin(), text.end(), isAscii)) return {};
  const std::string_view declaration = text.substr(0, text.find('>'));
  constexpr std::string_view kAttribute = "encoding";
  const std::size_t attribute = declaration.find(kAttribute);
  if (attribute == declaration.npos) return {};
  const std::size_t start = declaration.find_first_of("'\"", attribute);
  if (start == declaration.npos) return {};
  const std::size_t end = declaration.find(declaration[start], start + 1);
  if (end == declaration.npos) return {};
  const std::string name(declaration.substr(start + 1, end - start - 1));
  const std::string meaning = meaningOf(name);
  return meaning == "utf-8" || meaning == "utf8" ? "" : name;
}

bool endsEarly(std::string_view text) {
  const std::size_t last = text.find_last_not_of(kBlanks);
  if (last == text.npos || text[last] != '>') return true;
  const std::size_t tag = text.rfind("</");
  if (tag == text.npos) return true;
  return meaningOf(text.substr(tag + 2, last - tag - 2)) != "ink";
}

}  // namespace Orvo
