#include "cli/whole_file.h"

#include <array>
#include <cstdio>
#include <system_error>

#include "cli/recording.h"
#include "cli/sentences.h"
#include "platform/file.h"

namespace cli {

WholeFile readWholeFile(const std::filesystem::path& file) {
  WholeFile all;
  std::error_code error;
  const platform::File stream = platform::openFile(wideName(file).c_str(), "rb");
  if (!stream || std::filesystem::is_directory(file, error)) return {"", explainOpening(file)};
  std::array<char, 65536> part{};
  while (const std::size_t size = std::fread(part.data(), 1, part.size(), stream.get()))
    all.bytes.append(part.data(), size);
  if (std::ferror(stream.get()) != 0) {
    return {"", "the file could not be read to its end: the system reports a read error"};
  }
  return all;
}

}  // namespace cli
