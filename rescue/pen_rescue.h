// Saves what can be saved of a damaged pen recording.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "rescue/rescued.h"

namespace rescue {

/// How a transfer that took the recording for text changed it.
enum class TextTransfer : std::uint8_t {
  none,
  carriageReturnsAdded,    ///< 0A turned into 0D 0A: undone without loss.
  carriageReturnsRemoved,  ///< 0D 0A turned into 0A: put back where a packet was a byte short.
  highBytesReplaced,       ///< Bytes from 80 up turned into "?": tags are restored, points that
                           ///< may hold such a byte are left out.
};

/// What could be saved of a pen recording. `isSoundPenRecording` says which are sound.
struct PenRescue : Rescued {
  bool descriptorMended = false;      ///< The first packet was missing or damaged.
  std::size_t furtherRecordings = 0;  ///< Recordings behind the first, which became layers.
  std::size_t statusesMended = 0;     ///< Pen-up, pen-down and layer packets put in or put right.
  TextTransfer transfer = TextTransfer::none;
};

/// Mends a pen recording, damaged or not. Takes any bytes; the time grows with their number, the
/// memory too (a few times the recording). Sound packets are kept byte for byte and in order. A
/// sound recording comes back as it came, whatever it holds, except where a transfer as text turned
/// its bytes from 80 up into "?", or where `mend` is `doubtful`: then leaps, runs that stand there
/// twice, and unknown packets that hide others are taken for damage. Throws nothing but
/// `std::bad_alloc`.
PenRescue rescuePenRecording(std::string_view recording, Mend mend = Mend::damaged);

/// Whether the parser reads the recording to its end, every packet is whole and none has the length
/// 0, as zero bytes have. What the packets hold does not matter.
bool isSoundPenRecording(std::string_view recording);

}  // namespace rescue
