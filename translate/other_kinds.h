// What a file is that is no XML, told by how it begins.
#pragma once

#include <string_view>

namespace translate {

/// Such as "a ZIP archive"; empty for bytes that may be XML.
std::string_view otherKindOf(std::string_view bytes);

}  // namespace translate
