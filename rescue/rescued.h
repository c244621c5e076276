// What was saved of a damaged file, and what was left out and why.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

/// Which files are mended.
enum class Mend : std::uint8_t {
  damaged,   ///< Those that are not sound.
  doubtful,  ///< Sound ones, too, where they look damaged.
};

/// Bytes of the damaged file, counted from its start: from `begin` up to, but not including, `end`.
struct Stretch {
  std::size_t begin = 0;
  std::size_t end = 0;
  LeftOut reason = LeftOut::unreadable;

  bool operator==(const Stretch&) const = default;
};

/// What could be saved of a file of either kind.
struct Rescued {
  /// The file was sound, and `bytes` is the file as it came.
  bool sound = false;
  /// Something was saved, or the file was sound. Otherwise `bytes` is empty: it holds no recording
  /// of its kind.
  bool saved = false;
  /// A recording of the same kind, which is read to its end without a warning.
  std::string bytes;

  /// In order of their place, not touching one another unless the reasons differ.
  std::vector<Stretch> leftOut;
  /// Points in `bytes`, also those that lie above the sheet.
  std::size_t pointsKept = 0;
  /// Those and an estimate of the lost ones, by the length of what was left out.
  std::size_t pointsAbout = 0;

  std::size_t pointsDropped = 0;  ///< Points left out since damage had made them up.
  std::size_t strokesBroken = 0;  ///< Places where bytes are missing and a stroke was ended.
};

}  // namespace rescue
