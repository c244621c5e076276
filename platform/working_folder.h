// Running something in another folder.
#pragma once

#include <filesystem>
#include <functional>

namespace platform {

/// Runs `work` with `folder` as the current folder of the process, then returns to the previous
/// one. Where `folder` is empty or cannot be entered, `work` runs where nothing that it writes to
/// its current folder remains: natively where no file can be created, on Windows in a temporary
/// folder that is removed. Throws `std::system_error` if the previous folder cannot be entered
/// again.
void runInFolder(const std::filesystem::path& folder, const std::function<void()>& work);

}  // namespace platform
