#include "cli/temporary_file.h"

#include <fstream>
#include <iterator>
#include <system_error>

#ifdef _WIN32
#include <random>
#else
#include <cstdlib>
#include <unistd.h>
#endif

namespace cli {

namespace fs = std::filesystem;

#ifdef _WIN32

// In a folder of its own, so that nobody else's file is met.
TemporaryFile::TemporaryFile() {
  std::random_device random;
  std::error_code error;
  fs::path folder;
  do {
    folder = fs::temp_directory_path(error) / ("penwick-" + std::to_string(random()));
  } while (!fs::create_directory(folder, error) && !error);
  path_ = folder / "file";
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  fs::remove_all(path_.parent_path(), ignored);
}

#else

TemporaryFile::TemporaryFile() {
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  if (error) return;
  std::string name = (folder / "penwick-XXXXXX").native();
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) return;
  ::unlink(name.c_str());
  held_.reset(::fdopen(descriptor, "wb"));
  if (held_) {
    path_ = "/proc/self/fd/" + std::to_string(descriptor);
  } else {
    ::close(descriptor);
  }
}

TemporaryFile::~TemporaryFile() = default;

#endif

std::string TemporaryFile::bytes() const {
  std::ifstream file(path_, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace cli
