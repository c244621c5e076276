// What the sentences about ink documents have in common.
#pragma once

#include <string>

#include "inkml/ink_report.h"

namespace cli {

/// For documents that another program wrote, where the plug-in's view of them is shown.
inline constexpr char kAdviceToTranslate[] =
    "penwick convert translates InkML of other programs into a document that opens";

/// " (line 3)" or " (line 3, column 5)"; without the column when it is 0, and empty when `line` is.
std::string atLine(int line, int column = 0);

/// A name from a file, in double quotes; a long one is shortened.
std::string quoted(const std::string& name);

/// What stopped the reading before the end of the file; null for the other problems.
const char* whatStopsReading(Orvo::InkProblemKind kind);

/// That the declared encoding is not the one that the document is read in. Only for a report with
/// an `encoding`.
std::string explainEncoding(const Orvo::InkReport& report);

}  // namespace cli
