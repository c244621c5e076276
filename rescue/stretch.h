// What was left out of a damaged file, and why.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace rescue {

/// Why bytes of a damaged recording are not in the mended one.
enum class LeftOut : std::uint8_t {
  unreadable,    ///< No packets can be made out there.
  junkInFront,   ///< Before the recording begins.
  junkBehind,    ///< Behind its last packet; the cut packet at the end of a cut file, too.
  doubled,       ///< A run of bytes that stands there twice in a row.
  headerPacket,  ///< Header packets of a further recording.
  madeUp,        ///< A whole packet whose values damage made up.
};

/// A sentence part that says it, such as "cannot be read".
std::string_view explain(LeftOut reason);

/// Bytes of the damaged file, counted from its start: from `begin` up to, but not including, `end`.
struct Stretch {
  std::size_t begin = 0;
  std::size_t end = 0;
  LeftOut reason = LeftOut::unreadable;

  bool operator==(const Stretch&) const = default;
};

}  // namespace rescue
