// Any bytes as a brush style library: reading must come to an end, and what is read must be
// something that can be drawn with.

#include <cmath>
#include <cstdint>
#include <set>
#include <span>
#include <string>

#include "fuzz/input.h"
#include "stylelib/limits.h"
#include "stylelib/native_library.h"

namespace {

using fuzz::check;

bool isShare(double part) {
  return part >= 0 && part <= 1;
}

void checkBrush(const art::CalligraphicBrush& brush) {
  check(brush.size.lightest() >= 0 && brush.size.heaviest() > 0 && brush.size.heaviest() <= 1296);
  check(brush.roundness.lightest() >= 0 && brush.roundness.heaviest() <= 100);
  check(std::isfinite(brush.angle.lightest()) && std::isfinite(brush.angle.heaviest()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const stylelib::NativeLibrary library = stylelib::readNativeLibrary(std::span(data, size));
  check(library.problem.empty() != library.styles.empty());
  std::set<std::string> names;
  std::size_t text = 0;
  for (const art::Style& style : library.styles) {
    check(names.insert(style.name).second);
    check(style.strokeWeight >= 0 && style.strokeWeight <= 1000);
    check(isShare(style.strokeColor.red) && isShare(style.strokeColor.green) &&
          isShare(style.strokeColor.blue));
    text += style.name.size();
    if (!style.brush) continue;
    checkBrush(*style.brush);
    text += style.brush->name.size();
  }
  check(text <= stylelib::kMostStyleText);
  return 0;
}
