#include "log/logger.h"
#include "penfile/pnx_parser.h"
#include "rescue/pen_rescue.h"
#include "tests/rescue/figures.h"
#include "tests/support/pen/open_bytes.h"

namespace figures {
namespace {

using std::size_t;
using std::string_view;

int wordAt(string_view bytes, size_t i) {
  const auto high = static_cast<unsigned char>(bytes[i]);
  const auto low = static_cast<unsigned char>(bytes[i + 1]);
  return static_cast<std::int16_t>(high << 8 | low);
}

size_t lengthAt(string_view bytes, size_t i) {
  constexpr size_t kPowers[] = {1, 6, 36, 216};
  const auto code = static_cast<unsigned char>(bytes[i + 1]);
  return code == 0 ? 2 : kPowers[code >> 6] * (code & 63);
}

bool opensWhole(const std::string& bytes) {
  const std::vector<unsigned char> data(bytes.begin(), bytes.end());
  Orvo::PnxParser parser(pentest::openBytes(data));
  Orvo::EndlessSkipGuard guard(parser);
  return parser.parse() && !parser.report().endlessPacket && !parser.report().cutPacket;
}

std::vector<Drawn> pointsOf(string_view recording) {
  std::vector<Drawn> points;
  size_t stroke = 0;
  bool isDown = false;
  bool starts = true;
  for (size_t i = 0; i + 2 < recording.size(); i += lengthAt(recording, i)) {
    if (recording[i] == '\xF1') {
      const auto status = static_cast<unsigned char>(recording[i + 2]);
      const bool goesDown = (status & 1U) != 0;
      starts = starts || status >= 0x80 || (goesDown && !isDown);
      if (status < 0x80) isDown = goesDown;
    } else if (recording[i] == 'a') {
      const int x = wordAt(recording, i + 2);
      const int y = wordAt(recording, i + 4);
      Drawn point{i, 6, x, y, 0, (x + 5.0) / 10.0, (y + 2.5) / 5.0};
      if (point.y < 0) continue;
      if (starts) ++stroke;
      starts = false;
      point.stroke = stroke;
      points.push_back(point);
    }
  }
  return points;
}

Rescued rescue(string_view recording, rescue::Mend mend) {
  Orvo::Logger::silence();
  rescue::PenRescue result = rescue::rescuePenRecording(recording, mend);
  return {std::move(result.bytes), result.sound, result.saved};
}

}  // namespace

const Subject& penRecordings() {
  static constexpr Subject kSubject{pointsOf, rescue, opensWhole};
  return kSubject;
}

}  // namespace figures
