// The host's file path, owned.
#pragma once

#include "plugin/unicode_string.h"

namespace ai {

/// Holds a single pointer, so that it can be passed to the host by address. What it points to
/// belongs to the host. Every operation but the destructor throws ai::Error with the host's code
/// when it fails.
class FilePath {
 public:
  FilePath() = default;
  /// A copy of a path that is owned elsewhere, such as a message's.
  explicit FilePath(const hostapi::FilePathBody& other);
  /// From a system path; on Windows both separators are accepted.
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
static_assert(sizeof(FilePath) == hostapi::kPointerSize);

/// The system path, with its drive and separators, of a path that is owned elsewhere.
UnicodeString fullPath(const hostapi::FilePathBody& path, bool displayName);

}  // namespace ai
