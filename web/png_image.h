// What a PDF needs to know of a PNG file to hold its pixels as they are.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace web {

struct PngImage {
  int width = 0;
  int height = 0;
  int channels = 0;    ///< 1: grey; 3: red, green and blue
  std::string pixels;  ///< Filtered and deflated, as in the file.
};

/// Nothing for bytes that are not an opaque PNG of 8 bits a channel without interlacing.
std::optional<PngImage> readPng(std::string_view file);

}  // namespace web
