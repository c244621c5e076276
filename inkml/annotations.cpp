#include "inkml/annotations.h"

#include <tinyxml.h>

#include "inkml/xml_helpers.h"

namespace Orvo {

void writeAnnotations(const Annotations& annotations, TiXmlNode& parent) {
  for (const auto& [type, text] : annotations) {
    appendTextElement(parent, "annotation", text).SetAttribute("type", type);
  }
}

bool readAnnotation(const TiXmlElement& element, Annotations& annotations) {
  const char* type = findAttribute(&element, "type");
  const TiXmlNode* text = element.FirstChild();
  if (type == nullptr || text == nullptr || text->ToText() == nullptr) return false;
  annotations[type] = text->Value();
  return true;
}

}  // namespace Orvo
