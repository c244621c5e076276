// The style library that the host imports: the user's own file, or the built-in one.
#pragma once

#include <string>

#include "embedded/native_library.h"

namespace embedded {

/// Where the plug-in looks for its style library, as native bytes: "Penwick/brush_pressure.ai" in
/// the user's local application-data folder, or at the root where the system knows no such folder.
std::string defaultLibraryPath();

/// The library that is shipped: "TrillowStyle", a round pen of 1.5 points, 1.2 points more or less
/// by pressure, black, stroke weight 1.
NativeLibrary builtInLibrary();

/// True when there is a file at `path`.
bool libraryFileExists(const std::string& path);

/// Reads the file at `path`.
NativeLibrary readLibraryFile(const std::string& path);

}  // namespace embedded
