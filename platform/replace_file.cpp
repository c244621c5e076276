#include "platform/replace_file.h"

#include <cerrno>
#include <random>

#ifdef _WIN32
#include <algorithm>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <utility>
#else
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/descriptor.h"
#endif

namespace platform {

namespace fs = std::filesystem;

namespace {

// How many random names are tried: one that is taken is met only by accident.
constexpr int kNamesToTry = 16;

std::error_code lastError() {
  return {errno, std::generic_category()};
}

}  // namespace

std::string randomFileName() {
  constexpr char kDigits[] = "0123456789abcdef";
  std::random_device random;
  std::string name = ".penwick-";
  for (int word = 0; word < 2; ++word) {
    auto bits = random();
    for (int digit = 0; digit < 8; ++digit, bits >>= 4)
      name += kDigits[bits & 15U];
  }
  return name;
}

#ifdef _WIN32

namespace {

bool writeAll(int file, std::string_view bytes) {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 20;
  while (!bytes.empty()) {
    const auto size = static_cast<unsigned>(std::min(bytes.size(), kMostAtOnce));
    const int written = _write(file, bytes.data(), size);
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// A new file beside its final place, removed with the object unless it was put in place.
class NewFile {
 public:
  explicit NewFile(const fs::path& place) : place_(place) {
    for (int i = 0; i < kNamesToTry && file_ < 0 && (i == 0 || errno == EEXIST); ++i) {
      path_ = place.parent_path() / randomFileName();
      _wsopen_s(&file_, path_.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY | _O_NOINHERIT,
                _SH_DENYWR, _S_IREAD | _S_IWRITE);
    }
    exists_ = file_ >= 0;
  }
  ~NewFile() {
    close();
    std::error_code ignored;
    if (exists_) fs::remove(path_, ignored);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  bool write(std::string_view bytes) { return file_ >= 0 && writeAll(file_, bytes) && close(); }

  std::error_code putInPlace() {
    std::error_code error;
    const fs::file_status before = fs::status(place_, error);
    if (fs::exists(before)) fs::permissions(path_, before.permissions(), error);
    fs::rename(path_, place_, error);
    if (!error) exists_ = false;
    return error;
  }

 private:
  bool close() { return file_ < 0 || _close(std::exchange(file_, -1)) == 0; }

  fs::path place_;
  fs::path path_;
  int file_ = -1;
  bool exists_ = false;
};

}  // namespace

std::error_code replaceFile(const fs::path& place, std::string_view bytes) {
  NewFile file(place);
  return file.write(bytes) ? file.putInPlace() : lastError();
}

std::error_code writeInto(const fs::path& place, std::string_view bytes) {
  int file = -1;
  _wsopen_s(&file, place.c_str(), _O_WRONLY | _O_BINARY | _O_NOINHERIT, _SH_DENYNO, 0);
  if (file < 0) return lastError();
  const bool written = writeAll(file, bytes);
  const std::error_code error = lastError();
  return _close(file) == 0 && written ? std::error_code() : error;
}

#else

namespace {

// Blocks every signal that would end the program, for as long as the object lives.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t before_{};
};

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

mode_t permissionsOfNewFiles() {
  const mode_t mask = ::umask(0077);
  ::umask(mask);
  return 0666 & ~mask;
}

// A new file in a folder that is held open, so that no other folder can take its place. The file is
// removed with the object unless it was put in place.
class NewFile {
 public:
  explicit NewFile(int folder) : folder_(folder), file_(create()), exists_(file_) {}
  ~NewFile() {
    if (exists_) ::unlinkat(folder_, name_.c_str(), 0);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  bool write(std::string_view bytes) { return file_ && writeAll(file_.number(), bytes); }

  bool putInPlace(const char* name) {
    // A file system without permissions refuses this; the file is put in place all the same.
    static_cast<void>(::fchmod(file_.number(), permissionsAt(name)));
    if (!file_.close() || ::renameat(folder_, name_.c_str(), folder_, name) != 0) return false;
    exists_ = false;
    return true;
  }

 private:
  int create() {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    constexpr mode_t kOwnerAlone = 0600;
    int made = -1;
    for (int i = 0; i < kNamesToTry && made < 0 && (i == 0 || errno == EEXIST); ++i) {
      name_ = randomFileName();
      made = ::openat(folder_, name_.c_str(), kFlags, kOwnerAlone);
    }
    return made;
  }

  mode_t permissionsAt(const char* name) const {
    struct stat before {};
    const bool replaces = ::fstatat(folder_, name, &before, AT_SYMLINK_NOFOLLOW) == 0;
    return replaces && S_ISREG(before.st_mode) ? before.st_mode & 0777 : permissionsOfNewFiles();
  }

  int folder_;
  std::string name_;
  Descriptor file_;
  bool exists_;
};

}  // namespace

std::error_code replaceFile(const fs::path& place, std::string_view bytes) {
  const fs::path parent = place.has_parent_path() ? place.parent_path() : ".";
  const Descriptor folder(::open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return lastError();
  const SignalsBlocked blocked;
  NewFile file(folder.number());
  const bool done = file.write(bytes) && file.putInPlace(place.filename().c_str());
  return done ? std::error_code() : lastError();
}

std::error_code writeInto(const fs::path& place, std::string_view bytes) {
  Descriptor file(::open(place.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
  if (!file) return lastError();
  struct stat found {};
  if (::fstat(file.number(), &found) != 0) return lastError();
  if (S_ISREG(found.st_mode)) return std::make_error_code(std::errc::file_exists);
  return writeAll(file.number(), bytes) && file.close() ? std::error_code() : lastError();
}

#endif

}  // namespace platform
