// Any bytes as an ink file: reading must come to an end, the scan before it must not take the file
// for flatter than the XML library does, and what was read must survive being written.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

#include "inkml/document_serializer.h"
#include "inkml/file_check.h"
#include "inkml/ink_reading.h"
#include "platform/file.h"

namespace {

using Orvo::InkFailure;

// The fuzzer's bytes as a file.
struct Input {
  std::span<const std::uint8_t> bytes;
  std::size_t position = 0;

  static ssize_t read(void* cookie, char* buffer, std::size_t size) {
    auto* input = static_cast<Input*>(cookie);
    const std::size_t start = std::min(input->position, input->bytes.size());
    const std::size_t count = std::min(size, input->bytes.size() - start);
    std::copy_n(input->bytes.begin() + static_cast<std::ptrdiff_t>(start), count, buffer);
    input->position += count;
    return static_cast<ssize_t>(count);
  }

  static int seek(void* cookie, off64_t* offset, int origin) {
    auto* input = static_cast<Input*>(cookie);
    const auto size = static_cast<off64_t>(input->bytes.size());
    const auto here = static_cast<off64_t>(input->position);
    const off64_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? here : size;
    if (base + *offset < 0) return -1;
    *offset += base;
    input->position = static_cast<std::size_t>(*offset);
    return 0;
  }

  platform::File open() {
    return platform::File(fopencookie(this, "rb", {&Input::read, nullptr, &Input::seek, nullptr}));
  }
};

void check(bool holds) {
  if (!holds) std::abort();
}

int depthOf(const TiXmlNode& node) {
  int deepest = 0;
  for (const TiXmlElement* child = node.FirstChildElement(); child;
       child = child->NextSiblingElement()) {
    deepest = std::max(deepest, 1 + depthOf(*child));
  }
  return deepest;
}

// The library's own load, by either rule for the encoding.
void checkScan(std::span<const std::uint8_t> bytes, bool utf8) {
  const Orvo::XmlEncoding encoding = utf8 ? Orvo::XmlEncoding::utf8 : Orvo::XmlEncoding::declared;
  const Orvo::FileCheck found = Orvo::checkBytes(std::string(bytes.begin(), bytes.end()), encoding);
  if (found.refusal != Orvo::FileRefusal::none) return;
  Input input{bytes};
  TiXmlDocument xml;
  const bool loaded =
      xml.LoadFile(input.open().get(), utf8 ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_UNKNOWN);
  check(depthOf(xml) <= found.scan.depth);
  check(!loaded || depthOf(xml) == found.scan.depth);
  check(!loaded || found.scan.end != Orvo::ScanEnd::failure);
}

// Trees in memory keep their texts as they are, so everything comes back but empty strokes.
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
  Input input{bytes};
  Orvo::InkReading reading = Orvo::readInk(input.open().get());
  check(reading.document->complete.value == (reading.report.failure == InkFailure::none));
  if (reading.report.failure == InkFailure::none) checkWriting(reading);
  return 0;
}
