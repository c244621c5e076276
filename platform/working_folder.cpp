#include "platform/working_folder.h"

#include <system_error>

#ifdef _WIN32
#include "platform/replace_file.h"
#else
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "platform/descriptor.h"
#endif

namespace platform {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32

class WayBack {
 public:
  bool known() const { return !before_.empty(); }
  std::error_code go() const {
    std::error_code error;
    fs::current_path(before_, error);
    return error;
  }

 private:
  static fs::path currentFolder() {
    std::error_code error;
    return fs::current_path(error);
  }

  fs::path before_ = currentFolder();
};

bool enter(const fs::path& folder) {
  std::error_code error;
  fs::current_path(folder, error);
  return !error;
}

// A new temporary folder, removed with everything in it.
class DisposableFolder {
 public:
  DisposableFolder() {
    std::error_code error;
    const fs::path path = fs::temp_directory_path(error) / randomFileName();
    if (!error && fs::create_directory(path, error)) path_ = path;
  }
  ~DisposableFolder() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
  }
  DisposableFolder(const DisposableFolder&) = delete;
  DisposableFolder& operator=(const DisposableFolder&) = delete;

  void enter() const {
    if (!path_.empty()) platform::enter(path_);
  }

 private:
  fs::path path_;
};

#else

class WayBack {
 public:
  bool known() const { return static_cast<bool>(before_); }
  std::error_code go() const {
    if (::fchdir(before_.number()) == 0) return {};
    return {errno, std::generic_category()};
  }

 private:
  Descriptor before_{::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)};
};

bool enter(const fs::path& folder) {
  return ::chdir(folder.c_str()) == 0;
}

// Nobody, not even root, can create a file in the system's folder about this process.
class DisposableFolder {
 public:
  static void enter() { static_cast<void>(platform::enter("/proc/self")); }
};

#endif

void workAndGoBack(const WayBack& wayBack, const std::function<void()>& work) {
  try {
    work();
  } catch (...) {
    static_cast<void>(wayBack.go());
    throw;
  }
  // Relative paths would mean other files from here on.
  if (const std::error_code error = wayBack.go()) {
    throw std::system_error(error, "the current folder cannot be entered again");
  }
}

}  // namespace

void runInFolder(const fs::path& folder, const std::function<void()>& work) {
  const WayBack wayBack;
  // The current folder was removed, or may not be entered: no file can be created there either.
  if (!wayBack.known()) return work();
  if (!folder.empty() && enter(folder)) return workAndGoBack(wayBack, work);
  const DisposableFolder disposable;
  disposable.enter();
  workAndGoBack(wayBack, work);
}

}  // namespace platform
