#include "cli/stroke_times.h"

#include "cli/byte_stream.h"
#include "facts/pen_clock.h"

namespace cli {

bool takePenTimes(Orvo::Document& document, const std::filesystem::path& file) {
  ByteStream bytes(file);
  return facts::setPenTimes(document, [&bytes] { return bytes.next(); });
}

web::StrokeTimes strokeTimes(const Recording& recording, const std::filesystem::path& file) {
  if (!recording.complete()) return {};
  Orvo::Document& document = recording.document();
  if (recording.kind() == FileKind::pen && !takePenTimes(document, file)) return {};
  web::StrokeTimes all;
  for (const Orvo::Layer& layer : document) {
    for (const Orvo::Stroke& stroke : layer) {
      if (stroke.size() < 2) continue;
      std::vector<std::uint32_t>& times = all.emplace_back();
      times.reserve(stroke.size());
      for (const Orvo::Point& point : stroke)
        times.push_back(point.timestamp.value);
    }
  }
  return all;
}

}  // namespace cli
