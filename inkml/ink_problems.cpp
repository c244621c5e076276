#include "inkml/ink_problems.h"

#include <tinyxml.h>

#include "inkml/definition_problems.h"
#include "inkml/layer_problems.h"
#include "inkml/problem_list.h"
#include "inkml/xml_helpers.h"

namespace Orvo {
namespace {

using Kind = InkProblemKind;

void examineEnd(const FileScan& scan, int line, ProblemList& problems) {
  switch (scan.end) {
    case ScanEnd::text:
      problems.add(scan.afterDocumentType  ? Kind::documentTypeSubset
                   : scan.afterInstruction ? Kind::instructionWithEnd
                                           : Kind::textAfterRoot,
                   line);
      break;
    case ScanEnd::nul:
      problems.add(Kind::nulAfterRoot, line);
      break;
    case ScanEnd::declaration:
      problems.add(Kind::brokenDeclaration, line);
      break;
    default:
      break;
  }
}

void examineRoot(const TiXmlNode& ink, ProblemList& problems) {
  if (ink.ToElement() == nullptr) problems.add(Kind::noElementAsRoot, ink.Row());
  for (const TiXmlElement* next = ink.NextSiblingElement(); next;
       next = next->NextSiblingElement()) {
    problems.add(Kind::furtherRoots, next->Row(), next->ValueStr());
  }
}

}  // namespace

std::vector<InkProblem> findProblems(const TiXmlDocument& xml, const InkMLDefinitions& read,
                                     const FileScan& scan, int scanLine) {
  ProblemList problems;
  examineEnd(scan, scanLine, problems);
  if (const TiXmlNode* ink = findChild(xml, "ink")) {
    examineRoot(*ink, problems);
    examineDefinitions(*ink, read, problems);
    const bool hasReadTraces = examineLayers(*ink, problems);
    // Where nothing is drawn, nothing is drawn differently from its format.
    if (hasReadTraces) examineFormats(*ink, problems);
  }
  return problems.all();
}

}  // namespace Orvo
