#include "cli/private_copy.h"

#include <fstream>

namespace cli {

// Only an ink document needs an ending.
PrivateCopy::PrivateCopy(std::string_view bytes, FileKind kind) {
  if (kind == FileKind::inkml) {
    const std::filesystem::path file = place_.emplace<PrivateFolder>("prepared.kvo").file();
    std::ofstream out(file, std::ios::binary);
    if (out << bytes << std::flush) path_ = file;
  } else {
    const TemporaryFile& file = place_.emplace<TemporaryFile>();
    if (file.write(bytes)) path_ = file.path();
  }
}

}  // namespace cli
