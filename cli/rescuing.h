// What can be saved of a damaged recording, whatever its kind.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/private_folder.h"
#include "cli/recording.h"
#include "cli/temporary_file.h"
#include "rescue/rescued.h"

namespace cli {

/// What could be saved of one recording. One that is sound needs no mending.
struct Rescued : rescue::Rescued {
  FileKind kind = FileKind::pen;
  /// Where nothing was saved: why, in one sentence. Otherwise empty.
  std::string problem;
  std::vector<std::string> repairs;  ///< What was put right, a few words each.
};

/// Reads a file and saves what can be saved of it.
Rescued rescueRecording(const std::filesystem::path& file, FileKind kind,
                        rescue::Mend mend = rescue::Mend::damaged);

/// What was kept and lost and where, such as "3 of about 5 points kept, 1 stretch left out (bytes
/// 10-22)".
std::string describe(const Rescued& rescued);

/// A sentence about a damaged recording, with what `penwick rescue` would save of it. Unchanged for
/// an empty sentence, a sound recording, one of more than 64 MiB, and where nothing can be saved.
std::string withRescue(std::string sentence, const std::filesystem::path& file, FileKind kind);

/// What was left out of a whole recording, in one sentence, and what `penwick rescue` would save of
/// it where it is damaged; empty where nothing was left out.
std::string omissionsOf(const Recording& recording, const std::filesystem::path& file);

inline constexpr char kNoSpaceForCopy[] =
    "there is no space for a temporary copy of what could be saved";

/// A private file with what could be saved of a recording, under a name by which it is read as one
/// of its kind. It is removed with the object.
class MendedCopy {
 public:
  explicit MendedCopy(const Rescued& rescued);

  /// Empty where there is no space for it.
  const std::filesystem::path& path() const { return path_; }

 private:
  std::variant<std::monostate, TemporaryFile, PrivateFolder> place_;
  std::filesystem::path path_;
};

/// A recording to read: the file itself, or, where it is damaged and that is asked for, a private
/// copy of what could be saved of it.
class MendedInput {
 public:
  MendedInput(std::filesystem::path file, bool isToBeMended);

  /// Where nothing could be saved this is the file itself: its reader says what is wrong.
  const std::filesystem::path& path() const { return path_; }
  /// Why there is no copy of what could be saved, in one sentence.
  const std::optional<std::string>& problem() const { return problem_; }
  /// What was kept and lost, or nothing where the file is read as it is.
  const std::string& summary() const { return summary_; }

 private:
  std::unique_ptr<MendedCopy> copy_;
  std::filesystem::path path_;
  std::string summary_;
  std::optional<std::string> problem_;
};

}  // namespace cli
