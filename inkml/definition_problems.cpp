#include "inkml/definition_problems.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <tinyxml.h>
#include <utility>

#include "inkml/spellings.h"
#include "inkml/xml_helpers.h"
#include "inkml/xpath.h"

namespace Orvo {
namespace {

using Kind = InkProblemKind;

void examineProperties(const TiXmlNode& properties, ProblemList& problems) {
  for (const TiXmlElement* property = properties.FirstChildElement(); property;
       property = property->NextSiblingElement()) {
    const TiXmlNode* text = property->FirstChild();
    if (text != nullptr && text->ToText() != nullptr) problems.addNul(*text);
  }
}

void examineBrush(const TiXmlElement& brush, ProblemList& problems) {
  const char* id = findAttribute(&brush, "id");
  const TiXmlNode* properties = findChild(brush, "annotationXML");
  if (id == nullptr || properties == nullptr) {
    problems.add(Kind::skippedBrushes, brush.Row(), id == nullptr ? "" : id);
  } else if (properties->ToElement() == nullptr) {
    problems.add(Kind::noElementAsBrushProperties, properties->Row());
  } else {
    examineProperties(*properties, problems);
  }
}

template <class T>
bool hasId(const std::list<T>& list, const char* reference) {
  const std::string_view id = reference == nullptr ? "" : reference + 1;
  return std::any_of(list.begin(), list.end(), [&](const T& item) { return item.id == id; });
}

// The first context that fails ends the reading of the definitions.
void examineContexts(const TiXmlNode& definitions, const InkMLDefinitions& read,
                     ProblemList& problems) {
  const auto contexts = childElements(&definitions, "context");
  const std::size_t good = read.contexts.size();
  if (good >= contexts.size()) return;
  const TiXmlElement& failed = *contexts[good];
  const char* brush = findAttribute(&failed, "brushRef");
  const char* format = findAttribute(&failed, "traceFormatRef");
  const auto add = [&](Kind kind, std::string_view detail) {
    problems.add(kind, failed.Row(), detail, contexts.size() - good);
  };
  if (findAttribute(&failed, "id") == nullptr) return add(Kind::contextWithoutId, "");
  if (brush != nullptr && *brush != '#') return add(Kind::contextReferenceForm, brush);
  if (format != nullptr && *format != '#') return add(Kind::contextReferenceForm, format);
  if (!hasId(read.brushes, brush)) {
    return add(Kind::contextBrushMissing, brush == nullptr ? "" : brush + 1);
  }
  add(Kind::contextFormatMissing, format == nullptr ? "" : format + 1);
}

// The channels that one trace format declares, in order.
class DeclaredChannels {
 public:
  void add(std::string_view name) {
    list_.append(list_.empty() ? "" : " ").append(name);
    const std::string meaning = meaningOf(name);
    areThoseOfPoints_ = areThoseOfPoints_ && count_ < kOfPoints.size() &&
                        (meaning == kOfPoints[count_].first || meaning == kOfPoints[count_].second);
    ++count_;
  }

  // A format without channels declares nothing.
  bool differFromPoints() const {
    return count_ > 0 && !(areThoseOfPoints_ && count_ == kOfPoints.size());
  }

  const std::string& list() const { return list_; }

 private:
  // The tilt has two names in use.
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kOfPoints{
      {{"x", "x"}, {"y", "y"}, {"z", "z"}, {"f", "f"}, {"otx", "tx"}, {"oty", "ty"}, {"t", "t"}}};

  std::size_t count_ = 0;
  bool areThoseOfPoints_ = true;
  std::string list_;
};

void examineUnits(const TiXmlElement& channel, std::string_view channelName,
                  ProblemList& problems) {
  const std::string name = meaningOf(channelName);
  const char* units = findAttribute(&channel, "units");
  const bool isCoordinate = name == "x" || name == "y" || name == "z";
  if (isCoordinate && units != nullptr && std::string_view(units) != "0.1mm") {
    problems.add(Kind::otherUnits, channel.Row(), units);
  }
}

void examineFormat(const TiXmlElement& format, ProblemList& problems) {
  DeclaredChannels channels;
  visitEach(format, "channel", [&](const TiXmlElement& channel) {
    const char* attribute = findAttribute(&channel, "name");
    const std::string_view name = attribute == nullptr ? "?" : attribute;
    channels.add(name);
    examineUnits(channel, name, problems);
  });
  if (channels.differFromPoints()) {
    problems.add(Kind::otherChannels, format.Row(), channels.list());
  }
}

}  // namespace

void examineDefinitions(const TiXmlNode& ink, const InkMLDefinitions& read, ProblemList& problems) {
  const TiXmlNode* definitions = findChild(ink, "definitions");
  if (definitions == nullptr) return;
  if (definitions->ToElement() == nullptr) {
    problems.add(Kind::noElementAsDefinitions, definitions->Row());
  }
  for (const TiXmlElement* next = definitions->NextSiblingElement("definitions"); next;
       next = next->NextSiblingElement("definitions")) {
    problems.add(Kind::furtherDefinitions, next->Row());
  }
  for (const TiXmlElement* format : childElements(definitions, "traceFormat")) {
    if (findAttribute(format, "id") == nullptr) problems.add(Kind::skippedFormats, format->Row());
  }
  for (const TiXmlElement* brush : childElements(definitions, "brush"))
    examineBrush(*brush, problems);
  examineContexts(*definitions, read, problems);
}

void examineFormats(const TiXmlNode& ink, ProblemList& problems) {
  visitEach(ink, "traceformat",
            [&](const TiXmlElement& format) { examineFormat(format, problems); });
}

}  // namespace Orvo
