#include "inkml/ink_report.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "inkml/xml_helpers.h"
#include "inkml/xpath.h"

namespace Orvo {
namespace {

using Kind = InkProblemKind;

// "ink:traceGroup" is "tracegroup": what another program may have meant.
std::string meaningOf(std::string_view name) {
  std::string meaning(name.substr(name.rfind(':') + 1));
  for (char& c : meaning) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return meaning;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

enum class PieceForm { whole, cut, none };

// What becomes of a piece when it is read as a whole number.
PieceForm formOf(std::string_view piece) {
  const std::size_t start = piece.find_first_not_of(" \t\n\v\f\r");
  if (start == std::string_view::npos) return PieceForm::whole;
  piece.remove_prefix(start);
  if (piece.front() == '+' || piece.front() == '-') piece.remove_prefix(1);
  const auto end = std::find_if_not(piece.begin(), piece.end(), isDigit);
  if (end == piece.begin() && (end == piece.end() || *end != '.')) return PieceForm::none;
  const bool onlyBlanks = std::all_of(end, piece.end(), [](char c) {
    return std::string_view(" \t\n\v\f\r").find(c) != std::string_view::npos;
  });
  return onlyBlanks ? PieceForm::whole : PieceForm::cut;
}

class Finder {
 public:
  explicit Finder(const InkMLDefinitions& read) : read_(read) {}

  std::vector<InkProblem> result() const {
    std::vector<InkProblem> problems;
    for (const auto& [kind, problem] : problems_)
      problems.push_back(problem);
    return problems;
  }

  void examineEnd(const FileScan& scan, int line) {
    switch (scan.end) {
      case ScanEnd::text:
        add(scan.afterDocumentType  ? Kind::documentTypeSubset
            : scan.afterInstruction ? Kind::instructionWithEnd
                                    : Kind::textAfterRoot,
            line);
        break;
      case ScanEnd::nul:
        add(Kind::nulAfterRoot, line);
        break;
      case ScanEnd::declaration:
        add(Kind::brokenDeclaration, line);
        break;
      default:
        break;
    }
  }

  void examine(const TiXmlDocument& xml) {
    const TiXmlNode* ink = findChild(xml, "ink");
    if (ink == nullptr) return;
    if (ink->ToElement() == nullptr) add(Kind::noElementAsRoot, ink->Row());
    for (const TiXmlElement* next = ink->NextSiblingElement(); next;
         next = next->NextSiblingElement()) {
      add(Kind::furtherRoots, next->Row(), next->ValueStr());
    }
    examineDefinitions(*ink);
    for (const TiXmlElement* child = ink->FirstChildElement(); child;
         child = child->NextSiblingElement()) {
      examineChild(*child);
    }
  }

 private:
  void add(Kind kind, int line, std::string_view detail = {}, std::uint64_t count = 1) {
    const auto [entry, isNew] = problems_.try_emplace(kind, InkProblem{kind, 0, line, {}});
    if (isNew) entry->second.detail = detail;
    entry->second.count += count;
  }

  void examineDefinitions(const TiXmlNode& ink) {
    const TiXmlNode* definitions = findChild(ink, "definitions");
    if (definitions == nullptr) return;
    if (definitions->ToElement() == nullptr) {
      add(Kind::noElementAsDefinitions, definitions->Row());
    }
    for (const TiXmlElement* next = definitions->NextSiblingElement("definitions"); next;
         next = next->NextSiblingElement("definitions")) {
      add(Kind::furtherDefinitions, next->Row());
    }
    for (const TiXmlElement* format : selectElements(definitions, "traceFormat")) {
      if (findAttribute(format, "id") == nullptr) add(Kind::skippedFormats, format->Row());
    }
    for (const TiXmlElement* brush : selectElements(definitions, "brush")) {
      const char* id = findAttribute(brush, "id");
      if (id == nullptr || findChild(*brush, "annotationXML") == nullptr) {
        add(Kind::skippedBrushes, brush->Row(), id == nullptr ? "" : id);
      }
    }
    examineContexts(*definitions);
  }

  void examineContexts(const TiXmlNode& definitions) {
    const auto contexts = selectElements(&definitions, "context");
    const std::size_t good = read_.contexts.size();
    if (good >= contexts.size()) return;
    const TiXmlElement& failed = *contexts[good];
    const char* brush = findAttribute(&failed, "brushRef");
    const char* format = findAttribute(&failed, "traceFormatRef");
    const std::uint64_t lost = contexts.size() - good;
    if (findAttribute(&failed, "id") == nullptr) {
      add(Kind::contextWithoutId, failed.Row(), {}, lost);
    } else if (brush != nullptr && *brush != '#') {
      add(Kind::contextReferenceForm, failed.Row(), brush, lost);
    } else if (format != nullptr && *format != '#') {
      add(Kind::contextReferenceForm, failed.Row(), format, lost);
    } else if (!hasId(read_.brushes, brush)) {
      add(Kind::contextBrushMissing, failed.Row(), brush == nullptr ? "" : brush + 1, lost);
    } else {
      add(Kind::contextFormatMissing, failed.Row(), format == nullptr ? "" : format + 1, lost);
    }
  }

  template <typename T>
  static bool hasId(const std::list<T>& list, const char* reference) {
    const std::string_view id = reference == nullptr ? "" : reference + 1;
    return std::any_of(list.begin(), list.end(), [&](const T& item) { return item.id == id; });
  }

  void examineChild(const TiXmlElement& child) {
    const std::string& name = child.ValueStr();
    if (name == "tracegroup") return examineGroup(child);
    if (name == "annotation") return examineAnnotation(child);
    const std::string meaning = meaningOf(name);
    if (meaning == "tracegroup") add(Kind::otherGroups, child.Row(), name);
    if (meaning == "trace") add(Kind::looseTraces, child.Row());
  }

  void examineGroup(const TiXmlElement& group) {
    const char* id = findAttribute(&group, "id");
    if (id == nullptr || !std::string_view(id).starts_with("layer")) {
      return add(Kind::groupsWithoutLayerId, group.Row(), id == nullptr ? "" : id);
    }
    for (const TiXmlElement* child = group.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
      const std::string& name = child->ValueStr();
      if (name == "trace") {
        examineTrace(*child);
      } else if (name == "annotation") {
        examineAnnotation(*child);
      } else if (meaningOf(name) == "tracegroup") {
        add(Kind::nestedGroups, child->Row());
      } else if (meaningOf(name) == "trace") {
        add(Kind::otherTraces, child->Row(), name);
      }
    }
  }

  void examineTrace(const TiXmlElement& trace) {
    const TiXmlNode* text = trace.FirstChild();
    if (text == nullptr) return add(Kind::tracesWithoutText, trace.Row());
    if (findAttribute(&trace, "contextRef") == nullptr) {
      return add(Kind::tracesWithoutContext, trace.Row());
    }
    examineText(*text);
    tokens_.clear();
    splitString(text->Value(), ",", tokens_);
    for (const std::string_view token : tokens_)
      examinePoint(token, trace.Row());
  }

  void examinePoint(std::string_view token, int line) {
    pieces_.clear();
    splitString(token, " ", pieces_);
    if (pieces_.size() > 7) {
      add(Kind::furtherNumbers, line);
      pieces_.resize(7);
    }
    bool cut = false;
    bool none = false;
    for (const std::string_view piece : pieces_) {
      const PieceForm form = formOf(piece);
      cut |= form == PieceForm::cut;
      none |= form == PieceForm::none;
    }
    if (cut) add(Kind::cutNumbers, line);
    if (none) add(Kind::noNumbers, line);
  }

  void examineAnnotation(const TiXmlElement& annotation) {
    const TiXmlNode* text = annotation.FirstChild();
    if (text == nullptr || text->ToText() == nullptr ||
        findAttribute(&annotation, "type") == nullptr) {
      return add(Kind::skippedAnnotations, annotation.Row());
    }
    examineText(*text);
  }

  void examineText(const TiXmlNode& text) {
    if (text.ValueStr().find('\0') != std::string::npos) add(Kind::textsWithNul, text.Row());
  }

  const InkMLDefinitions& read_;
  std::map<Kind, InkProblem> problems_;
  std::vector<std::string_view> tokens_;
  std::vector<std::string_view> pieces_;
};

}  // namespace

const InkProblem* InkReport::find(InkProblemKind kind) const {
  for (const InkProblem& problem : problems) {
    if (problem.kind == kind) return &problem;
  }
  return nullptr;
}

std::vector<InkProblem> findProblems(const TiXmlDocument& xml, const InkMLDefinitions& read,
                                     const FileScan& scan, int scanLine) {
  Finder finder(read);
  finder.examineEnd(scan, scanLine);
  finder.examine(xml);
  return finder.result();
}

}  // namespace Orvo
