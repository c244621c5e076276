// Compression for the pictures that are compressed.
#pragma once

#include <string>
#include <string_view>

namespace render {

/// One zlib stream. Fast rather than small: outlines hardly get smaller by more effort. Throws
/// `std::bad_alloc`.
std::string deflated(std::string_view bytes);

}  // namespace render
