#include "cli/inkml_omissions.h"

#include <algorithm>

#include "cli/inkml_problem_words.h"
#include "cli/inkml_words.h"
#include "cli/sentences.h"

namespace cli {

namespace {

/// Whether there is ink in places where only the programs that wrote it look.
bool holdsOtherInk(const Orvo::InkReport& report) {
  using Kind = Orvo::InkProblemKind;
  return std::ranges::any_of(report.problems, [](const Orvo::InkProblem& problem) {
    return problem.kind == Kind::looseTraces ||
           (problem.kind == Kind::otherGroups && problem.traces > 0);
  });
}

}  // namespace

std::string explainOmissions(const Orvo::InkReport& report, std::size_t layers) {
  std::string sentence;
  for (const Orvo::InkProblem& problem : report.problems)
    addPart(sentence, describe(problem) + atLine(problem.line));
  if (!report.encoding.empty()) addPart(sentence, explainEncoding(report));
  if (layers == 0 && !report.nameSpace.empty()) {
    addPart(sentence,
            "the document has the namespace " + quoted(report.nameSpace) +
                "; only lower-case \"tracegroup\" elements with ids \"layer0\", \"layer1\" "
                "... are read as layers");
  }
  if (layers == 0 && (!report.nameSpace.empty() || holdsOtherInk(report))) {
    addPart(sentence, kAdviceToTranslate);
  }
  return sentence;
}

}  // namespace cli
