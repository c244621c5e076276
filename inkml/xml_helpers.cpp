#include "inkml/xml_helpers.h"

#include <charconv>
#include <limits>
#include <system_error>
#include <tinyxml.h>

#include "inkml/characters.h"

namespace Orvo {

TiXmlNode& linkNode(TiXmlNode& parent, std::unique_ptr<TiXmlNode> child) {
  return *parent.LinkEndChild(child.release());
}

TiXmlElement& appendElement(TiXmlNode& parent, const std::string& name) {
  return linkChild(parent, std::make_unique<TiXmlElement>(name));
}

TiXmlElement& appendOwnElement(const IXmlSerializable& object, TiXmlNode& parent) {
  return appendElement(parent, object.getName());
}

TiXmlElement& appendTextElement(TiXmlNode& parent, const std::string& name,
                                const std::string& text) {
  TiXmlElement& element = appendElement(parent, name);
  linkChild(element, std::make_unique<TiXmlText>(text));
  return element;
}

const char* findAttribute(const TiXmlNode* node, const char* name) {
  const TiXmlElement* element = node == nullptr ? nullptr : node->ToElement();
  return element == nullptr ? nullptr : element->Attribute(name);
}

const TiXmlNode* findChild(const TiXmlNode& parent, std::string_view value) {
  const TiXmlNode* child = parent.FirstChild();
  while (child != nullptr && child->Value() != value)
    child = child->NextSibling();
  return child;
}

std::string toDecimalString(std::uint32_t value) {
  return std::to_string(static_cast<std::int32_t>(value));
}

std::int32_t toInteger(std::string_view text) {
  const char* first = text.data();
  const char* last = first + text.size();
  while (first != last && isBlank(*first))
    ++first;
  if (first == last) return 0;
  const bool negative = *first == '-';
  if (*first == '+') {
    ++first;
    if (first == last || *first == '-') return 0;
  }
  std::int64_t value = 0;
  if (std::from_chars(first, last, value).ec == std::errc::result_out_of_range) {
    using Limits = std::numeric_limits<std::int64_t>;
    value = negative ? Limits::min() : Limits::max();
  }
  return static_cast<std::int32_t>(value);
}

}  // namespace Orvo
