// What was saved of a recording, as JSON.
#pragma once

#include <string>
#include <string_view>

#include "cli/rescuing.h"

namespace cli {

/// One object on one line, without its end: docs/json.md describes the form. `output` is where the
/// mended recording went; empty where none was written.
std::string rescueToJson(const Rescued& rescued, std::string_view file, std::string_view output);

}  // namespace cli
