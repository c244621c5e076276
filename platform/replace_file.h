// Writing a file as a whole.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace platform {

/// Writes `bytes` to the file at `place`, completely or not at all: they go to a new file in the
/// same folder, which is then renamed. The new file has a short random name, is created
/// exclusively, and is readable by its owner alone until it is in place; then it gets the
/// permissions of the file that it replaces, or the usual ones of a new file. Links are replaced,
/// not followed. Natively, signals wait until the file is in place or removed again, so that a
/// program that is ended leaves nothing behind. Returns the error that kept the file from being
/// written.
std::error_code replaceFile(const std::filesystem::path& place, std::string_view bytes);

/// Writes `bytes` into the pipe or device at `place`. Natively a regular file is refused.
std::error_code writeInto(const std::filesystem::path& place, std::string_view bytes);

/// ".penwick-" and 16 random hexadecimal digits that nobody can guess.
std::string randomFileName();

}  // namespace platform
