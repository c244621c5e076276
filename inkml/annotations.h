#pragma once

#include <map>
#include <string>
#include <tinyxml.h>

namespace Orvo {

using Annotations = std::map<std::string, std::string>;

/// Appends an element "annotation" for each entry, in key order: its only child is the text, its
/// attribute "type" the key.
void writeAnnotations(const Annotations& annotations, TiXmlNode& parent);

/// Sets the entry that an element "annotation" stands for, in place of an earlier one of its type.
/// False, and nothing is set, for an element without "type" or whose first child is not a text.
bool readAnnotation(const TiXmlElement& element, Annotations& annotations);

}  // namespace Orvo
