// Which programs' InkML a document is.
#pragma once

#include <string_view>

namespace translate {

enum class DocumentForm {
  subset,  ///< The plug-in's own: the root is `ink`, it holds a `tracegroup`, and nowhere stands a
           ///< `traceGroup`. The plug-in's reader reads it as it is meant.
  other,   ///< InkML in any other form: the plug-in's reader would see little of it or nothing.
  notInk,  ///< No InkML: not XML, another root, or nothing at all.
};

/// Takes any bytes, gzip too. A document that breaks off or is not well-formed is judged by what
/// stands before that place. The time is linear, and nothing is kept of the document.
DocumentForm formOf(std::string_view bytes);

}  // namespace translate
