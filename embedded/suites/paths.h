// Names in a file path. Both '/' and '\' are separators, on every system.
#pragma once

#include <string>
#include <string_view>

namespace embedded {

/// What follows the last separator.
std::u32string_view lastName(std::u32string_view path);

/// What follows the last dot of the last name; empty when there is no dot.
std::u32string_view extensionOf(std::u32string_view path);

}  // namespace embedded
