#include "cli/inkml_omissions.h"

#include "cli/inkml_problem_words.h"
#include "cli/inkml_words.h"
#include "cli/sentences.h"

namespace cli {

std::string explainOmissions(const Orvo::InkReport& report, std::size_t layers) {
  std::string sentence;
  for (const Orvo::InkProblem& problem : report.problems)
    addPart(sentence, describe(problem) + atLine(problem.line));
  if (!report.encoding.empty()) addPart(sentence, explainEncoding(report));
  if (layers == 0 && !report.nameSpace.empty()) {
    addPart(sentence,
            "the document has the namespace " + quoted(report.nameSpace) +
                "; only lower-case \"tracegroup\" elements with ids \"layer0\", \"layer1\" "
                "... are read as layers; " +
                kAdviceToTranslate);
  }
  return sentence;
}

}  // namespace cli
