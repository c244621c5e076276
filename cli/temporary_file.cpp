#include "cli/temporary_file.h"

#include <fstream>
#include <iterator>
#include <system_error>

#if !defined(_WIN32) && !defined(__EMSCRIPTEN__)
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace cli {

namespace fs = std::filesystem;

#if defined(_WIN32) || defined(__EMSCRIPTEN__)

// In a folder of its own, so that no other file can have its name.
TemporaryFile::TemporaryFile() : path_(folder_.file()) {}

#else

namespace {

// In memory, which needs no folder, or else without a name in the temporary folder.
int openUnnamed() {
  const int inMemory = ::memfd_create("penwick", MFD_CLOEXEC);
  if (inMemory >= 0) return inMemory;
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  constexpr mode_t kOwnerAlone = 0600;
  return ::open(error ? "/tmp" : folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kOwnerAlone);
}

}  // namespace

TemporaryFile::TemporaryFile() {
  const int descriptor = openUnnamed();
  if (descriptor < 0) return;
  held_.reset(::fdopen(descriptor, "wb"));
  if (held_) {
    path_ = "/proc/self/fd/" + std::to_string(descriptor);
  } else {
    ::close(descriptor);
  }
}

#endif

TemporaryFile::~TemporaryFile() = default;

bool TemporaryFile::write(std::string_view bytes) const {
  std::ofstream file(path_, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return file.flush().good();
}

std::string TemporaryFile::bytes() const {
  std::ifstream file(path_, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace cli
