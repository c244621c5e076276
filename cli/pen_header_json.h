// The header of a pen recording as JSON.
#pragma once

#include "art/json_writer.h"
#include "penfile/pnx_document.h"

namespace cli {

/// Adds the key "header":
///
///     {"descriptor":[b0,format,b2,b3],
///      "physical":{"byte0":n,"word1":[a,b],"word2":[a,b],"byte5":n,"byte6":n},
///      "dateTime":[7 bytes]}
void writeHeader(art::JsonWriter& json, const Orvo::PnxDocument& document);

}  // namespace cli
