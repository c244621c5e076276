#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <tinyxml.h>

#include "inkml/xml_serializable.h"

namespace Orvo {

/// Hands `child` to the tree as the last child of `parent`; gives it as it stands there.
template <typename Node>
Node& linkChild(TiXmlNode& parent, std::unique_ptr<Node> child) {
  return *static_cast<Node*>(parent.LinkEndChild(child.release()));
}

/// Appends an empty element named after the object.
TiXmlElement& appendOwnElement(const IXmlSerializable& object, TiXmlNode& parent);

/// Appends an element whose only child is a text node, also for an empty text.
TiXmlElement& appendTextElement(TiXmlNode& parent, const std::string& name,
                                const std::string& text);

/// The value of the attribute of exactly this name, up to its first NUL; null when there is none or
/// the node is no element.
const char* findAttribute(const TiXmlNode* node, const char* name);

/// The first child of any kind whose value is exactly `value`; null when there is none.
const TiXmlNode* findChild(const TiXmlNode& parent, std::string_view value);

/// The string of the path "//" + name + "[1]/text()" from `node`, see `selectString`.
std::string childText(const TiXmlNode* node, const std::string& name);

/// Appends to `out` (a container of strings or of views into `text`) every maximal run of
/// characters of which `separates` does not hold, in order. There are no empty runs.
template <typename Separates, typename List>
void splitWhere(std::string_view text, Separates separates, List& out) {
  auto start = std::find_if_not(text.begin(), text.end(), separates);
  while (start != text.end()) {
    const auto end = std::find_if(start, text.end(), separates);
    out.emplace_back(start, end);
    start = std::find_if_not(end, text.end(), separates);
  }
}

/// The same for the characters among `separators`.
template <typename List>
void splitString(std::string_view text, std::string_view separators, List& out) {
  if (separators.size() == 1) {
    const char separator = separators.front();
    splitWhere(
        text, [separator](char c) { return c == separator; }, out);
  } else {
    splitWhere(
        text, [separators](char c) { return separators.find(c) != separators.npos; }, out);
  }
}

/// The value as a signed 32-bit integer: 4294967295 gives "-1".
std::string toDecimalString(std::uint32_t value);

/// The whole number at the start of `text` after white space, 0 when there is none. A number beyond
/// 32 bits keeps its low 32 bits, one beyond 64 bits those of the nearest 64-bit integer; so an
/// unsigned time that was written reads back.
std::int32_t toInteger(std::string_view text);

}  // namespace Orvo
