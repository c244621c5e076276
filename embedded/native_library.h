// Style library files in the host's native format, from level 9 to CS6.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "art/style.h"

namespace embedded {

/// What a library file holds, or one sentence that says why it could not be read and what was
/// expected.
struct NativeLibrary {
  std::vector<art::Style> styles;  ///< those of the Graphic Styles list, in its order
  std::string problem;
};

/// Reads a native file:
///
/// 1. a PDF whose page carries the native data as private streams, deflated each for itself (level
///    9) or as one run over all of them behind "%AI12_CompressedData" (CS6), or
/// 2. the native data as bare text, which begins "%!PS-Adobe".
///
/// A style with a calligraphic brush gets it with size, roundness and angle; every other style is
/// kept by its name. Nothing in the bytes is trusted: sizes are bounded, and what cannot be made
/// sense of is a problem or left out.
NativeLibrary readNativeLibrary(std::span<const unsigned char> bytes);

}  // namespace embedded
