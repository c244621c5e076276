#pragma once

#include <filesystem>
#include <string>

#include "inkml/ink_report.h"

namespace cli {

/// Why an ink document does not open: one sentence with the line, where it is known, and what to
/// do, where there is something to do.
std::string explainFailure(const std::filesystem::path& file, const Orvo::InkReport& report);

/// What was silently left out of an ink document that opened, or read otherwise than it looks, in
/// one sentence; empty when nothing was. `layers` is how many layers it has.
std::string explainOmissions(const Orvo::InkReport& report, std::size_t layers);

}  // namespace cli
