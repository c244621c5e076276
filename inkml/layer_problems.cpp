#include "inkml/layer_problems.h"

#include <string>
#include <string_view>
#include <tinyxml.h>

#include "inkml/point_problems.h"
#include "inkml/spellings.h"
#include "inkml/xml_helpers.h"

namespace Orvo {
namespace {

using Kind = InkProblemKind;

class LayerExaminer {
 public:
  explicit LayerExaminer(ProblemList& problems) : problems_(problems), points_(problems) {}

  bool hasReadTraces() const { return hasReadTraces_; }

  void examineChildOfRoot(const TiXmlElement& child) {
    const std::string& name = child.ValueStr();
    if (name == "tracegroup") return examineGroup(child);
    if (name == "annotation") return examineAnnotation(child);
    if (hasMeaning(child, "tracegroup")) return problems_.addGroup(Kind::otherGroups, child, name);
    if (hasMeaning(child, "trace")) return problems_.add(Kind::looseTraces, child.Row());
    examineWrapper(child);
  }

 private:
  void examineGroup(const TiXmlElement& group) {
    const char* id = findAttribute(&group, "id");
    if (id == nullptr || !std::string_view(id).starts_with("layer")) {
      return problems_.addGroup(Kind::groupsWithoutLayerId, group, id == nullptr ? "" : id);
    }
    for (const TiXmlElement* child = group.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
      examineChildOfGroup(*child);
    }
  }

  void examineChildOfGroup(const TiXmlElement& child) {
    const std::string& name = child.ValueStr();
    if (name == "trace") return examineTrace(child);
    if (name == "annotation") return examineAnnotation(child);
    if (hasMeaning(child, "tracegroup")) return problems_.addGroup(Kind::nestedGroups, child);
    if (hasMeaning(child, "trace")) return problems_.add(Kind::otherTraces, child.Row(), name);
    examineWrapper(child);
  }

  // An element in which no traces are looked for.
  void examineWrapper(const TiXmlElement& element) {
    const std::uint64_t traces = countTraces(element);
    if (traces == 0) return;
    problems_.add(Kind::wrappedTraces, element.Row(), element.ValueStr(), traces);
  }

  void examineTrace(const TiXmlElement& trace) {
    const std::uint64_t inside = countTraces(trace);
    if (inside > 0) problems_.add(Kind::tracesInTraces, trace.Row(), {}, inside);
    const TiXmlNode* text = trace.FirstChild();
    if (text == nullptr) return problems_.add(Kind::tracesWithoutText, trace.Row());
    if (findAttribute(&trace, "contextRef") == nullptr) {
      return problems_.add(Kind::tracesWithoutContext, trace.Row());
    }
    hasReadTraces_ = true;
    const char* type = findAttribute(&trace, "type");
    if (type != nullptr && meaningOf(type) == "penup") {
      problems_.add(Kind::penUpTraces, trace.Row());
    }
    if (text->ToText() == nullptr) return problems_.add(Kind::tracesOfNoText, text->Row());
    examineText(*text);
    points_.examine(text->Value(), trace.Row());
  }

  void examineAnnotation(const TiXmlElement& annotation) {
    const TiXmlNode* text = annotation.FirstChild();
    if (text == nullptr || text->ToText() == nullptr ||
        findAttribute(&annotation, "type") == nullptr) {
      return problems_.add(Kind::skippedAnnotations, annotation.Row());
    }
    examineText(*text);
  }

  void examineText(const TiXmlNode& text) {
    problems_.addNul(text);
    for (const TiXmlNode* next = text.NextSibling(); next; next = next->NextSibling()) {
      if (next->ToText() != nullptr) return problems_.add(Kind::dividedTexts, next->Row());
    }
  }

  ProblemList& problems_;
  PointExaminer points_;
  bool hasReadTraces_ = false;
};

}  // namespace

bool examineLayers(const TiXmlNode& ink, ProblemList& problems) {
  LayerExaminer examiner(problems);
  for (const TiXmlElement* child = ink.FirstChildElement(); child;
       child = child->NextSiblingElement()) {
    examiner.examineChildOfRoot(*child);
  }
  return examiner.hasReadTraces();
}

}  // namespace Orvo
