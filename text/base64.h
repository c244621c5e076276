// Bytes as base64.
#pragma once

#include <string>
#include <string_view>

namespace text {

/// `bytes` in the alphabet of RFC 4648, section 4, with padding.
std::string base64(std::string_view bytes);

}  // namespace text
