#include "penfile/pnx_parser.h"

#include <algorithm>
#include <cstdint>

#include "log/logger.h"

namespace Orvo {

// One call of `parse`: what is remembered from packet to packet lives no longer than the call.
class PnxParser::Run {
 public:
  explicit Run(PnxParser& parser)
      : parser_(parser),
        stream_(parser.stream),
        report_(parser.report_),
        nextOffset_(std::max<std::int64_t>(stream_.position(), 0)) {}

  bool readFile();

 private:
  bool readDescriptor();
  bool readPackets();
  bool readPacket(unsigned char tag);
  template <class Record>
  bool readRecord(Record& record);
  template <class Record>
  bool readHeader(Record PnxDocument::*header);
  bool readPoint();
  bool readPressure();
  bool readTilt();
  bool readTime();
  bool readStatus();
  bool refuseDescriptor();
  void skipUnknown();

  Stroke* lastStroke();
  Point* onlyPoint();
  void addPoint(const Point& point);
  // Rare, and kept out of the way of points that continue a stroke.
  [[gnu::noinline]] void startLayer(const Point& point);
  [[gnu::noinline]] void startStroke(Layer& layer, const Point& point);
  void resetPressureAndTilt();

  bool complete();
  bool fail();
  void noteDroppedPoint();
  void noteUnknown(unsigned char code, unsigned length);
  void noteEnd(bool afterTag);

