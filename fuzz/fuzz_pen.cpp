// Any bytes as a pen recording: the parser must come to an end, and what it read must be
// consistent.

#include <cstdint>
#include <span>

#include "fuzz/input.h"
#include "log/logger.h"
#include "penfile/pnx_parser.h"

namespace {

using fuzz::check;
using fuzz::Input;

void checkDocument(const Orvo::PnxDocument& document) {
  for (const Orvo::Layer& layer : document) {
    check(layer.size() > 0);
    for (const Orvo::Stroke& stroke : layer) {
      check(stroke.size() > 0);
      const Orvo::Point& min = stroke.bounds().minCorner.value;
      const Orvo::Point& max = document.bounds().maxCorner.value;
      for (const Orvo::Point& point : stroke) {
        check(point.y.value >= 0.0);
        check(point.x.value >= min.x.value && point.y.value >= min.y.value);
        check(point.x.value <= max.x.value && point.y.value <= max.y.value);
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Orvo::Logger::silence();
  Input input({data, size});
  Orvo::PnxParser parser(input.open());
  constexpr std::uint32_t kMostSkips = 64;  // a thousandth of what the plug-in allows, and as fast
  Orvo::EndlessSkipGuard guard(parser, kMostSkips);
  const bool whole = parser.parse();
  check(whole == parser.document->complete.value);
  check(whole == (parser.report().failure == Orvo::ParseFailure::none));
  checkDocument(*parser.document);
  const Orvo::PnxDocument copy(*parser.document);
  check(copy.size() == parser.document->size());
  return 0;
}
