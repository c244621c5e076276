#include "inkml/brush.h"

#include <string_view>
#include <tinyxml.h>

#include "inkml/xml_helpers.h"
#include "inkml/xpath.h"

namespace Orvo {
namespace {

const char* flagText(bool flag) {
  return flag ? "True" : "False";
}

std::uint32_t readNumber(const TiXmlNode* properties, std::string_view name) {
  return static_cast<std::uint32_t>(toInteger(childText(properties, name)));
}

bool readFlag(const TiXmlNode* properties, std::string_view name) {
  const std::string text = childText(properties, name);
  return text == "True" || text == "true";
}

}  // namespace

bool Brush::write(TiXmlNode& parent) const {
  TiXmlElement& element = appendOwnElement(*this, parent);
  element.SetAttribute("id", id);
  TiXmlElement& properties = appendElement(element, "annotationXML");
  appendTextElement(properties, "color", color.value);
  appendTextElement(properties, "width", toDecimalString(width.value));
  appendTextElement(properties, "height", toDecimalString(height.value));
  appendTextElement(properties, "transparency", toDecimalString(transparency.value));
  appendTextElement(properties, "antialiased", flagText(ignorePressure.value));
  appendTextElement(properties, "fittocurve", flagText(fittocurve.value));
  appendTextElement(properties, "ignorePressure", flagText(ignorePressure.value));
  appendTextElement(properties, "pentip", pentip.value);
  return true;
}

bool Brush::read(const TiXmlNode* element) {
  const char* idText = findAttribute(element, "id");
  if (idText == nullptr) return false;
  id = idText;

  const TiXmlNode* properties = findChild(*element, "annotationXML");
  if (properties == nullptr) return false;
  color.value = childText(properties, "color");
  width.value = readNumber(properties, "width");
  height.value = readNumber(properties, "height");
  transparency.value = readNumber(properties, "transparency");
  antialiased.value = readFlag(properties, "antialiased");
  fittocurve.value = readFlag(properties, "fittocurve");
  antialiased.value = readFlag(properties, "ignorePressure");
  pentip.value = childText(properties, "pentip");
  return true;
}

}  // namespace Orvo
