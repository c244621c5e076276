// Any bytes as a pen recording: the parser must come to an end, and a document that is complete
// must hold together.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "log/logger.h"
#include "penfile/pnx_parser.h"
#include "platform/file.h"

namespace {

// The fuzzer's bytes as a file that can be positioned beyond its end, as real files can.
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
};

void check(bool holds) {
  if (!holds) std::abort();
}

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
  Input input{{data, size}};
  Orvo::PnxParser parser(
      platform::File(fopencookie(&input, "rb", {&Input::read, nullptr, &Input::seek, nullptr})));
  Orvo::EndlessSkipGuard guard(parser);
  const bool whole = parser.parse();
  check(whole == parser.document->complete.value);
  check(whole == (parser.report().failure == Orvo::ParseFailure::none));
  checkDocument(*parser.document);
  const Orvo::PnxDocument copy(*parser.document);
  check(copy.size() == parser.document->size());
  return 0;
}
