// The JSON form of an ink document.
#pragma once

#include <string>

#include "cli/recording.h"

namespace cli {

/// The ink document of a recording, one line for each stroke:
///
///     {"kind":"pen"|"inkml","complete":true,"bounds":{"min":P,"max":P},"annotations":{type:text},
///      "header":{"descriptor":[b0,format,b2,b3],
///                "physical":{"byte0":n,"word1":[a,b],"word2":[a,b],"byte5":n,"byte6":n},
///                "dateTime":[7 bytes]},                                      pen recordings only
///      "definitions":{"traceFormats":[{"id":s}],"brushes":[{"id":s,"color":s,...}],
///                     "contexts":[{"id":s,"brush":id,"traceFormat":id}]},     ink documents only
///      "layers":[{"bounds":{...},"annotations":{},
///                 "strokes":[{"bounds":{...},"points":[P,...]},...]},...]}
///
/// P = [x, y, z, pressure, tiltX, tiltY, timestamp], in ink units and as the pen delivered it.
std::string inkToJson(const Recording& recording);

}  // namespace cli
