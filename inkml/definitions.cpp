#include "inkml/definitions.h"

#include <optional>
#include <string_view>
#include <unordered_map>

#include "inkml/xml_helpers.h"
#include "inkml/xpath.h"

namespace Orvo {
namespace {

// The first element of each id. A search through the list for every context would take a day where
// a file has a hundred thousand of both.
template <typename T>
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
  std::unordered_map<std::string_view, T*> first_;
};

// The id in a reference "#id"; empty for no reference, nothing for one of another form.
std::optional<std::string_view> referredId(const TiXmlElement& element, const char* attribute) {
  const char* reference = findAttribute(&element, attribute);
  if (reference == nullptr) return "";
  if (*reference != '#') return std::nullopt;
  return reference + 1;
}

void writeContext(const InkContext& context, TiXmlElement& parent) {
  TiXmlElement& element = linkChild(parent, std::make_unique<TiXmlElement>("context"));
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
  // The channels that a format reads and drops are those beside it, the same ones for all: they are
  // read with the first format only, or many formats would read them again and again.
  bool first = true;
  for (const TiXmlElement* selected : selectElements(element, "traceFormat")) {
    TraceFormat format;
    const bool good = first ? format.read(selected) : format.readId(selected);
    first = false;
    if (good) traceFormats.push_back(format);
  }
}

void InkMLDefinitions::readBrushes(const TiXmlNode* element) {
  for (const TiXmlElement* selected : selectElements(element, "brush")) {
    Brush brush;
    if (brush.read(selected)) brushes.push_back(brush);
  }
}

bool InkMLDefinitions::readContexts(const TiXmlNode* element) {
  const ById<Brush> brushOf(brushes);
  const ById<TraceFormat> formatOf(traceFormats);
  for (const TiXmlElement* selected : selectElements(element, "context")) {
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
