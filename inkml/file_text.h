// What the bytes of an ink file tell about it, before and besides its XML tree.
#pragma once

#include <string>
#include <string_view>

namespace Orvo {

/// The encoding that the declaration of an XML text names, if that is not UTF-8 and the text is not
/// ASCII alone; otherwise empty. Ink documents are always read as UTF-8.
std::string foreignEncoding(std::string_view text);

/// Whether the end of a document, "</ink>" in any spelling, is missing.
bool endsEarly(std::string_view text);

}  // namespace Orvo
