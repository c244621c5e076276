// Any bytes as a damaged pen recording: what is saved must open whole, and be sound by its own
// rule.

#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "log/logger.h"
#include "penfile/pnx_parser.h"
#include "rescue/pen_rescue.h"

namespace {

using fuzz::check;

void checkOpens(const std::string& recording) {
  fuzz::Input input({reinterpret_cast<const std::uint8_t*>(recording.data()), recording.size()});
  Orvo::PnxParser parser(input.open());
  Orvo::EndlessSkipGuard guard(parser);
  check(parser.parse());
  check(!parser.report().cutPacket && !parser.report().endlessPacket);
}

void checkStretches(const rescue::PenRescue& result, std::size_t size) {
  std::size_t end = 0;
  for (const rescue::Stretch& stretch : result.leftOut) {
    check(stretch.begin < stretch.end && stretch.begin >= end && stretch.end <= size);
    end = stretch.begin;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Orvo::Logger::silence();
  const std::string_view recording(reinterpret_cast<const char*>(data), size);
  const rescue::PenRescue result = rescue::rescuePenRecording(recording);
  check(result.saved == !result.bytes.empty());
  if (!result.saved) return 0;
  check(rescue::isSoundPenRecording(result.bytes));
  check(!result.sound || result.bytes == recording);
  checkOpens(result.bytes);
  checkStretches(result, size);
  return 0;
}
