// Opening regular files only.
#pragma once

#include "platform/file.h"

namespace platform {

/// Why there is no file to read.
enum class OpenFailure {
  none,
  missing,     ///< nothing has that name
  notRegular,  ///< a folder, a pipe, a device or the like
  unreadable,  ///< a file that cannot be opened, or a path that cannot be followed
};

/// A file that is open for reading, or else why it is not.
struct RegularFile {
  File file;
  OpenFailure failure = OpenFailure::none;
};

/// Opens the file at the wide, zero-terminated `path` for reading, as bytes. Symbolic links are
/// followed. Only a regular file is opened: a pipe or a device of that name is never waited on.
RegularFile openRegularFile(const wchar_t* path);

}  // namespace platform
