// A private file with the bytes of a recording.
#pragma once

#include <filesystem>
#include <string_view>
#include <variant>

#include "cli/private_folder.h"
#include "cli/recording.h"
#include "cli/temporary_file.h"

namespace cli {

inline constexpr char kNoSpaceForCopy[] =
    "there is no space for a temporary copy of what could be saved";

/// A private file with the bytes of a recording, under a name by which it is read as one of its
/// kind. It is removed with the object.
class PrivateCopy {
 public:
  PrivateCopy(std::string_view bytes, FileKind kind);

  /// Empty where there is no space for it.
  const std::filesystem::path& path() const { return path_; }

 private:
  std::variant<std::monostate, TemporaryFile, PrivateFolder> place_;
  std::filesystem::path path_;
};

}  // namespace cli
