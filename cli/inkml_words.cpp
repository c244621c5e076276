#include "cli/inkml_words.h"

#include "cli/terminal_text.h"

namespace cli {

using Orvo::InkProblemKind;

std::string atLine(int line, int column) {
  if (line == 0) return {};
  const std::string place = " (line " + std::to_string(line);
  return place + (column == 0 ? "" : ", column " + std::to_string(column)) + ")";
}

std::string quoted(const std::string& name) {
  return "\"" + shortened(name) + "\"";
}

const char* whatStopsReading(InkProblemKind kind) {
  switch (kind) {
    case InkProblemKind::textAfterRoot:
      return "text";
    case InkProblemKind::nulAfterRoot:
      return "a NUL";
    case InkProblemKind::documentTypeSubset:
      return "a DOCTYPE with declarations of its own";
    case InkProblemKind::instructionWithEnd:
      return "a processing instruction with a \">\" inside";
    case InkProblemKind::brokenDeclaration:
      return "a broken declaration";
    default:
      return nullptr;
  }
}

std::string explainEncoding(const Orvo::InkReport& report) {
  return "the document declares the encoding " + quoted(report.encoding) +
         ", but ink documents are always read as UTF-8";
}

}  // namespace cli
