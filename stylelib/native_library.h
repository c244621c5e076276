// Style library files in the host's native format, from level 9 to CS6.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "art/style.h"

namespace stylelib {

/// What a library file holds, or why it could not be read, as the end of a sentence: "it is empty".
struct NativeLibrary {
  std::vector<art::Style> styles;  ///< those in the Graphic Styles list, in its order
  std::string problem;
};

/// Reads a native file:
///
/// 1. a PDF whose page carries the native data as private streams, either each deflated on its own
///    (level 9) or all together as one run after "%AI12_CompressedData" (CS6), or
/// 2. the native data as bare text, which begins with "%!PS-Adobe".
///
/// A style with a calligraphic brush gets the brush's size, roundness and angle; of any other style
/// only the name is kept. Nothing in the bytes is trusted: what makes no sense is a problem or is
/// left out, the limits in stylelib/limits.h hold, and time and memory are in proportion to the
/// bytes and what they inflate to.
NativeLibrary readNativeLibrary(std::span<const unsigned char> bytes);

}  // namespace stylelib
