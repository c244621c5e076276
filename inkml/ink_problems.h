// What is left out of an ink document, or read differently from how it looks.
#pragma once

#include <vector>

#include "inkml/definitions.h"
#include "inkml/file_scan.h"
#include "inkml/ink_report.h"

class TiXmlDocument;

namespace Orvo {

/// Looks for problems in a file that was loaded and read. `read` is what definitions that were
/// empty before hold after it; `scanLine` is the line where the scan ended.
std::vector<InkProblem> findProblems(const TiXmlDocument& xml, const InkMLDefinitions& read,
                                     const FileScan& scan, int scanLine);

}  // namespace Orvo
