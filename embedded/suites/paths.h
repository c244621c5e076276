// Names inside a file path. Both '/' and '\' separate, on every system.
#pragma once

#include <string>
#include <string_view>

namespace embedded {

/// Behind the last separator.
std::u32string_view lastName(std::u32string_view path);

/// Behind the last dot of the last name; empty when there is none.
std::u32string_view extensionOf(std::u32string_view path);

}  // namespace embedded
