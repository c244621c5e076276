#include "cli/private_folder.h"

#include <system_error>

#ifdef _WIN32
#include <random>
#else
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <unistd.h>
#endif

#include "cli/report.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

#ifdef _WIN32

// On Windows the temporary folder is the user's own.
fs::path makeFolder(const std::string& /*fileName*/) {
  std::random_device random;
  std::error_code error;
  fs::path folder;
  do {
    folder = fs::temp_directory_path(error) / ("penwick-" + std::to_string(random()));
  } while (!fs::create_directory(folder, error) && !error);
  return error ? fs::path() : folder;
}

void forgetFolder(const fs::path& /*folder*/) {}

#else

// Those that end a program from outside, and those by which it crashes.
constexpr std::array kSignals{SIGHUP,  SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGPROF,
                              SIGABRT, SIGBUS, SIGFPE,  SIGILL,  SIGSEGV};

// What a signal handler may use: plain memory, filled while the signals are blocked.
struct Removed {
  std::array<char, 4096> file;
  std::array<char, 4096> folder;

  bool isFree() const { return folder[0] == '\0'; }
};
std::array<Removed, 4> removed;

extern "C" void removeAndEnd(int signal) {
  for (const Removed& place : removed) {
    if (place.isFree()) continue;
    ::unlink(place.file.data());
    ::rmdir(place.folder.data());
  }
  static_cast<void>(::raise(signal));  // The default action, which runs once this handler returns.
}

class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~BlockedSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t before_;
};

void copyName(const fs::path& name, std::array<char, 4096>& place) {
  place.fill('\0');
  if (name.native().size() < place.size()) std::ranges::copy(name.native(), place.begin());
}

void removeOnSignals() {
  for (const int signal : kSignals) {
    struct sigaction action {};
    // Signals that are ignored stay ignored.
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
    action.sa_handler = removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    ::sigaction(signal, &action, nullptr);
  }
}

fs::path makeFolder(const std::string& fileName) {
  const BlockedSignals blocked;
  std::error_code error;
  fs::path place = fs::temp_directory_path(error);
  if (error) place = "/tmp";
  std::string name = (fs::absolute(place) / "penwick-XXXXXX").native();
  if (::mkdtemp(name.data()) == nullptr) return {};
  const auto free = std::ranges::find_if(removed, &Removed::isFree);
  if (free != removed.end()) {
    copyName(fs::path(name) / fileName, free->file);
    copyName(name, free->folder);
  }
  removeOnSignals();
  return name;
}

void forgetFolder(const fs::path& folder) {
  const BlockedSignals blocked;
  for (Removed& place : removed) {
    if (folder == place.folder.data()) place = {};
  }
}

#endif

}  // namespace

PrivateFolder::PrivateFolder(const std::string& fileName) {
  const fs::path folder = makeFolder(fileName);
  if (!folder.empty()) file_ = folder / pathOf(fileName);
}

PrivateFolder::~PrivateFolder() {
  if (file_.empty()) return;
  std::error_code ignored;
  fs::remove_all(file_.parent_path(), ignored);
  forgetFolder(file_.parent_path());
}

}  // namespace cli
