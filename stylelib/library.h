// The style library that the host imports: the user's own file, or the built-in one.
#pragma once

#include <string>

#include "stylelib/native_library.h"

namespace stylelib {

/// Where the plug-in looks for its style library, as native bytes: "Penwick/brush_pressure.ai" in
/// the user's local application-data folder, or in the root folder if the system has no such
/// folder.
std::string defaultLibraryPath();

/// The library that is shipped. It has one style, "TrillowStyle": a black round pen of 1.5 points,
/// which pressure varies by 1.2 points either way, with a stroke weight of 1.
NativeLibrary builtInLibrary();

/// True when there is anything at `path`, even if it is not a library or cannot be read.
bool libraryFileExists(const std::string& path);

/// Reads the file at `path`. Only a regular file is read: a pipe or a device is refused without
/// waiting for it.
NativeLibrary readLibraryFile(const std::string& path);

}  // namespace stylelib
