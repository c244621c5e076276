// An art document as JSON.
#pragma once

#include <string>

#include "art/document.h"

namespace art {

/// The document with one line for each path, bottom to top, and a final line end; the same document
/// always gives the same bytes:
///
///     {"document":{"width":w,"height":h,"rulerOrigin":[h,v],"page":[left,bottom,right,top]},
///      "layers":[{"name":s,"editable":b,"art":[OBJECT,...]},...]}
///     OBJECT: {"type":"path","closed":b,"segments":[[p.h,p.v,in.h,in.v,out.h,out.v,corner],...],
///              "tablet":[[offset,value],...],"style":s|null}
///         or: {"type":"group","art":[OBJECT,...]}
///
/// "tablet" is the pressure. Only a path with tablet data of another kind has, after "tablet",
/// "otherTablet":{"stylusWheel"|"tilt"|"bearing"|"rotation":[[offset,value],...],...}.
std::string toJson(const Document& document);

}  // namespace art
