// Where the running program is.
#pragma once

#include <filesystem>

namespace platform {

/// The path of the running program's file, with links resolved; empty if the system does not know
/// it.
std::filesystem::path executablePath();

}  // namespace platform
