// The folders for application data and for this program's own files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace platform {

/// The user's local application-data folder, without a separator at the end. Natively
/// the one that XDG_DATA_HOME names, if its path is absolute, else `.local/share` under the folder
/// that HOME names, or under the home folder of the user's account when HOME is not set. Nothing
/// when the system knows no such folder.
std::optional<std::wstring> localAppDataFolder();

/// The folder for what this program keeps between runs, such as its log. Natively "penwick" in the
/// folder that XDG_STATE_HOME names, if that is an absolute path, or else in `.local/state` under
/// the home folder; on Windows "Penwick" in the local application-data folder. Nothing when the
/// system knows no such folder. The folder need not exist.
std::optional<std::filesystem::path> stateFolder();

/// The folder for what this program can make again, such as pages to show. Natively "penwick" in
/// the folder that XDG_CACHE_HOME names, if that is an absolute path, or else in `.cache` under the
/// home folder; on Windows "Penwick\Pages" in the local application-data folder. Nothing when the
/// system knows no such folder. The folder need not exist.
std::optional<std::filesystem::path> cacheFolder();

/// Creates `folder` and any missing folders above it, natively accessible to their owner alone.
/// Returns the error that prevented it; a folder that already exists is not an error.
std::error_code makePrivateFolder(const std::filesystem::path& folder);

}  // namespace platform
