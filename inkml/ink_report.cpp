#include "inkml/ink_report.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <map>
#include <string_view>
#include <utility>

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

enum class PieceForm { whole, cut, otherwiseCut, wrapped, none };

constexpr std::size_t isUnsigned[] = {3, 6};  // the pressure and the time of a point

bool fits(std::string_view digits, bool negative, std::size_t index) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc()) return false;
  constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
  if (negative) return value <= kMost + 1;
  const bool wide =
      std::find(std::begin(isUnsigned), std::end(isUnsigned), index) != std::end(isUnsigned);
  return value <= (wide ? std::numeric_limits<std::uint32_t>::max() : kMost);
}

// What becomes of a piece when it is read as a whole number, the `index`-th of its point.
PieceForm formOf(std::string_view piece, std::size_t index) {
  const std::size_t start = piece.find_first_not_of(" \t\n\v\f\r");
  if (start == std::string_view::npos) return PieceForm::whole;
  piece.remove_prefix(start);
  const bool negative = piece.front() == '-';
  if (negative || piece.front() == '+') piece.remove_prefix(1);
  const std::size_t digits = static_cast<std::size_t>(
      std::find_if_not(piece.begin(), piece.end(), isDigit) - piece.begin());
  const std::string_view rest = piece.substr(digits);
  const bool fraction = !rest.empty() && std::string_view(".eE").find(rest.front()) != rest.npos;
  if (digits == 0) return rest.starts_with('.') ? PieceForm::cut : PieceForm::none;
  if (!fits(piece.substr(0, digits), negative, index)) return PieceForm::wrapped;
  if (rest.find_first_not_of(" \t\n\v\f\r") == std::string_view::npos) return PieceForm::whole;
  return fraction ? PieceForm::cut : PieceForm::otherwiseCut;
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
      const TiXmlNode* properties = findChild(*brush, "annotationXML");
      if (id == nullptr || properties == nullptr) {
        add(Kind::skippedBrushes, brush->Row(), id == nullptr ? "" : id);
      } else if (properties->ToElement() == nullptr) {
        add(Kind::noElementAsBrushProperties, properties->Row());
      } else {
        examineProperties(*properties);
      }
    }
    examineContexts(*definitions);
  }

  void examineProperties(const TiXmlNode& properties) {
    for (const TiXmlElement* property = properties.FirstChildElement(); property;
         property = property->NextSiblingElement()) {
      const TiXmlNode* text = property->FirstChild();
      if (text != nullptr && text->ToText() != nullptr) examineForNul(*text);
    }
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
    if (text->ToText() == nullptr) return add(Kind::tracesOfNoText, text->Row());
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
    std::array<bool, 5> has{};
    for (std::size_t i = 0; i < pieces_.size(); ++i)
      has[static_cast<std::size_t>(formOf(pieces_[i], i))] = true;
    for (const auto& [form, kind] : {std::pair{PieceForm::cut, Kind::cutNumbers},
                                     {PieceForm::otherwiseCut, Kind::otherwiseCutNumbers},
                                     {PieceForm::wrapped, Kind::wrappedNumbers},
                                     {PieceForm::none, Kind::noNumbers}}) {
      if (has[static_cast<std::size_t>(form)]) add(kind, line);
    }
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
    examineForNul(text);
    for (const TiXmlNode* next = text.NextSibling(); next; next = next->NextSibling()) {
      if (next->ToText() != nullptr) return add(Kind::dividedTexts, next->Row());
    }
  }

  void examineForNul(const TiXmlNode& text) {
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
