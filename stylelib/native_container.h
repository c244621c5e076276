// Extracts the native text from the bytes of a file.
#pragma once

#include <span>
#include <string>

namespace stylelib {

/// The native data of a file, or why there is none.
struct NativeText {
  std::string text;
  std::string problem;
};

/// Extracts the native data from its PDF, or takes bare text as it is.
NativeText unwrapNative(std::span<const unsigned char> bytes);

}  // namespace stylelib
