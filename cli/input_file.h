// A recording to read, whether it is a file, a pipe or standard input.
#pragma once

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "cli/private_folder.h"
#include "cli/recording.h"

namespace cli {

/// Whether a name on the command line stands for standard input.
inline bool isStandardInput(const std::filesystem::path& name) {
  return name == "-";
}

inline constexpr char kThisIsADevice[] =
    "this is a device, not a file; save the recording to a file and open that";

/// Whether a name has one of the endings that decide how a file is read.
bool nameDecidesKind(const std::filesystem::path& name);

/// More white space than any ink document begins with.
inline constexpr std::size_t kMostWhiteSpace = std::size_t{1} << 20;

/// What a recording that begins in this way is; nothing where that cannot be told yet.
std::optional<FileKind> kindByStart(std::string_view start);

/// One recording that a command reads, under a path that can be opened more than once and whose
/// ending chooses the right reader. For that, standard input and pipes are copied to a private
/// file, and a file that is to be read as another kind than its name suggests gets a second name.
class InputFile {
 public:
  /// `kind` decides how the file is read; without it the name does, and where the name says
  /// nothing, as with standard input, the contents: an ink document begins with "<", after any
  /// white space, or is in UTF-16 or compressed with gzip.
  InputFile(std::filesystem::path name, std::optional<FileKind> kind);

  /// An ink document that comes through a pipe of this name, of which `start` was already read;
  /// `next` gives further bytes, none at its end.
  InputFile(std::filesystem::path name, const std::string& start,
            const std::function<std::string_view()>& next);

  /// As the person gave it.
  const std::filesystem::path& name() const { return name_; }
  const std::filesystem::path& path() const { return path_; }
  /// Why it cannot be read, in one sentence. A missing file or a folder is no problem here: the
  /// readers report these.
  const std::optional<std::string>& problem() const { return problem_; }

 private:
  void prepareFile(std::optional<FileKind> kind);
  void copyStream(std::FILE* stream, std::optional<FileKind> kind);
  void copyBytes(std::string_view start, const std::function<std::string_view()>& next);
  bool makeFolder(FileKind kind);
  void giveOtherEnding(FileKind kind);

  std::filesystem::path name_;
  std::filesystem::path path_;
  std::unique_ptr<PrivateFolder> folder_;
  std::optional<std::string> problem_;
};

}  // namespace cli
