// Problems in the layers of an ink document: groups, traces and annotations.
#pragma once

#include "inkml/problem_list.h"

class TiXmlNode;

namespace Orvo {

/// Adds what is left out of, or read differently in, the children of `ink`; whether any trace was
/// read.
bool examineLayers(const TiXmlNode& ink, ProblemList& problems);

}  // namespace Orvo
