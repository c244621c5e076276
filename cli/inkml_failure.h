// Why an ink document does not open.
#pragma once

#include <filesystem>
#include <string>

#include "inkml/ink_report.h"

namespace cli {

/// One sentence with the line, where it is known, and what to do, where there is something to do.
std::string explainFailure(const std::filesystem::path& file, const Orvo::InkReport& report);

}  // namespace cli
