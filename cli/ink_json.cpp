#include "cli/ink_json.h"

#include "art/json_writer.h"
#include "cli/pen_header_json.h"

namespace cli {

namespace {

void write(art::JsonWriter& json, const Orvo::Point& point) {
  json.beginArray();
  json.value(point.x.value).value(point.y.value).value(point.z.value);
  json.value(point.pressure.value).value(point.tiltX.value).value(point.tiltY.value);
  json.value(point.timestamp.value);
  json.endArray();
}

void write(art::JsonWriter& json, const Orvo::BoundingBox& box) {
  json.key("bounds").beginObject();
  write(json.key("min"), box.minCorner.value);
  write(json.key("max"), box.maxCorner.value);
  json.endObject();
}

template <class Region>
void writeAnnotations(art::JsonWriter& json, const Region& region) {
  json.key("annotations").beginObject();
  for (const auto& [type, text] : region.annotations())
    json.member(type, text);
  json.endObject();
}

void write(art::JsonWriter& json, const Orvo::Brush& brush) {
  json.beginObject().member("id", brush.id).member("color", brush.color.value);
  json.member("width", brush.width.value).member("height", brush.height.value);
  json.member("transparency", brush.transparency.value);
  json.member("antialiased", brush.antialiased.value).member("fittocurve", brush.fittocurve.value);
  json.member("ignorePressure", brush.ignorePressure.value);
  json.member("pentip", brush.pentip.value).endObject();
}

template <class Definition>
void writeReference(art::JsonWriter& json, const char* name, const Definition* definition) {
  json.key(name);
  if (definition == nullptr) {
    json.null();
  } else {
    json.value(definition->id);
  }
}

void write(art::JsonWriter& json, const Orvo::InkMLDefinitions& definitions) {
  json.key("definitions").beginObject().key("traceFormats").beginArray();
  for (const Orvo::TraceFormat& format : definitions.traceFormats) {
    json.beginObject().member("id", format.id).endObject();
  }
  json.endArray().key("brushes").beginArray();
  for (const Orvo::Brush& brush : definitions.brushes)
    write(json, brush);
  json.endArray().key("contexts").beginArray();
  for (const Orvo::InkContext& context : definitions.contexts) {
    json.beginObject().member("id", context.id);
    writeReference(json, "brush", context.brush.value);
    writeReference(json, "traceFormat", context.traceFormat.value);
    json.endObject();
  }
  json.endArray().endObject();
}

void write(art::JsonWriter& json, const Orvo::Stroke& stroke) {
  json.newline().beginObject();
  write(json, stroke.bounds());
  json.key("points").beginArray();
  for (const Orvo::Point& point : stroke)
    write(json, point);
  json.endArray().endObject();
}

void write(art::JsonWriter& json, const Orvo::Layer& layer) {
  json.newline().beginObject();
  write(json, layer.bounds());
  writeAnnotations(json, layer);
  json.key("strokes").beginArray();
  for (const Orvo::Stroke& stroke : layer)
    write(json, stroke);
  json.endArray().endObject();
}

}  // namespace

std::string inkToJson(const Recording& recording) {
  const Orvo::Document& document = recording.document();
  std::string text;
  art::JsonWriter json(text);
  json.beginObject();
  json.member("kind", recording.kind() == FileKind::pen ? "pen" : "inkml");
  json.member("complete", document.complete.value);
  write(json, document.bounds());
  writeAnnotations(json, document);
  if (recording.pen() != nullptr) writeHeader(json, *recording.pen());
  if (recording.definitions() != nullptr) write(json, *recording.definitions());
  json.key("layers").beginArray();
  for (const Orvo::Layer& layer : document)
    write(json, layer);
  json.endArray().endObject();
  return text += '\n';
}

}  // namespace cli
