#pragma once

#include <filesystem>
#include <string>

#include "penfile/parse_report.h"

namespace cli {

/// Why a pen recording does not open: one sentence with the place and, where there is something to
/// do, what to do.
std::string explainFailure(const std::filesystem::path& file, const Orvo::ParseReport& report);

/// What was left out of a recording that opened, in one sentence; empty when nothing was.
std::string explainOmissions(const Orvo::ParseReport& report);

}  // namespace cli
