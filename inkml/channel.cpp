#include "inkml/channel.h"

#include <tinyxml.h>

#include "inkml/xml_helpers.h"

namespace Orvo {

Channel::Channel(const char* channelName, const char* unit, std::int32_t least, std::int32_t most)
    : Channel() {
  name.value = channelName;
  min.value = least;
  max.value = most;
  units.value = unit;
}

bool Channel::write(TiXmlNode& parent) const {
  TiXmlElement& element = appendOwnElement(*this, parent);
  element.SetAttribute("name", name.value);
  element.SetAttribute("min", std::to_string(min.value));
  element.SetAttribute("max", std::to_string(max.value));
  element.SetAttribute("units", units.value);
  return true;
}

bool Channel::read(const TiXmlNode* element) {
  const char* nameText = findAttribute(element, "name");
  if (nameText == nullptr) return false;
  name.value = nameText;

  const char* typeText = findAttribute(element, "type");
  if (typeText == nullptr) return false;
  for (std::size_t i = 0; i < kTypeNames.size(); ++i) {
    if (typeText == kTypeNames[i]) type.value = static_cast<Type>(i);
  }

  const char* minText = findAttribute(element, "min");
  if (minText == nullptr) return false;
  min.value = toInteger(minText);

  const char* maxText = findAttribute(element, "max");
  if (maxText == nullptr) return false;
  max.value = toInteger(maxText);

  const char* unitsText = findAttribute(element, "units");
  if (unitsText == nullptr) return false;
  units.value = unitsText;
  return true;
}

}  // namespace Orvo
