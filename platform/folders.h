#pragma once

#include <optional>
#include <string>

namespace platform {

/// The user's local application-data folder, without a separator at the end. Natively
/// `.local/share` under the folder that HOME names, or under the home folder of the user's account
/// when HOME is not set. Nothing when the system knows no such folder.
std::optional<std::wstring> localAppDataFolder();

}  // namespace platform
