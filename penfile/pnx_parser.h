// The parser of pen recordings.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <utility>

#include "penfile/packets.h"
#include "penfile/parse_report.h"
#include "penfile/pen_file_stream.h"
#include "penfile/pnx_document.h"
#include "penfile/shared_ref.h"
#include "penfile/skip_watcher.h"
#include "platform/file.h"

namespace Orvo {

/// Turns one pen recording into a document. A parser is for one file and one call of `parse`.
///
/// Others may fill or replace the document, before `parse` or from a watcher while it runs: for
/// each packet the parser asks it again for its last layer and stroke. It must never be null.
///
/// The pen's current pressure, tilt and time go into every point. Pressure and tilt are also
/// written back into the last point so far when it is the only one of its stroke; time is written
/// back into the last point wherever it is.
///
/// A status that starts a layer, or puts the pen down after it was up, sets pressure and tilt to 0
/// and makes the next point open a new layer or a new stroke; the pen going up does not end a
/// stroke. The first point opens a layer and a stroke, even before any status. A point with y below
/// 0 (y grows downwards) is dropped: what it would have opened is opened by the next point that is
/// kept.
class PnxParser {
 public:
  /// Opens the file; one that cannot be opened makes `parse` fail.
  explicit PnxParser(const wchar_t* path) : stream(path) {}

  /// Takes ownership of an open file; null is one that could not be opened.
  explicit PnxParser(platform::File file) : stream(std::move(file)) {}

  /// Reads the file into the document. True, and the document is complete, when the whole file was
  /// read or `finished` was set. With `finished` set beforehand: true, but nothing is read and the
  /// document is not complete. A failure leaves what was read so far in the document.
  bool parse();

  /// Tells `watcher`, which must outlive `parse`, of every skipped packet. A packet of length 0 is
  /// read again for ever unless the watcher sets `finished`.
  void watchSkips(SkipWatcher& watcher) { watcher_ = &watcher; }

  /// How `parse` went.
  const ParseReport& report() const { return report_; }

  std::string text;                                    ///< Always empty.
  PressureData pressure;                               ///< The pen's current pressure.
  TiltData tilt;                                       ///< The pen's current tilt.
  TimestampData time;                                  ///< The pen's current time.
  Status status;                                       ///< Unused: each status has its own record.
  SharedRef<PnxDocument> document{new PnxDocument()};  ///< What is being filled.
  PenFileStream stream;
  std::atomic<bool> finished =
      false;  ///< Anyone may set it: `parse` ends after the current packet.

 private:
  class Run;  // The state of one `parse`.

  SkipWatcher* watcher_ = nullptr;
  ParseReport report_;
};

}  // namespace Orvo
