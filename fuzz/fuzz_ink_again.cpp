// Any text in UTF-8 as an ink document that is read, written to a file and read again: the points
// are the same but for what is known to be lost, and from the second file on the bytes stay. In
// other texts a byte may take the ones behind it along, and the command puts U+FFFD in their place
// before it writes them.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <tinyxml.h>

#include "fuzz/input.h"
#include "inkml/document_serializer.h"
#include "inkml/ink_reading.h"
#include "text/format.h"
#include "text/utf8.h"

namespace {

using fuzz::check;

std::string written(const Orvo::InkReading& reading) {
  TiXmlDocument xml;
  check(Orvo::DocumentSerializer(reading.document.get()).buildTree(xml, *reading.definitions));
  TiXmlPrinter printer;
  xml.Accept(&printer);
  return printer.Str();
}

// A context with an empty id is written without one, and such a context is not read.
bool hasNamelessContext(const Orvo::InkMLDefinitions& definitions) {
  return std::ranges::any_of(definitions.contexts,
                             [](const Orvo::InkContext& context) { return context.id.empty(); });
}

// A number is written with six digits and read up to what is no digit of a whole number.
double throughFile(double value) {
  const std::string text = text::format("%.6g", value);
  return static_cast<double>(static_cast<std::int32_t>(std::strtoll(text.c_str(), nullptr, 10)));
}

void checkSame(const Orvo::Point& found, const Orvo::Point& meant) {
  check(found.x.value == throughFile(meant.x.value) && found.y.value == throughFile(meant.y.value));
  check(found.z.value == throughFile(meant.z.value) &&
        found.pressure.value == meant.pressure.value);
  check(found.tiltX.value == meant.tiltX.value && found.tiltY.value == meant.tiltY.value);
  check(found.timestamp.value == meant.timestamp.value);
}

// A stroke without points is written, and not read.
void checkSame(const Orvo::Layer& found, const Orvo::Layer& meant) {
  auto stroke = found.begin();
  std::size_t strokes = 0;
  for (const Orvo::Stroke& meantStroke : meant) {
    if (meantStroke.size() == 0) continue;
    check(++strokes <= found.size() && (*stroke).size() == meantStroke.size());
    auto point = (*stroke).begin();
    for (const Orvo::Point& meantPoint : meantStroke) {
      checkSame(*point, meantPoint);
      ++point;
    }
    ++stroke;
  }
  check(strokes == found.size());
}

void checkSame(const Orvo::Document& found, const Orvo::Document& meant) {
  check(found.size() == meant.size());
  auto layer = found.begin();
  for (const Orvo::Layer& meantLayer : meant) {
    checkSame(*layer, meantLayer);
    ++layer;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view document(reinterpret_cast<const char*>(data), size);
  if (!text::isUtf8(document)) return 0;
  const Orvo::InkReading first = Orvo::readInk(document);
  if (!first.document->complete.value) return 0;
  const Orvo::InkReading second = Orvo::readInk(written(first));
  if (!second.document->complete.value) {
    check(hasNamelessContext(*first.definitions));
    return 0;
  }
  checkSame(*second.document, *first.document);
  const std::string bytes = written(second);
  const Orvo::InkReading third = Orvo::readInk(bytes);
  check(third.document->complete.value);
  checkSame(*third.document, *second.document);
  check(written(third) == bytes);
  return 0;
}
