// Any bytes as a file that the plug-in opens in the embedded host: no crash, no misuse of the host,
// and the plug-in gives everything back. What begins with '<' is opened as an ink document,
// anything else as a pen recording.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "embedded/session.h"
#include "fuzz/input.h"

extern "C" hostapi::SPErr PluginMain(const char* caller, const char* selector, void* message);

namespace {

using fuzz::check;

// One file for the whole run, in a folder of this process.
std::string fileNamed(const char* name) {
  static const std::filesystem::path folder = [] {
    const auto made = std::filesystem::temp_directory_path() / "penwick-fuzz-open";
    std::filesystem::create_directories(made);
    std::filesystem::current_path(made);
    return made;
  }();
  return (folder / name).string();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string name = fileNamed(size > 0 && data[0] == '<' ? "file.kvo" : "file.pnx");
  std::ofstream(name, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  embedded::Session session(embedded::Module::ofEntry(&PluginMain));
  check(session.start().allAnsweredZero());
  const embedded::Opening opening = session.open(name);
  check(opening.misuse.empty());
  check(opening.builderRan || opening.document.layers.size() == 1);
  check(session.end().misuse.empty());
  check(session.host().liveStrings() == 0 && session.host().livePaths() == 0);
  return 0;
}
