// The host's file path, owned.
#pragma once

#include "plugin/unicode_string.h"

namespace ai {

/// One pointer, so that it can cross the border by address. Its inside belongs to the host. Every
/// operation but the destructor throws ai::Error with the host's code when it fails.
class FilePath {
 public:
  FilePath() = default;
  /// A copy of a path that somebody else owns, such as a message's.
  explicit FilePath(const hostapi::FilePathBody& other);
  /// From the system's path; both separators of Windows are taken.
  explicit FilePath(const UnicodeString& text, bool expandShortNames = true);
  FilePath(const FilePath& other) : FilePath(other.body_) {}
  FilePath& operator=(const FilePath&) = delete;
  ~FilePath();

  /// Without the dot.
  UnicodeString GetFileExtension() const;

  const hostapi::FilePathBody* body() const { return &body_; }

 private:
  hostapi::FilePathBody body_;
};
static_assert(sizeof(FilePath) == 8);

/// The system's path, with its drive and separators, of a path that somebody else owns.
UnicodeString fullPath(const hostapi::FilePathBody& path, bool displayName);

}  // namespace ai
