#include "inkml/xpath.h"

#include <tinyxml.h>

namespace Orvo {
namespace {

bool isNamed(const TiXmlElement& element, std::string_view name) {
  return element.ValueStr() == name;
}

std::vector<const TiXmlElement*> childrenNamed(const TiXmlNode& parent, std::string_view name) {
  std::vector<const TiXmlElement*> found;
  for (const TiXmlElement* child = parent.FirstChildElement(); child;
       child = child->NextSiblingElement()) {
    if (isNamed(*child, name)) found.push_back(child);
  }
  return found;
}

const TiXmlElement* firstChildNamed(const TiXmlNode& parent, std::string_view name) {
  const TiXmlElement* child = parent.FirstChildElement();
  while (child != nullptr && !isNamed(*child, name))
    child = child->NextSiblingElement();
  return child;
}

// The element after `node` in document order, as long as it is below `top`.
const TiXmlNode* nextBelow(const TiXmlNode& top, const TiXmlNode* node) {
  if (const TiXmlElement* child = node->FirstChildElement()) return child;
  for (; node != &top; node = node->Parent()) {
    if (const TiXmlElement* sibling = node->NextSiblingElement()) return sibling;
  }
  return nullptr;
}

// The first text node directly in the first child element of this name; null when there is none.
const TiXmlText* textOfFirstChild(const TiXmlNode& parent, std::string_view name) {
  const TiXmlElement* element = firstChildNamed(parent, name);
  if (element == nullptr) return nullptr;
  for (const TiXmlNode* child = element->FirstChild(); child; child = child->NextSibling()) {
    if (const TiXmlText* text = child->ToText()) return text;
  }
  return nullptr;
}

}  // namespace

std::vector<const TiXmlElement*> childElements(const TiXmlNode* source, std::string_view name) {
  if (source == nullptr || source->Parent() == nullptr) return {};
  const TiXmlElement* element = source->ToElement();
  if (element == nullptr) return {};
  return childrenNamed(*element, name);
}

std::vector<const TiXmlElement*> siblingElements(const TiXmlNode* source, std::string_view name) {
  if (source == nullptr || source->Parent() == nullptr) return {};
  return childrenNamed(*source->Parent(), name);
}

std::string childText(const TiXmlNode* source, std::string_view name) {
  if (source == nullptr || source->Parent() == nullptr) return {};
  const TiXmlText* text = textOfFirstChild(*source->Parent(), name);
  for (const TiXmlNode* node = source; text == nullptr && node; node = nextBelow(*source, node))
    text = textOfFirstChild(*node, name);
  return text == nullptr ? "" : text->Value();
}

}  // namespace Orvo
