// The module where a program cannot load any: it is linked in, and still reached through its one
// entry.
#include "cli/module_place.h"
#include "cli/report.h"
#include "log/logger.h"
#include "penfile/document_loader.h"

extern "C" hostapi::SPErr PluginMain(const char* caller, const char* selector, void* message);

namespace cli {

namespace fs = std::filesystem;

fs::path findModule() {
  return {};
}

std::unique_ptr<embedded::Module> loadModule(const fs::path& place, std::string& problem) {
  if (place.empty()) {
    // The log, which the command's own readers turn off, is the same as the plug-in's here.
    Orvo::Logger::silence(false);
    // A module that is loaded anew takes a file for a pen recording where the ending says nothing,
    // as "PNX" in capitals does. This one may have read an ink document before.
    Orvo::fileKind = Orvo::kPenFile;
    return embedded::Module::ofEntry(&PluginMain, "kvoexportfile");
  }
  problem = nativeName(place) +
            ": this build of the program loads no modules, it has the plug-in inside; leave out "
            "--module";
  return nullptr;
}

}  // namespace cli
