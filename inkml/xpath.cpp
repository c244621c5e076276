#include "inkml/xpath.h"

namespace Orvo {
namespace {

constexpr std::string_view textPrefix = "//";
constexpr std::string_view textSuffix = "[1]/text()";

// The name in "//name[1]/text()", empty for any other path.
std::string_view nameOfTextPath(std::string_view path) {
  if (!path.starts_with(textPrefix) || !path.ends_with(textSuffix)) return {};
  path.remove_prefix(textPrefix.size());
  path.remove_suffix(path.size() < textSuffix.size() ? path.size() : textSuffix.size());
  return path;
}

bool isNamed(const TiXmlElement& element, std::string_view name) {
  return element.ValueStr() == name;
}

const TiXmlElement* firstChildNamed(const TiXmlNode& parent, std::string_view name) {
  const TiXmlElement* child = parent.FirstChildElement();
  while (child != nullptr && !isNamed(*child, name))
    child = child->NextSiblingElement();
  return child;
}

// The element behind `node` in document order, as long as it is below `top`.
const TiXmlNode* nextBelow(const TiXmlNode& top, const TiXmlNode* node) {
  if (const TiXmlElement* child = node->FirstChildElement()) return child;
  for (; node != &top; node = node->Parent()) {
    if (const TiXmlElement* sibling = node->NextSiblingElement()) return sibling;
  }
  return nullptr;
}

// Calls `visit` with each text node directly in the first child element of `name`, until it gives
// false; then gives false.
template <typename Visit>
bool visitTexts(const TiXmlNode& parent, std::string_view name, Visit visit) {
  const TiXmlElement* element = firstChildNamed(parent, name);
  if (element == nullptr) return true;
  for (const TiXmlNode* child = element->FirstChild(); child; child = child->NextSibling()) {
    const TiXmlText* text = child->ToText();
    if (text != nullptr && !visit(*text)) return false;
  }
  return true;
}

template <typename Visit>
void visitSelectedTexts(const TiXmlNode* source, std::string_view path, Visit visit) {
  const std::string_view name = nameOfTextPath(path);
  if (name.empty() || source == nullptr || source->Parent() == nullptr) return;
  if (!visitTexts(*source->Parent(), name, visit)) return;
  for (const TiXmlNode* node = source; node; node = nextBelow(*source, node)) {
    if (!visitTexts(*node, name, visit)) return;
  }
}

}  // namespace

std::vector<const TiXmlElement*> selectElements(const TiXmlNode* source, std::string_view path) {
  if (source == nullptr || source->Parent() == nullptr) return {};
  const bool amongSiblings = path.starts_with('/');
  const TiXmlNode* parent = amongSiblings ? source->Parent() : source->ToElement();
  const std::string_view name = path.substr(amongSiblings ? 1 : 0);
  std::vector<const TiXmlElement*> selected;
  if (parent == nullptr) return selected;
  for (const TiXmlElement* child = parent->FirstChildElement(); child;
       child = child->NextSiblingElement()) {
    if (isNamed(*child, name)) selected.push_back(child);
  }
  return selected;
}

std::vector<const TiXmlText*> selectTexts(const TiXmlNode* source, std::string_view path) {
  std::vector<const TiXmlText*> selected;
  visitSelectedTexts(source, path, [&](const TiXmlText& text) {
    selected.push_back(&text);
    return true;
  });
  return selected;
}

std::string selectString(const TiXmlNode* source, std::string_view path) {
  std::string value;
  visitSelectedTexts(source, path, [&](const TiXmlText& text) {
    value = text.Value();
    return false;
  });
  return value;
}

}  // namespace Orvo
