// What all classes here need for reading and writing XML: nodes, attributes, lists, integers.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "inkml/xml_serializable.h"

class TiXmlElement;

namespace Orvo {

/// Makes the tree the owner of `child`, which becomes the last child of `parent`, and returns it.
/// The caller includes <tinyxml.h>.
TiXmlNode& linkNode(TiXmlNode& parent, std::unique_ptr<TiXmlNode> child);

/// The same, and the child keeps its type.
template <class Node>
Node& linkChild(TiXmlNode& parent, std::unique_ptr<Node> child) {
  return static_cast<Node&>(linkNode(parent, std::move(child)));
}

/// Appends an empty element.
TiXmlElement& appendElement(TiXmlNode& parent, const std::string& name);

/// Appends an empty element named after the object.
TiXmlElement& appendOwnElement(const IXmlSerializable& object, TiXmlNode& parent);

/// Appends an element whose only child is a text node, even for an empty text.
TiXmlElement& appendTextElement(TiXmlNode& parent, const std::string& name,
                                const std::string& text);

/// The value of the attribute with exactly this name, up to its first NUL; null when there is none
/// or the node is not an element.
const char* findAttribute(const TiXmlNode* node, const char* name);

/// The first child of any kind whose value is exactly `value`; null when there is none.
const TiXmlNode* findChild(const TiXmlNode& parent, std::string_view value);

/// Appends to `out` (a container of strings or of views into `text`), in order, each longest run of
/// characters for which `separates` is false. No run is empty.
template <class Separates, class List>
void splitWhere(std::string_view text, Separates separates, List& out) {
  auto start = std::find_if_not(text.begin(), text.end(), separates);
  while (start != text.end()) {
    const auto end = std::find_if(start, text.end(), separates);
    out.emplace_back(&*start, static_cast<std::size_t>(end - start));
    start = std::find_if_not(end, text.end(), separates);
  }
}

/// The same, where the characters in `separators` separate.
template <class List>
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

/// The value as a signed 32-bit integer in decimal: 4294967295 gives "-1".
std::string toDecimalString(std::uint32_t value);

/// The whole number at the start of `text`, after any white space; 0 when there is none. Of a
/// number beyond 32 bits the low 32 bits are kept, so an unsigned time that was written reads back;
/// a number beyond 64 bits counts as the nearest 64-bit integer.
std::int32_t toInteger(std::string_view text);

}  // namespace Orvo
