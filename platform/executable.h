#pragma once

#include <filesystem>

namespace platform {

/// Where the running program's file lies, links resolved; empty when the system does not tell.
std::filesystem::path executablePath();

}  // namespace platform
