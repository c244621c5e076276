#pragma once

#include <string>
#include <string_view>
#include <tinyxml.h>
#include <vector>

namespace Orvo {

/// The three kinds of XPath expressions in use, evaluated in linear time. Names are compared byte
/// by byte, prefixes included. A source that is null or has no parent selects nothing; so does any
/// other expression.

/// The elements that a path of one step selects, in document order: "name" the child elements of
/// the source, itself an element, that have this name; "/name" those of the source's **parent**, so
/// the source's siblings and perhaps the source.
std::vector<const TiXmlElement*> selectElements(const TiXmlNode* source, std::string_view path);

/// The text nodes, CDATA too, that "//name[1]/text()" selects. From the source's parent, then from
/// the source and all elements below it in document order, the first child element of the name is
/// taken, if there is one, with all its direct text children. So the parent's own child comes
/// first, wherever it stands.
std::vector<const TiXmlText*> selectTexts(const TiXmlNode* source, std::string_view path);

/// The value of the first of `selectTexts`, up to its first NUL; empty when there is none.
std::string selectString(const TiXmlNode* source, std::string_view path);

}  // namespace Orvo
