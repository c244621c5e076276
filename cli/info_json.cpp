#include <cmath>

#include "art/json_writer.h"
#include "cli/info.h"
#include "cli/pen_header_json.h"
#include "text/format.h"

namespace cli {

namespace {

// In millimetres, to a hundredth: the pen measures no finer.
double millimetres(double inkUnits) {
  return std::round(inkUnits * 10) / 100;
}

// In metres, to a tenth of a millimetre.
double metres(double inkUnits) {
  return std::round(inkUnits) / 10'000;
}

void writeTranslation(art::JsonWriter& json, const std::optional<TranslatedInk>& translation) {
  if (!translation) return;
  json.key("translation")
      .beginObject()
      .member("groups", translation->groups)
      .member("traces", translation->traces);
  json.key("remarks").beginArray();
  for (const std::string& remark : translation->remarks)
    json.value(remark);
  json.endArray();
  json.endObject();
}

void writeExtent(art::JsonWriter& json, const std::optional<facts::Extent>& extent) {
  json.key("drawing");
  if (!extent) {
    json.null();
    return;
  }
  json.beginObject().member("left", millimetres(extent->left));
  json.member("top", millimetres(extent->top));
  json.member("width", millimetres(extent->right - extent->left));
  json.member("height", millimetres(extent->bottom - extent->top)).endObject();
}

void writeLayers(art::JsonWriter& json, const facts::DrawingFacts& drawing) {
  json.key("layers").beginArray();
  for (const facts::LayerFacts& layer : drawing.layers) {
    json.beginObject().textOrNull("name", layer.name);
    json.member("strokes", layer.strokes).member("points", layer.points).endObject();
  }
  json.endArray();
}

void writeRange(art::JsonWriter& json, const char* name,
                const std::optional<facts::Range<std::int32_t>>& range) {
  json.key(name);
  if (range) {
    json.beginArray().value(range->least).value(range->most).endArray();
  } else {
    json.null();
  }
}

void writeDrawing(art::JsonWriter& json, const facts::DrawingFacts& drawing) {
  writeExtent(json, drawing.extent);
  writeLayers(json, drawing);
  json.member("strokes", drawing.strokes).member("points", drawing.points);
  json.member("singlePoints", drawing.singlePoints);
  json.member("longestStroke", drawing.longestStroke);
  json.member("inkLength", metres(drawing.length));
  writeRange(json, "pressure", drawing.pressure);
  writeRange(json, "tiltX", drawing.tiltX);
  writeRange(json, "tiltY", drawing.tiltY);
}

void writeClock(art::JsonWriter& json, const std::optional<facts::ClockFacts>& clock) {
  json.key("clock");
  if (clock) {
    json.beginObject().member("penDown", clock->penDown).member("whole", clock->whole).endObject();
  } else {
    json.null();
  }
}

std::string isoDate(const std::optional<facts::Date>& date) {
  if (!date) return {};
  return text::format("%04d-%02d-%02dT%02d:%02d:%02d", date->year, date->month, date->day,
                      date->hour, date->minute, date->second);
}

void writePackets(art::JsonWriter& json, const Info& info) {
  json.textOrNull("date", isoDate(info.date));
  json.key("unknownPackets").beginArray();
  for (const auto& [tag, packets] : info.found.packets->unknown) {
    json.beginObject().member("tag", unsigned{tag});
    json.member("count", packets.count).member("bytes", packets.bytes).endObject();
  }
  json.endArray();
  json.member("zeroBytes", info.found.packets->zeroBytes);
  writeHeader(json, *info.found.recording.pen());
}

}  // namespace

std::string infoToJson(const Info& info) {
  const Examination& found = info.found;
  std::string text;
  art::JsonWriter json(text);
  json.beginObject().member("file", info.file);
  json.member("kind", found.recording.kind() == FileKind::pen ? "pen" : "inkml");
  json.member("opens", found.failure.empty()).member("sound", found.isSound());
  json.textOrNull("problem", found.failure + found.losses);
  writeTranslation(json, info.translation);
  writeDrawing(json, info.drawing);
  writeClock(json, info.clock);
  if (found.packets) writePackets(json, info);
  json.endObject();
  return text;
}

}  // namespace cli
