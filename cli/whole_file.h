// All bytes of a file.
#pragma once

#include <filesystem>
#include <string>

namespace cli {

struct WholeFile {
  std::string bytes;
  std::string problem;  ///< Why the file could not be read; empty if it was.
};

WholeFile readWholeFile(const std::filesystem::path& file);

}  // namespace cli
