#include "inkml/definitions.h"

#include <map>
#include <optional>
#include <string_view>
#include <tinyxml.h>

#include "inkml/xml_helpers.h"
#include "inkml/xpath.h"

namespace Orvo {
namespace {

// The first element with each id. Searching the list for every context would take a day when a file
// has a hundred thousand of both, and so would a hash table whose ids were made to collide.
template <class T>
class ById {
 public:
  explicit ById(std::list<T>& list) {
    for (T& element : list)
      first_.emplace(element.id, &element);
  }

  T* find(std::string_view id) const {
    const auto found = first_.find(id);
    return found == first_.end() ? nullptr : found->second;
  }

 private:
  std::map<std::string_view, T*> first_;
};

// The id in a reference "#id"; empty without a reference, nothing for one in another form.
std::optional<std::string_view> referredId(const TiXmlElement& element, const char* attribute) {
  const char* reference = findAttribute(&element, attribute);
  if (reference == nullptr) return "";
  if (*reference != '#') return std::nullopt;
  return reference + 1;
}

void writeContext(const InkContext& context, TiXmlElement& parent) {
  TiXmlElement& element = appendElement(parent, "context");
  if (!context.id.empty()) element.SetAttribute("id", context.id);
  if (context.brush.value != nullptr) {
    element.SetAttribute("brushRef", "#" + context.brush.value->id);
  }
  if (context.traceFormat.value != nullptr) {
    element.SetAttribute("traceFormatRef", "#" + context.traceFormat.value->id);
  }
}

}  // namespace

bool InkMLDefinitions::write(TiXmlNode& parent) const {
  TiXmlElement& element = appendOwnElement(*this, parent);
  for (const TraceFormat& format : traceFormats)
    format.write(element);
  for (const Brush& brush : brushes)
    brush.write(element);
  for (const InkContext& context : contexts)
    writeContext(context, element);
  return true;
}

bool InkMLDefinitions::read(const TiXmlNode* element) {
  readTraceFormats(element);
  readBrushes(element);
  return readContexts(element);
}

void InkMLDefinitions::readTraceFormats(const TiXmlNode* element) {
  // The channels that a format reads and drops are those beside it, the same for all formats. They
  // are read with the first one only; otherwise reading many formats would take quadratic time.
  bool first = true;
  for (const TiXmlElement* selected : childElements(element, "traceFormat")) {
    TraceFormat format;
    const bool good = first ? format.read(selected) : format.readId(selected);
    first = false;
    if (good) traceFormats.push_back(format);
  }
}

void InkMLDefinitions::readBrushes(const TiXmlNode* element) {
  for (const TiXmlElement* selected : childElements(element, "brush")) {
    Brush brush;
    if (brush.read(selected)) brushes.push_back(brush);
  }
}

bool InkMLDefinitions::readContexts(const TiXmlNode* element) {
  const ById<Brush> brushOf(brushes);
  const ById<TraceFormat> formatOf(traceFormats);
  for (const TiXmlElement* selected : childElements(element, "context")) {
    const char* id = findAttribute(selected, "id");
    const auto brushId = referredId(*selected, "brushRef");
    const auto formatId = referredId(*selected, "traceFormatRef");
    if (id == nullptr || !brushId || !formatId) return false;
    Brush* brush = brushOf.find(*brushId);
    TraceFormat* format = formatOf.find(*formatId);
    if (brush == nullptr || format == nullptr) return false;
    contexts.push_back({format, brush, id});
  }
  return true;
}

}  // namespace Orvo
