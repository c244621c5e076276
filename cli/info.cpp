#include "cli/info.h"

#include <utility>

#include "penfile/pnx_document.h"

namespace cli {

Info infoOf(std::string name, const PreparedInput& input) {
  Info info{.file = std::move(name),
            .translation = input.translation(),
            .found = examine(input.path()),
            .drawing = {},
            .clock = {},
            .date = {}};
  const Recording& recording = info.found.recording;
  std::size_t untimed = 0;
  if (info.found.packets) {
    facts::setPenTimes(recording.document(), info.found.packets->times);
    untimed = info.found.packets->times.untimed();
    info.date = facts::dateOf(recording.pen()->dateTime.dateTimeBytes);
  }
  info.drawing = facts::drawingFactsOf(recording.document());
  info.clock = facts::clockFactsOf(recording.document(), untimed);
  return info;
}

}  // namespace cli
