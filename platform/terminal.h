// Whether somebody watches, and on how large a screen.
#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>

namespace platform {

/// In characters.
struct TerminalSize {
  std::size_t columns = 80;
  std::size_t rows = 24;
};

/// The size of the terminal that a stream leads to, 80 x 24 where it does not say; nothing where
/// the stream does not lead to a terminal.
std::optional<TerminalSize> terminalOf(std::FILE* stream);

}  // namespace platform
