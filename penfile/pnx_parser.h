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

/// Turns one pen recording into a document. Made for one file, used for one `parse`.
///
/// The pen's current pressure, tilt and time go into every point. Pressure and tilt are also
/// written back into the last point so far when it is the only one of its stroke; time is written
/// back into the last point wherever it is.
///
/// A status that starts a layer, or puts the pen down after it was up, sets pressure and tilt to 0
/// and makes the next point open a new layer or a new stroke; the pen going up ends no stroke. The
/// first point opens a layer and a stroke, also before any status. A point with y below 0 (y grows
/// downwards) is dropped: what was to be opened is left to the next point that is kept.
class PnxParser {
 public:
  /// Opens the file; one that cannot be opened makes `parse` fail.
  explicit PnxParser(const wchar_t* path) : stream(path) {}

  /// Takes over an open file; null is one that could not be opened.
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
  std::atomic<bool> finished = false;  ///< Set by anyone, it ends `parse` after the current packet.

 private:
  bool readDescriptor();
  bool readPackets();
  bool readPacket(unsigned char tag);
  template <typename Record>
  bool readRecord(Record& record);
  bool readPoint();
  bool readPressure();
  bool readTilt();
  bool readTime();
  bool readStatus();
  bool refuseDescriptor();
  void skipUnknown();

  void addPoint(const Point& point);
  void startLayer(const Point& point);
  void startStroke(const Point& point);
  void continueStroke(const Point& point);
  void forgetPressureAndTilt();

  bool complete();
  bool fail();
  void noteDroppedPoint();
  void noteUnknown(unsigned char code, unsigned length);
  void noteEnd(bool afterTag);

  // The last layer and its last stroke, null before the first point. Elements of a region stay
  // where they are, and every layer has a stroke, every stroke a point.
  Layer* layer_ = nullptr;
  Stroke* stroke_ = nullptr;
  bool penDown_ = false;
  bool newLayerPending_ = true;
  bool newStrokePending_ = true;
  std::int64_t packetOffset_ = 0;  // Where the current packet starts.
  std::int64_t nextOffset_ = 0;    // Where the next one will.
  std::int64_t lastUnknown_ = 0;
  SkipWatcher* watcher_ = nullptr;
  ParseReport report_;
};

}  // namespace Orvo
