// Any bytes as a file that the plug-in opens in the embedded host: there must be no crash and no
// misuse of the host, and the plug-in must give everything back. What begins with '<' is opened as
// an ink document, anything else as a pen recording.

#include <cstdint>
#include <fstream>
#include <string>

#include "embedded/session.h"
#include "fuzz/input.h"
#include "fuzz/own_folder.h"

extern "C" hostapi::SPErr PluginMain(const char* caller, const char* selector, void* message);

using fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string name = fuzz::fileNamed(size > 0 && data[0] == '<' ? "file.kvo" : "file.pnx");
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
