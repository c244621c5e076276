// What was silently left out of an ink document that opened, or read differently from how it looks.
#pragma once

#include <cstddef>
#include <string>

#include "inkml/ink_report.h"

namespace cli {

/// One sentence; empty when there is nothing to say. `layers` is how many layers the document has.
std::string explainOmissions(const Orvo::InkReport& report, std::size_t layers);

}  // namespace cli
