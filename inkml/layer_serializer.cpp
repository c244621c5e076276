#include "inkml/layer_serializer.h"

#include <string_view>
#include <tinyxml.h>

#include "inkml/annotations.h"
#include "inkml/stroke_serializer.h"
#include "inkml/xml_helpers.h"
#include "inkml/xpath.h"

namespace Orvo {
namespace {

constexpr std::string_view kLayerPrefix = "layer";

}  // namespace

bool LayerSerializer::write(TiXmlNode& parent) const {
  TiXmlElement& element = appendOwnElement(*this, parent);
  element.SetAttribute("id", std::string(kLayerPrefix) + toDecimalString(index));
  writeAnnotations(layer->annotations(), element);
  StrokeSerializer serializer("trace", nullptr, "#default-context");
  for (Stroke& stroke : *layer) {
    serializer.stroke = &stroke;
    if (!serializer.write(element)) return false;
  }
  return true;
}

bool LayerSerializer::read(const TiXmlNode* element) {
  const char* text = findAttribute(element, "id");
  const std::string_view id = text == nullptr ? "" : text;
  if (!id.starts_with(kLayerPrefix)) return true;
  index = static_cast<std::uint32_t>(toInteger(id.substr(kLayerPrefix.size())));
  if (aborted) return false;
  return readTraces(element) && readAnnotations(element);
}

bool LayerSerializer::readTraces(const TiXmlNode* element) {
  for (const TiXmlElement* trace : childElements(element, "trace")) {
    if (aborted) return false;
    Stroke stroke;
    if (StrokeSerializer("trace", &stroke, "none").read(trace)) layer->append(stroke);
  }
  return true;
}

bool LayerSerializer::readAnnotations(const TiXmlNode* element) {
  for (const TiXmlElement* annotation : childElements(element, "annotation")) {
    if (aborted) return false;
    readAnnotation(*annotation, layer->annotations());
  }
  return true;
}

}  // namespace Orvo
