#include "art/json_writer.h"
#include "cli/packet_lines.h"
#include "cli/sentences.h"
#include "cli/terminal_text.h"

namespace cli {

namespace {

using Orvo::InkElement;
using Orvo::InkProblemKind;

std::string explain(InkProblemKind problem) {
  switch (problem) {
    case InkProblemKind::furtherRoots:
      return "it follows the document";
    case InkProblemKind::furtherDefinitions:
      return "only the first definitions are";
    case InkProblemKind::skippedFormats:
    case InkProblemKind::contextWithoutId:
      return "it has no id";
    case InkProblemKind::skippedBrushes:
      return "it has no id or no annotationXML";
    case InkProblemKind::contextBrushMissing:
      return "it, or a context before it, refers to something that is not there";
    case InkProblemKind::otherGroups:
      return "only \"tracegroup\" is";
    case InkProblemKind::looseTraces:
      return "it is outside every \"tracegroup\"";
    case InkProblemKind::groupsWithoutLayerId:
      return "without an id of the form \"layer0\" it becomes an empty layer";
    case InkProblemKind::nestedGroups:
      return "it is inside another group";
    case InkProblemKind::otherTraces:
      return "only \"trace\" is";
    case InkProblemKind::tracesWithoutText:
      return "it has no points";
    case InkProblemKind::tracesWithoutContext:
      return "it has no contextRef";
    case InkProblemKind::tracesInTraces:
      return "it is inside another trace";
    case InkProblemKind::skippedAnnotations:
      return "it has no type or no text";
    default:
      return {};
  }
}

std::string problemOf(const InkElement& element) {
  std::string why = element.problem ? explain(*element.problem) : "";
  if (element.isRead) return why;
  return why.empty() ? "not read" : "not read: " + why;
}

}  // namespace

std::string elementToText(const InkElement& element) {
  const std::string number = std::to_string(element.line);
  std::string line(number.size() < 8 ? 8 - number.size() : 0, ' ');
  line += number + std::string(2 + 2 * static_cast<std::size_t>(element.depth), ' ');
  line += "<" + shortened(element.name);
  if (!element.id.empty()) line += " id=\"" + shortened(element.id) + "\"";
  if (!element.type.empty()) line += " type=\"" + shortened(element.type) + "\"";
  line += ">";
  if (element.points) line += "  " + counted(*element.points, "point");
  const std::string problem = problemOf(element);
  if (!problem.empty()) line += "  <-- " + problem;
  return printable(line);
}

std::string elementToJson(const InkElement& element) {
  std::string text;
  art::JsonWriter json(text);
  json.beginObject().member("line", element.line).member("depth", element.depth);
  json.member("name", element.name).textOrNull("id", element.id).textOrNull("type", element.type);
  json.member("read", element.isRead).key("points");
  if (element.points) {
    json.value(*element.points);
  } else {
    json.null();
  }
  json.textOrNull("problem", problemOf(element)).endObject();
  return text;
}

}  // namespace cli
