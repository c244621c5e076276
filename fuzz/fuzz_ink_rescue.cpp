// Any bytes as a damaged ink document: what is saved must open whole, without a warning.

#include <cstdint>
#include <string_view>

#include "fuzz/input.h"
#include "inkml/ink_reading.h"
#include "rescue/ink_rescue.h"

namespace {

using fuzz::check;

void checkStretches(const rescue::InkRescue& result, std::size_t size) {
  std::size_t begin = 0;
  for (const rescue::Stretch& stretch : result.leftOut) {
    check(stretch.begin < stretch.end && stretch.begin >= begin && stretch.end <= size);
    begin = stretch.begin;
  }
}

std::size_t countPoints(Orvo::Document& document) {
  std::size_t points = 0;
  for (Orvo::Layer& layer : document)
    for (Orvo::Stroke& stroke : layer)
      points += stroke.size();
  return points;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view document(reinterpret_cast<const char*>(data), size);
  const rescue::InkRescue result = rescue::rescueInkDocument(document);
  check(result.saved == !result.bytes.empty());
  if (!result.saved) return 0;
  check(!result.sound || result.bytes == document);
  const Orvo::InkReading reading = Orvo::readInk(result.bytes);
  check(reading.document->complete.value && reading.report.problems.empty());
  check(result.sound || countPoints(*reading.document) == result.pointsKept);
  checkStretches(result, size);
  return 0;
}
