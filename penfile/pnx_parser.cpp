#include "penfile/pnx_parser.h"

#include "log/logger.h"

namespace Orvo {

template <typename Record>
bool PnxParser::readRecord(Record& record) {
  nextOffset_ += record.expectedLength.value;
  return record.readFromStream(stream);
}

bool PnxParser::parse() {
  if (finished) return true;
  if (!stream.isOpen() || !readDescriptor()) return fail();
  if (stream.atEnd()) noteEnd(true);
  if (finished) return complete();
  return readPackets();
}

bool PnxParser::readDescriptor() {
  if (readRecord(document->fileDescriptor)) return true;
  logMessage("PnxParser", "parse", "invalid file descriptor", LogLevel::severe);
  return false;
}

bool PnxParser::readPackets() {
  while (stream.isReadable()) {
    packetOffset_ = nextOffset_;
    unsigned char tag = 0;
    const bool hasTag = stream.readTag(tag);
    if (!readPacket(tag)) return fail();
    if (finished) return complete();
    if (stream.atEnd()) noteEnd(hasTag);
  }
  return stream.failed() ? fail() : complete();
}

bool PnxParser::readPacket(unsigned char tag) {
  switch (static_cast<PacketTag>(tag)) {
    case PacketTag::fileDescriptor:
      return refuseDescriptor();
    case PacketTag::physicalParams:
      return readRecord(document->physicalParams);
    case PacketTag::fileDateTime:
      return readRecord(document->dateTime);
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

bool PnxParser::refuseDescriptor() {
  // The log's wording is fixed, as it stands.
  logMessage("PnxParser", "parse", "multipe file descriptors found", LogLevel::severe);
  return false;
}

bool PnxParser::readPoint() {
  CoordinatePoint position;
  if (!readRecord(position)) return false;
  if (!(position.y >= 0.0)) {
    noteDroppedPoint();
    return true;
  }
  Point point(position.x, position.y);
  point.pressure.value = static_cast<std::uint32_t>(pressure.pressure);
  point.tiltX.value = tilt.tiltX;
  point.tiltY.value = tilt.tiltY;
  point.timestamp.value = time.timestamp;
  addPoint(point);
  return true;
}

void PnxParser::addPoint(const Point& point) {
  if (newLayerPending_) {
    startLayer(point);
  } else if (newStrokePending_) {
    startStroke(point);
  } else {
    continueStroke(point);
  }
}

void PnxParser::startLayer(const Point& point) {
  Stroke stroke;
  stroke.append(point);
  Layer layer;
  layer.append(stroke);
  document->append(layer);
  layer_ = &document->back();
  stroke_ = &layer_->back();
  newLayerPending_ = false;
  newStrokePending_ = false;
}

void PnxParser::startStroke(const Point& point) {
  Stroke stroke;
  stroke.append(point);
  layer_->append(stroke);
  stroke_ = &layer_->back();
  document->extendBounds(*layer_);
  newStrokePending_ = false;
}

void PnxParser::continueStroke(const Point& point) {
  stroke_->append(point);
  layer_->extendBounds(*stroke_);
  document->extendBounds(*layer_);
}

bool PnxParser::readPressure() {
  if (!readRecord(pressure)) return false;
  if (stroke_ != nullptr && stroke_->size() == 1) {
    stroke_->back().pressure.value = static_cast<std::uint32_t>(pressure.pressure);
  }
  return true;
}

bool PnxParser::readTilt() {
  if (!readRecord(tilt)) return false;
  if (stroke_ != nullptr && stroke_->size() == 1) {
    stroke_->back().tiltX.value = tilt.tiltX;
    stroke_->back().tiltY.value = tilt.tiltY;
  }
  return true;
}

bool PnxParser::readTime() {
  if (!readRecord(time)) return false;
  // Unlike pressure and tilt the time goes into whatever point is last.
  if (stroke_ != nullptr) stroke_->back().timestamp.value = time.timestamp;
  return true;
}

bool PnxParser::readStatus() {
  Status event;
  if (!readRecord(event)) return false;
  if (event.startsLayer()) {
    newLayerPending_ = true;
    newStrokePending_ = true;
    forgetPressureAndTilt();
    return true;
  }
  if (event.penIsDown() && !penDown_) {
    newStrokePending_ = true;
    forgetPressureAndTilt();
  }
  penDown_ = event.penIsDown();
  return true;
}

void PnxParser::forgetPressureAndTilt() {
  pressure.pressure = 0;
  tilt.tiltX = 0;
  tilt.tiltY = 0;
}

void PnxParser::skipUnknown() {
  if (!stream.isReadable()) return;
  unsigned char code = 0;
  stream.readLengthCode(code);
  const unsigned length = decodeLength(code);
  noteUnknown(code, length);
  nextOffset_ += code == 0 ? 2 : length;
  if (code == 0) return;
  stream.seek(nextOffset_);
  if (watcher_ != nullptr) watcher_->skippedTo(nextOffset_);
}

bool PnxParser::complete() {
  document->complete = true;
  return true;
}

bool PnxParser::fail() {
  explainFailure(stream, packetOffset_, report_);
  return false;
}

void PnxParser::noteDroppedPoint() {
  if (report_.droppedPoints++ == 0) report_.firstDroppedPoint = packetOffset_;
}

void PnxParser::noteUnknown(unsigned char code, unsigned length) {
  if (code != 0 && length == 0) {
    report_.endlessPacket = packetOffset_;
    return;
  }
  lastUnknown_ = packetOffset_;
  if (report_.unknownPackets++ == 0) report_.firstUnknownPacket = packetOffset_;
}

// The end was met after the tag of a packet, and so inside it, or where the next tag should be. A
// skip may have gone beyond the end; where the size is not known, there are no skips.
void PnxParser::noteEnd(bool afterTag) {
  if (afterTag) {
    report_.cutPacket = packetOffset_;
    return;
  }
  const std::int64_t size = stream.measure();
  if (size >= 0 && packetOffset_ > size) report_.cutPacket = lastUnknown_;
}

}  // namespace Orvo
