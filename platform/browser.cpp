#include "platform/browser.h"

#ifdef _WIN32
#include <windows.h>
// shellapi.h needs the declarations above.
#include <cstdint>
#include <shellapi.h>
#elif !defined(__EMSCRIPTEN__)
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#endif

namespace platform {

namespace fs = std::filesystem;

namespace {

using Refusal = std::optional<std::string>;

#ifdef _WIN32

Refusal show(const fs::path& file) {
  constexpr std::intptr_t kLastError = 32;
  const HINSTANCE result =
      ::ShellExecuteW(nullptr, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  if (reinterpret_cast<std::intptr_t>(result) > kLastError) return {};
  return "Windows has no program for it";
}

#elif defined(__EMSCRIPTEN__)

Refusal show(const fs::path&) {
  return "this build of the program starts no others";
}

#else

// What it takes to start a program away from this one's streams and from the signals of a terminal.
class Start {
 public:
  Start() {
    ::posix_spawn_file_actions_init(&actions_);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
      ::posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
    ::posix_spawnattr_setpgroup(&attributes_, 0);
  }
  ~Start() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  Start(const Start&) = delete;
  Start& operator=(const Start&) = delete;

  // 0, or the system's number of the error.
  int run(const std::string& program, const std::string& word, pid_t& process) const {
    std::string name = program;
    std::string copy = word;
    const std::array<char*, 3> words{name.data(), copy.data(), nullptr};
    return ::posix_spawnp(&process, name.c_str(), &actions_, &attributes_, words.data(), environ);
  }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

struct Showing {
  pid_t process = 0;
  int error = 0;
};

Refusal refusalOf(const Showing& showing) {
  if (showing.error == ENOENT) return "xdg-open is not installed";
  if (showing.error != 0) {
    return "xdg-open does not start: " + std::generic_category().message(showing.error);
  }
  int status = 0;
  while (::waitpid(showing.process, &status, 0) < 0) {
    if (errno != EINTR) return "xdg-open got lost";
  }
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return {};
  return "xdg-open found no browser";
}

#endif

}  // namespace

std::vector<Refusal> showFiles(const std::vector<fs::path>& files) {
  std::vector<Refusal> refusals;
  refusals.reserve(files.size());
#if defined(_WIN32) || defined(__EMSCRIPTEN__)
  for (const fs::path& file : files)
    refusals.push_back(show(file));
#else
  const Start start;
  std::vector<Showing> started(files.size());
  for (std::size_t i = 0; i < files.size(); ++i)
    started[i].error = start.run("xdg-open", files[i].native(), started[i].process);
  for (const Showing& showing : started)
    refusals.push_back(refusalOf(showing));
#endif
  return refusals;
}

}  // namespace platform
