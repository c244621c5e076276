#include "art/json.h"

#include "art/json_writer.h"

namespace art {

namespace {

void writePoint(JsonWriter& json, const Point& point) {
  json.value(point.h).value(point.v);
}

void writeSegment(JsonWriter& json, const Segment& segment) {
  json.beginArray();
  writePoint(json, segment.p);
  writePoint(json, segment.in);
  writePoint(json, segment.out);
  json.value(segment.corner).endArray();
}

void writeSamples(JsonWriter& json, const std::vector<TabletSample>& samples) {
  json.beginArray();
  for (const TabletSample& sample : samples)
    json.beginArray().value(sample.offset).value(sample.value).endArray();
  json.endArray();
}

std::string_view nameOf(TabletKind kind) {
  switch (kind) {
    case TabletKind::stylusWheel:
      return "stylusWheel";
    case TabletKind::tilt:
      return "tilt";
    case TabletKind::bearing:
      return "bearing";
    case TabletKind::rotation:
      return "rotation";
  }
  return "other";
}

void writeOtherTabletData(JsonWriter& json, const Path& path) {
  if (path.otherTabletData.empty()) return;
  json.key("otherTablet").beginObject();
  for (const auto& [kind, samples] : path.otherTabletData) {
    json.key(nameOf(kind));
    writeSamples(json, samples);
  }
  json.endObject();
}

class DocumentText {
 public:
  DocumentText(std::string& out, const Document& document) : json_(out), document_(document) {}

  void write() {
    json_.beginObject();
    writeSetup();
    json_.newline().key("layers").beginArray();
    for (const Layer& layer : document_.layers)
      writeLayer(layer);
    json_.newline().endArray().endObject();
  }

 private:
  void writeSetup() {
    const Rect& page = document_.page;
    json_.key("document").beginObject();
    json_.member("width", document_.width).member("height", document_.height);
    json_.key("rulerOrigin").beginArray();
    writePoint(json_, document_.rulerOrigin);
    json_.endArray().key("page").beginArray();
    json_.value(page.left).value(page.bottom).value(page.right).value(page.top);
    json_.endArray().endObject();
  }

  void writeLayer(const Layer& layer) {
    json_.newline().beginObject();
    json_.member("name", layer.name).member("editable", layer.editable).key("art");
    writeObjects(layer.art);
    json_.endObject();
  }

  void writeObjects(const std::vector<Object>& objects) {
    json_.beginArray();
    for (const Object& object : objects) {
      json_.newline();
      if (const Group* group = std::get_if<Group>(&object.value)) {
        json_.beginObject().member("type", "group").key("art");
        writeObjects(group->art);
        json_.endObject();
      } else {
        writePath(std::get<Path>(object.value));
      }
    }
    if (!objects.empty()) json_.newline();
    json_.endArray();
  }

  void writePath(const Path& path) {
    json_.beginObject().member("type", "path").member("closed", path.closed);
    json_.key("segments").beginArray();
    for (const Segment& segment : path.segments)
      writeSegment(json_, segment);
    json_.endArray().key("tablet");
    writeSamples(json_, path.pressure);
    writeOtherTabletData(json_, path);
    json_.key("style");
    if (path.style && *path.style < document_.styles.size()) {
      json_.value(document_.styles[*path.style].name);
    } else {
      json_.null();
    }
    json_.endObject();
  }

  JsonWriter json_;
  const Document& document_;
};

}  // namespace

std::string toJson(const Document& document) {
  std::string out;
  DocumentText(out, document).write();
  out += '\n';
  return out;
}

}  // namespace art
