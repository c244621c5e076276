#include "cli/temporary_file.h"

#include <fstream>
#include <iterator>
#include <random>
#include <system_error>

namespace cli {

namespace fs = std::filesystem;

TemporaryFile::TemporaryFile() {
  std::random_device random;
  std::error_code error;
  do {
    folder_ = fs::temp_directory_path(error) / ("penwick-" + std::to_string(random()));
  } while (!fs::create_directory(folder_, error) && !error);
  path_ = folder_ / "file";
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

std::string TemporaryFile::bytes() const {
  std::ifstream file(path_, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace cli
