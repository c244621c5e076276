// How much of a library is read. A sound library has some tens of kilobytes; each limit is far
// above that and keeps time and memory in proportion to the file, even a hostile one.
#pragma once

#include <cstddef>

namespace stylelib {

/// Bytes of the file.
constexpr std::size_t kMostFileBytes = std::size_t{16} << 20;

/// Bytes that all streams of a file together inflate to.
constexpr std::size_t kMostInflatedBytes = std::size_t{16} << 20;

/// Objects of a PDF.
constexpr std::size_t kMostObjects = 100'000;

/// Bytes of native text in the art styles, their list and the calligraphic brushes together.
constexpr std::size_t kMostStyleText = std::size_t{1} << 20;

/// Levels of nested ": ... ;" blocks.
constexpr std::size_t kDeepestNesting = 100;

}  // namespace stylelib
