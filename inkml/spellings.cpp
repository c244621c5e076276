#include "inkml/spellings.h"

#include <tinyxml.h>

namespace Orvo {

std::string meaningOf(std::string_view name) {
  std::string meaning(name.substr(name.rfind(':') + 1));
  for (char& c : meaning) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return meaning;
}

bool hasMeaning(const TiXmlElement& element, std::string_view meaning) {
  return meaningOf(element.ValueStr()) == meaning;
}

void visitEach(const TiXmlNode& node, std::string_view meaning,
               const std::function<void(const TiXmlElement&)>& visit) {
  for (const TiXmlElement* child = node.FirstChildElement(); child != nullptr;
       child = child->NextSiblingElement()) {
    if (hasMeaning(*child, meaning)) visit(*child);
    visitEach(*child, meaning, visit);
  }
}

std::uint64_t countTraces(const TiXmlNode& node) {
  std::uint64_t count = 0;
  visitEach(node, "trace", [&](const TiXmlElement&) { ++count; });
  return count;
}

}  // namespace Orvo
