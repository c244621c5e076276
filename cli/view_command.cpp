#include "cli/view_command.h"

#include "cli/page_folder.h"
#include "platform/browser.h"

namespace cli {

namespace fs = std::filesystem;

ExitStatus viewFiles(const OpenOptions& options) {
  const PageFolder folder = preparePageFolder();
  if (!folder.problem.empty()) {
    reportError(options.files.front(), folder.problem);
    return ExitStatus::failed;
  }
  std::vector<fs::path> pages;
  ExitStatus status = openAsPages(options, folder.path, pages);
  const std::vector<std::optional<std::string>> refusals = platform::showFiles(pages);
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (!refusals[i]) continue;
    reportError(pages[i],
                "this page could not be shown: " + *refusals[i] + "; open it in a browser");
    status = ExitStatus::failed;
  }
  return status;
}

}  // namespace cli
