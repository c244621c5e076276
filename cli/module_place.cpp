#include "cli/module_place.h"

#include <system_error>

#include "cli/report.h"
#include "platform/executable.h"

namespace cli {

namespace fs = std::filesystem;

fs::path findModule() {
  const fs::path folder = platform::executablePath().parent_path();
  const fs::path beside = folder / "kvoexportfile.aip";
  const fs::path installed = folder.parent_path() / PENWICK_LIBRARY_FOLDER / "kvoexportfile.aip";
  std::error_code error;
  return !fs::exists(beside, error) && fs::exists(installed, error) ? installed : beside;
}

std::unique_ptr<embedded::Module> loadModule(const fs::path& place, std::string& problem) {
  return embedded::Module::load(nativeName(place), problem);
}

}  // namespace cli
