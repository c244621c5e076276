#include "inkml/ink_report.h"

namespace Orvo {

const InkProblem* InkReport::find(InkProblemKind kind) const {
  for (const InkProblem& problem : problems) {
    if (problem.kind == kind) return &problem;
  }
  return nullptr;
}

}  // namespace Orvo
