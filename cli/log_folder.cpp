#include "cli/log_folder.h"

#include <cerrno>
#include <system_error>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "platform/folders.h"

namespace cli {

namespace fs = std::filesystem;

namespace {

std::error_code whyNotWritable(const fs::path& folder) {
#ifndef _WIN32
  if (::access(folder.c_str(), W_OK | X_OK) != 0) return {errno, std::generic_category()};
#else
  static_cast<void>(folder);
#endif
  return {};
}

}  // namespace

fs::path makeOwnLogFolder() {
  const std::optional<fs::path> folder = platform::stateFolder();
  return folder && !platform::makePrivateFolder(*folder) ? *folder : fs::path();
}

std::optional<std::string> prepareLogFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (!error && !fs::is_directory(folder, error)) {
    error = std::make_error_code(std::errc::not_a_directory);
  }
  if (!error) error = whyNotWritable(folder);
  if (!error) return {};
  return "no log can be written in this folder: " + error.message() + "; name another";
}

}  // namespace cli