  PnxParser& parser_;
  PenFileStream& stream_;
  ParseReport& report_;
  bool penDown_ = false;
  bool newLayerPending_ = true;
  bool newStrokePending_ = true;
  std::int64_t nextOffset_;                  // Where the next packet will start.
  std::int64_t packetOffset_ = nextOffset_;  // Where the current one does.
  std::int64_t lastUnknown_ = 0;
};

bool PnxParser::parse() {
  if (finished) return true;
  report_ = {};
  return Run(*this).readFile();
}

template <class Record>
bool PnxParser::Run::readRecord(Record& record) {
  nextOffset_ += record.expectedLength.value;
  return record.readFromStream(stream_);
}

// Keeps the document alive until the packet is read into it, whatever the stream's device does
// meanwhile.
template <class Record>
bool PnxParser::Run::readHeader(Record PnxDocument::*header) {
  const SharedRef<PnxDocument> held(parser_.document);
  return readRecord((*held).*header);
}

bool PnxParser::Run::readFile() {
  if (!stream_.isOpen() || !readDescriptor()) return fail();
  if (parser_.finished) return complete();
  return readPackets();
}

bool PnxParser::Run::readDescriptor() {
  if (readHeader(&PnxDocument::fileDescriptor)) return true;
  logMessage("PnxParser", "parse", "invalid file descriptor", LogLevel::severe);
  return false;
}

bool PnxParser::Run::readPackets() {
  bool hasTag = true;  // The descriptor's.
  while (stream_.isReadable()) {
    packetOffset_ = nextOffset_;
    unsigned char tag = 0;
    hasTag = stream_.readTag(tag);
    if (!readPacket(tag)) return fail();
    if (parser_.finished) return complete();
  }
  if (stream_.failed()) return fail();
  noteEnd(hasTag);
  return complete();
}

bool PnxParser::Run::readPacket(unsigned char tag) {
  switch (static_cast<PacketTag>(tag)) {
    case PacketTag::fileDescriptor:
      return refuseDescriptor();
    case PacketTag::physicalParams:
      return readHeader(&PnxDocument::physicalParams);
    case PacketTag::fileDateTime:
      return readHeader(&PnxDocument::dateTime);
    case PacketTag::coordinatePoint:
      return readPoint();
    case PacketTag::pressureData:
      return readPressure();
    case PacketTag::tiltData:
      return readTilt();
    case PacketTag::timestampData:
      return readTime();
    case PacketTag::status:
      return readStatus();
    default:
      skipUnknown();
      return true;
  }
}

bool PnxParser::Run::refuseDescriptor() {
  // The wording of the log is fixed, spelling included.
  logMessage("PnxParser", "parse", "multipe file descriptors found", LogLevel::severe);
  return false;
}

bool PnxParser::Run::readPoint() {
  CoordinatePoint position;
  if (!readRecord(position)) return false;
  if (!(position.y >= 0.0)) {
    noteDroppedPoint();
    return true;
  }
  Point point(position.x, position.y);
  point.pressure.value = static_cast<std::uint32_t>(parser_.pressure.pressure);
  point.tiltX.value = parser_.tilt.tiltX;
  point.tiltY.value = parser_.tilt.tiltY;
  point.timestamp.value = parser_.time.timestamp;
  addPoint(point);
  return true;
}

void PnxParser::Run::addPoint(const Point& point) {
  Layer* const layer = newLayerPending_ ? nullptr : parser_.document->last();
  if (layer == nullptr) return startLayer(point);
  Stroke* const stroke = newStrokePending_ ? nullptr : layer->last();
  if (stroke == nullptr) return startStroke(*layer, point);
  stroke->append(point);
  layer->extendBounds(*stroke);
  parser_.document->extendBounds(*layer);
}

void PnxParser::Run::startLayer(const Point& point) {
  Stroke stroke;
  stroke.append(point);
  Layer layer;
  layer.append(stroke);
  parser_.document->append(layer);
  newLayerPending_ = false;
  newStrokePending_ = false;
}

void PnxParser::Run::startStroke(Layer& layer, const Point& point) {
  Stroke stroke;
  stroke.append(point);
  layer.append(stroke);
  parser_.document->extendBounds(layer);
  newStrokePending_ = false;
}

Stroke* PnxParser::Run::lastStroke() {
  Layer* const layer = parser_.document->last();
  return layer == nullptr ? nullptr : layer->last();
}

// The only point of the last stroke; null where it has none or more.
Point* PnxParser::Run::onlyPoint() {
  Stroke* const stroke = lastStroke();
  return stroke == nullptr || stroke->size() != 1 ? nullptr : &stroke->back();
}

bool PnxParser::Run::readPressure() {
  if (!readRecord(parser_.pressure)) return false;
  if (Point* const point = onlyPoint()) {
    point->pressure.value = static_cast<std::uint32_t>(parser_.pressure.pressure);
  }
  return true;
}

bool PnxParser::Run::readTilt() {
  if (!readRecord(parser_.tilt)) return false;
  if (Point* const point = onlyPoint()) {
    point->tiltX.value = parser_.tilt.tiltX;
    point->tiltY.value = parser_.tilt.tiltY;
  }
  return true;
}

bool PnxParser::Run::readTime() {
  if (!readRecord(parser_.time)) return false;
  // Unlike pressure and tilt, the time goes into whatever point is last.
  Stroke* const stroke = lastStroke();
  Point* const point = stroke == nullptr ? nullptr : stroke->last();
  if (point != nullptr) point->timestamp.value = parser_.time.timestamp;
  return true;
}

bool PnxParser::Run::readStatus() {
  Status event;
  if (!readRecord(event)) return false;
  if (event.startsLayer()) {
    newLayerPending_ = true;
    newStrokePending_ = true;
    resetPressureAndTilt();
    return true;
  }
  if (event.penIsDown() && !penDown_) {
    newStrokePending_ = true;
    resetPressureAndTilt();
  }
  penDown_ = event.penIsDown();
  return true;
}

void PnxParser::Run::resetPressureAndTilt() {
  parser_.pressure.pressure = 0;
  parser_.tilt.tiltX = 0;
  parser_.tilt.tiltY = 0;
}

void PnxParser::Run::skipUnknown() {
  if (!stream_.isReadable()) return;
  unsigned char code = 0;
  stream_.readLengthCode(code);
  const unsigned length = decodeLength(code);
  noteUnknown(code, length);
  nextOffset_ += code == 0 ? 2 : length;
  if (code == 0) return;
  stream_.seek(nextOffset_);
  if (parser_.watcher_ != nullptr) parser_.watcher_->skippedTo(nextOffset_);
}

bool PnxParser::Run::complete() {
  parser_.document->complete = true;
  return true;
}

bool PnxParser::Run::fail() {
  explainFailure(stream_, packetOffset_, report_);
  return false;
}

void PnxParser::Run::noteDroppedPoint() {
  if (report_.droppedPoints++ == 0) report_.firstDroppedPoint = packetOffset_;
}

void PnxParser::Run::noteUnknown(unsigned char code, unsigned length) {
  if (code != 0 && length == 0) {
    report_.endlessPacket = packetOffset_;
    return;
  }
  lastUnknown_ = packetOffset_;
  if (report_.unknownPackets++ == 0) report_.firstUnknownPacket = packetOffset_;
}

// The file ended after the tag of a packet, and so inside it, or where the next tag should be. A
// skip may have gone beyond the end; in a file whose size is unknown nothing can be skipped.
void PnxParser::Run::noteEnd(bool afterTag) {
  if (afterTag) {
    report_.cutPacket = packetOffset_;
    return;
  }
  const std::int64_t size = stream_.measure();
  if (size >= 0 && packetOffset_ > size) report_.cutPacket = lastUnknown_;
}

}  // namespace Orvo
