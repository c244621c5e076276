#include "inkml/ink_elements.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <tinyxml.h>
#include <vector>

#include "inkml/spellings.h"
#include "inkml/xml_helpers.h"

namespace Orvo {
namespace {

using Kind = InkProblemKind;
using Problem = std::optional<Kind>;

// The properties that a brush takes from its "annotationXML".
constexpr std::array<std::string_view, 8> kBrushProperties{
    "color",       "width",      "height",         "transparency",
    "antialiased", "fittocurve", "ignorePressure", "pentip"};

std::string attributeOf(const TiXmlElement& element, const char* name) {
  const char* value = findAttribute(&element, name);
  return value == nullptr ? "" : value;
}

bool hasText(const TiXmlElement& element) {
  const TiXmlNode* text = element.FirstChild();
  return text != nullptr && text->ToText() != nullptr;
}

std::uint64_t countPoints(const TiXmlElement& trace) {
  std::vector<std::string_view> tokens;
  splitString(trace.FirstChild()->Value(), ",", tokens);
  return tokens.size();
}

class Lister {
 public:
  Lister(const InkMLDefinitions& read, const VisitInkElement& visit)
      : contextsRead_(read.contexts.size()), visit_(visit) {}

  void listDocument(const TiXmlDocument& xml) {
    const TiXmlNode* root = findChild(xml, "ink");
    bool isBehindRoot = false;
    eachChild(xml, [&](const TiXmlElement& element) {
      if (&element == root) {
        isBehindRoot = true;
        return listInk(element);
      }
      skip(element, isBehindRoot ? Problem(Kind::furtherRoots) : std::nullopt);
    });
  }

 private:
  template <class Visit>
  static void eachChild(const TiXmlNode& parent, Visit visit) {
    for (const TiXmlElement* child = parent.FirstChildElement(); child != nullptr;
         child = child->NextSiblingElement()) {
      visit(*child);
    }
  }

  void show(const TiXmlElement& element, bool isRead, Problem problem = {},
            std::optional<std::uint64_t> points = {}) {
    visit_({.line = element.Row(),
            .depth = depth_,
            .name = element.ValueStr(),
            .id = attributeOf(element, "id"),
            .type = attributeOf(element, "type"),
            .isRead = isRead,
            .problem = problem,
            .points = points});
  }

  template <class Visit>
  void listChildren(const TiXmlElement& parent, Visit visit) {
    ++depth_;
    eachChild(parent, visit);
    --depth_;
  }

  // Neither the element nor any inside it is read.
  void skip(const TiXmlElement& element, Problem problem = {}) {
    show(element, false, problem);
    listChildren(element, [this](const TiXmlElement& child) { skip(child); });
  }

  // The element is read where there is no problem; nothing inside it is.
  void listLeaf(const TiXmlElement& element, Problem problem) {
    if (problem) return skip(element, problem);
    show(element, true);
    listChildren(element, [this](const TiXmlElement& child) { skip(child); });
  }

  void listInk(const TiXmlElement& ink) {
    show(ink, true);
    const TiXmlNode* definitions = findChild(ink, "definitions");
    listChildren(ink, [&](const TiXmlElement& child) {
      const std::string& name = child.ValueStr();
      if (&child == definitions) return listDefinitions(child);
      if (name == "definitions") return skip(child, Kind::furtherDefinitions);
      if (name == "tracegroup") return listGroup(child);
      if (name == "annotation") return listAnnotation(child);
      if (hasMeaning(child, "tracegroup")) return skip(child, Kind::otherGroups);
      if (hasMeaning(child, "trace")) return skip(child, Kind::looseTraces);
      skip(child);
    });
  }

  void listDefinitions(const TiXmlElement& definitions) {
    show(definitions, true);
    std::size_t contexts = 0;
    listChildren(definitions, [&](const TiXmlElement& child) {
      const std::string& name = child.ValueStr();
      const bool hasId = findAttribute(&child, "id") != nullptr;
      if (name == "traceFormat") {
        return listLeaf(child, hasId ? std::nullopt : Problem(Kind::skippedFormats));
      }
      if (name == "brush") return listBrush(child, hasId);
      if (name != "context") return skip(child);
      // The first one that fails is the last one that is looked at.
      const bool isRead = contexts++ < contextsRead_;
      listLeaf(child, isRead ? std::nullopt
                             : Problem(hasId ? Kind::contextBrushMissing : Kind::contextWithoutId));
    });
  }

  void listBrush(const TiXmlElement& brush, bool hasId) {
    const TiXmlNode* properties = findChild(brush, "annotationXML");
    if (!hasId || properties == nullptr) return skip(brush, Kind::skippedBrushes);
    show(brush, true);
    listChildren(brush, [&](const TiXmlElement& child) {
      if (&child != properties) return skip(child);
      show(child, true);
      listProperties(child);
    });
  }

  void listProperties(const TiXmlElement& properties) {
    std::set<std::string> seen;
    listChildren(properties, [&](const TiXmlElement& child) {
      const bool isProperty =
          std::ranges::find(kBrushProperties, child.ValueStr()) != kBrushProperties.end();
      if (!isProperty || !seen.insert(child.ValueStr()).second) return skip(child);
      listLeaf(child, {});
    });
  }

  void listAnnotation(const TiXmlElement& annotation) {
    const bool isRead = hasText(annotation) && findAttribute(&annotation, "type") != nullptr;
    listLeaf(annotation, isRead ? std::nullopt : Problem(Kind::skippedAnnotations));
  }

  void listGroup(const TiXmlElement& group) {
    if (!attributeOf(group, "id").starts_with("layer")) {
      show(group, true, Kind::groupsWithoutLayerId);
      return listChildren(group, [this](const TiXmlElement& child) { skip(child); });
    }
    show(group, true);
    listChildren(group, [this](const TiXmlElement& child) {
      const std::string& name = child.ValueStr();
      if (name == "trace") return listTrace(child);
      if (name == "annotation") return listAnnotation(child);
      if (hasMeaning(child, "tracegroup")) return skip(child, Kind::nestedGroups);
      if (hasMeaning(child, "trace")) return skip(child, Kind::otherTraces);
      skip(child);
    });
  }

  void listTrace(const TiXmlElement& trace) {
    if (trace.FirstChild() == nullptr) return skip(trace, Kind::tracesWithoutText);
    if (findAttribute(&trace, "contextRef") == nullptr) {
      return skip(trace, Kind::tracesWithoutContext);
    }
    show(trace, true, {}, countPoints(trace));
    listChildren(trace, [this](const TiXmlElement& child) {
      skip(child, hasMeaning(child, "trace") ? Problem(Kind::tracesInTraces) : std::nullopt);
    });
  }

  const std::size_t contextsRead_;
  const VisitInkElement& visit_;
  int depth_ = 0;
};

}  // namespace

void visitElements(const TiXmlDocument& xml, const InkMLDefinitions& read,
                   const VisitInkElement& visit) {
  Lister(read, visit).listDocument(xml);
}

}  // namespace Orvo
