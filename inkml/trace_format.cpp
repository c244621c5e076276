#include "inkml/trace_format.h"

#include <tinyxml.h>

#include "inkml/xml_helpers.h"
#include "inkml/xpath.h"

namespace Orvo {

bool TraceFormat::write(TiXmlNode& parent) const {
  TiXmlElement& element = appendOwnElement(*this, parent);
  element.SetAttribute("id", id);
  for (const Channel& channel : *this)
    channel.write(element);
  return true;
}

bool TraceFormat::read(const TiXmlNode* element) {
  if (!readId(element)) return false;
  for (const TiXmlElement* selected : siblingElements(element, "channel")) {
    Channel channel;
    channel.read(selected);
  }
  return true;
}

bool TraceFormat::readId(const TiXmlNode* element) {
  const char* text = findAttribute(element, "id");
  if (text == nullptr) return false;
  id = text;
  return true;
}

}  // namespace Orvo
