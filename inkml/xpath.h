// What the XPath expressions of this format select, one function for each kind of expression.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class TiXmlElement;
class TiXmlNode;

namespace Orvo {

/// Each function takes linear time and compares names byte by byte, prefixes included. A source
/// that is null or has no parent selects nothing.

/// "name": the child elements of this name, in document order. A source that is no element has
/// none.
std::vector<const TiXmlElement*> childElements(const TiXmlNode* source, std::string_view name);

/// "/name": the child elements of this name of the source's **parent**, in document order. These
/// are the source's siblings and perhaps the source itself.
std::vector<const TiXmlElement*> siblingElements(const TiXmlNode* source, std::string_view name);

/// "//name[1]/text()" as a string. The source's parent, the source, and then all elements below the
/// source in document order are asked for their first child element of this name; the first such
/// child with a text node (CDATA too) directly in it gives its first one, up to its first NUL. So
/// the parent's own child comes first, wherever it stands. Empty when there is no text.
std::string childText(const TiXmlNode* source, std::string_view name);

}  // namespace Orvo
