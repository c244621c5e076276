// One problem of an ink document in words.
#pragma once

#include <string>

#include "inkml/ink_report.h"

namespace cli {

/// Part of a sentence, without the line: "2 brushes without id or annotationXML left out".
std::string describe(const Orvo::InkProblem& problem);

}  // namespace cli
