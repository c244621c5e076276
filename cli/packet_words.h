// The packets of a pen recording in words.
#pragma once

namespace cli {

/// What a packet of this tag holds, such as "coordinate"; "unknown" for a tag that has no known
/// meaning.
const char* nameOfPacket(unsigned char tag);

}  // namespace cli
