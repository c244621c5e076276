// The folder for pages that are made to be shown.
#pragma once

#include <filesystem>
#include <string>

namespace cli {

/// The folder for pages and why there is none, in one sentence; one of the two is empty.
struct PageFolder {
  std::filesystem::path path;
  std::string problem;
};

/// Creates the folder in the user's cache folder, for this user alone, and removes the pages in it
/// that were made more than a week ago.
PageFolder preparePageFolder();

/// The name of the page of a recording: letters and digits of its name, and a number that differs
/// from place to place of the recording.
std::string pageName(const std::filesystem::path& recording);

/// Whether `pageName` makes such names.
bool isPageName(const std::string& name);

}  // namespace cli
