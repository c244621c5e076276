// Names in any spelling: what another program may have meant by them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

class TiXmlElement;
class TiXmlNode;

namespace Orvo {

/// The name without its prefix, in lower case (ASCII): "ink:traceGroup" means "tracegroup".
std::string meaningOf(std::string_view name);

/// Whether the element's name means `meaning`, which is in lower case.
bool hasMeaning(const TiXmlElement& element, std::string_view meaning);

/// Calls `visit` with each element below `node` whose name means `meaning`, in document order.
void visitEach(const TiXmlNode& node, std::string_view meaning,
               const std::function<void(const TiXmlElement&)>& visit);

/// How many traces there are below `node` at any depth, in any spelling ("ink:Trace").
std::uint64_t countTraces(const TiXmlNode& node);

}  // namespace Orvo
