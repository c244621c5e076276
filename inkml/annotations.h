// Annotations of documents and layers: texts by type.
#pragma once

#include <map>
#include <string>

class TiXmlElement;
class TiXmlNode;

namespace Orvo {

using Annotations = std::map<std::string, std::string>;

/// Appends an element "annotation" for each entry, in key order. Its only child is the text; its
/// attribute "type" is the key.
void writeAnnotations(const Annotations& annotations, TiXmlNode& parent);

/// Sets the entry of an element "annotation", replacing an earlier one of the same type. False, and
/// nothing is set, for an element without "type" or whose first child is not a text.
bool readAnnotation(const TiXmlElement& element, Annotations& annotations);

}  // namespace Orvo
