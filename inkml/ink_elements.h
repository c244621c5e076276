// The elements of an ink document, and which of them are read.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "inkml/definitions.h"
#include "inkml/ink_report.h"

class TiXmlDocument;

namespace Orvo {

struct InkElement {
  int line = 0;   ///< From 1.
  int depth = 0;  ///< 0 for an element at the top.
  std::string name;
  std::string id;    ///< The attribute "id"; empty without one.
  std::string type;  ///< The attribute "type", likewise.
  bool isRead = false;
  /// Why it is not read, or what is wrong with one that is. Nothing also for elements that have no
  /// meaning, and for those inside others that are not read.
  std::optional<InkProblemKind> problem;
  std::optional<std::uint64_t> points;  ///< Of a trace that is read.
};

using VisitInkElement = std::function<void(const InkElement&)>;

/// Calls `visit` with every element that the XML library found, in document order. `read` is what
/// definitions that were empty before hold after reading the document.
void visitElements(const TiXmlDocument& xml, const InkMLDefinitions& read,
                   const VisitInkElement& visit);

}  // namespace Orvo
