// Any bytes as a file that the plug-in opens in the embedded host: there must be no crash and no
// misuse of the host, and the plug-in must give everything back. What begins with '<' is opened as
// an ink document, anything else as a pen recording.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "embedded/session.h"
#include "fuzz/input.h"

extern "C" hostapi::SPErr PluginMain(const char* caller, const char* selector, void* message);

namespace {

using fuzz::check;

// A folder that this process has made and only it may enter, used as its current one; removed at
// the end.
class OwnFolder {
 public:
  OwnFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "penwick-fuzz-XXXXXX").string();
    check(::mkdtemp(name.data()) != nullptr);
    path_ = name;
    std::filesystem::current_path(path_);
  }
  ~OwnFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  OwnFolder(const OwnFolder&) = delete;
  OwnFolder& operator=(const OwnFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// One file for the whole run.
std::string fileNamed(const char* name) {
  static const OwnFolder folder;
  return (folder.path() / name).string();
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
