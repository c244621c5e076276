// The bytes of a recording, part by part.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "facts/packet_reader.h"
#include "tests/support/pen/pen_file_builder.h"

namespace factstest {

/// Gives the bytes of a recording in parts of `size`.
inline facts::NextBytes partsOf(const pentest::Bytes& bytes, std::size_t size = 4096) {
  return [text = std::string(bytes.begin(), bytes.end()), place = std::size_t{0},
          size]() mutable -> std::string_view {
    const std::string_view part = std::string_view(text).substr(place, size);
    place += part.size();
    return part;
  };
}

}  // namespace factstest
