// Problems in the definitions of an ink document.
#pragma once

#include "inkml/definitions.h"
#include "inkml/problem_list.h"

class TiXmlNode;

namespace Orvo {

/// Adds what is skipped in the node "definitions" below `ink`. `read` is what was read from it.
void examineDefinitions(const TiXmlNode& ink, const InkMLDefinitions& read, ProblemList& problems);

/// Adds the trace formats anywhere below `ink`, in any spelling, that declare other channels or
/// units than those that points are always read in.
void examineFormats(const TiXmlNode& ink, ProblemList& problems);

}  // namespace Orvo
