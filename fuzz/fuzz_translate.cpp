// Any bytes as a document of another program: what is translated must be in the subset, and the
// plug-in's reader must read it back unchanged and without a warning.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <tinyxml.h>

#include "fuzz/input.h"
#include "inkml/document_serializer.h"
#include "inkml/ink_reading.h"
#include "translate/document_form.h"
#include "translate/translation.h"

namespace {

using fuzz::check;

bool isWhole(double value) {
  constexpr double kMost = 999'999;
  return std::abs(value) <= kMost && value == std::floor(value);
}

void checkPoint(const Orvo::Point& point) {
  constexpr std::uint32_t kMostPressure = 1023;
  constexpr std::uint32_t kLastTime = 2147483647;
  constexpr int kMostTilt = 90;
  check(isWhole(point.x.value) && isWhole(point.y.value) && point.z.value == 0);
  check(point.pressure.value <= kMostPressure && point.timestamp.value <= kLastTime);
  check(std::abs(point.tiltX.value) <= kMostTilt && std::abs(point.tiltY.value) <= kMostTilt);
}

bool areSame(const Orvo::Point& a, const Orvo::Point& b) {
  return a.x.value == b.x.value && a.y.value == b.y.value && a.z.value == b.z.value &&
         a.pressure.value == b.pressure.value && a.tiltX.value == b.tiltX.value &&
         a.tiltY.value == b.tiltY.value && a.timestamp.value == b.timestamp.value;
}

void checkSame(const Orvo::Stroke& found, const Orvo::Stroke& meant) {
  check(found.size() == meant.size() && meant.size() >= 2);
  auto point = found.begin();
  const Orvo::Point* before = nullptr;
  for (const Orvo::Point& meantPoint : meant) {
    checkPoint(meantPoint);
    check(areSame(*point, meantPoint));
    if (&meantPoint == &meant.back()) check(before != nullptr && areSame(*before, meantPoint));
    before = &meantPoint;
    ++point;
  }
}

void checkSame(const Orvo::Document& found, const Orvo::Document& meant) {
  check(found.size() == meant.size() && found.annotations() == meant.annotations());
  auto layer = found.begin();
  for (const Orvo::Layer& meantLayer : meant) {
    check((*layer).size() == meantLayer.size() &&
          (*layer).annotations() == meantLayer.annotations());
    auto stroke = (*layer).begin();
    for (const Orvo::Stroke& meantStroke : meantLayer) {
      checkSame(*stroke, meantStroke);
      ++stroke;
    }
    ++layer;
  }
}

std::string written(const translate::Translation& translation) {
  TiXmlDocument xml;
  check(Orvo::DocumentSerializer(translation.document.get())
            .buildTree(xml, *translation.definitions));
  TiXmlPrinter printer;
  xml.Accept(&printer);
  return printer.Str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const translate::DocumentForm form = translate::formOf(bytes);
  const translate::Translation result = translate::translateInk(bytes);
  check(result.document->complete.value == result.problem.empty());
  if (!result.problem.empty()) {
    check(result.document->size() == 0);
    return 0;
  }
  check(form != translate::DocumentForm::notInk);
  check(result.brushes.size() == result.traces);
  for (const translate::Remark& remark : result.remarks)
    check(remark.count > 0 && !translate::describe(remark).empty());
  const std::string document = written(result);
  if (result.traces > 0) check(translate::formOf(document) == translate::DocumentForm::subset);
  const Orvo::InkReading reading = Orvo::readInk(document);
  check(reading.document->complete.value);
  checkSame(*reading.document, *result.document);
  return 0;
}
