// Any bytes as an ink file: reading must come to an end, the scan before it must not find less
// nesting than the XML library does, and what was read must survive being written.

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <tinyxml.h>

#include "fuzz/input.h"
#include "inkml/document_serializer.h"
#include "inkml/file_check.h"
#include "inkml/ink_reading.h"

namespace {

using fuzz::check;
using fuzz::Input;
using Orvo::InkFailure;

int depthOf(const TiXmlNode& node) {
  int deepest = 0;
  for (const TiXmlElement* child = node.FirstChildElement(); child;
       child = child->NextSiblingElement()) {
    deepest = std::max(deepest, 1 + depthOf(*child));
  }
  return deepest;
}

// Compares the scan with the library's own load, under one of the two rules for the encoding.
void checkScan(std::span<const std::uint8_t> bytes, bool utf8) {
  const Orvo::XmlEncoding encoding = utf8 ? Orvo::XmlEncoding::utf8 : Orvo::XmlEncoding::declared;
  const Orvo::FileCheck found = Orvo::checkBytes(std::string(bytes.begin(), bytes.end()), encoding);
  if (found.refusal != Orvo::FileRefusal::none) return;
  Input input(bytes);
  TiXmlDocument xml;
  const bool loaded =
      xml.LoadFile(input.open().get(), utf8 ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_UNKNOWN);
  check(depthOf(xml) <= found.scan.depth);
  check(!loaded || depthOf(xml) == found.scan.depth);
  check(!loaded || found.scan.end != Orvo::ScanEnd::failure);
}

// Trees in memory keep their texts unchanged, so everything comes back except empty strokes.
void checkWriting(Orvo::InkReading& reading) {
  TiXmlDocument xml;
  check(Orvo::DocumentSerializer(reading.document.get()).buildTree(xml, *reading.definitions));
  Orvo::Document again;
  Orvo::InkMLDefinitions definitions;
  check(Orvo::DocumentSerializer(&again).read(xml, definitions));
  check(again.size() == reading.document->size());
  check(again.annotations() == reading.document->annotations());
  check(definitions.brushes.size() == reading.definitions->brushes.size());
  check(definitions.traceFormats.size() == reading.definitions->traceFormats.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> bytes(data, size);
  checkScan(bytes, true);
  checkScan(bytes, false);
  Input input(bytes);
  Orvo::InkReading reading = Orvo::readInk(input.open().get());
  check(reading.document->complete.value == (reading.report.failure == InkFailure::none));
  if (reading.report.failure == InkFailure::none) checkWriting(reading);
  return 0;
}
