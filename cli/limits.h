// What is said when the system gives no more memory or files.
#pragma once

#include <optional>
#include <string>

namespace cli {

/// The error when the system gives no more memory.
inline constexpr char kNotEnoughMemory[] = "there is not enough memory";

/// The error when the process may not open any more files.
inline constexpr char kTooManyFiles[] =
    "too many files are open for this process; raise the limit with ulimit -n";

/// Why no recording can be opened: the process may not have as many files open as that takes.
/// Checked beforehand, since a plug-in whose output cannot be captured would print into the result.
std::optional<std::string> refusalToOpenFiles();

}  // namespace cli
