#include "cli/rescue_json.h"

#include "art/json_writer.h"

namespace cli {

std::string rescueToJson(const Rescued& rescued, std::string_view file, std::string_view output) {
  std::string text;
  art::JsonWriter json(text);
  json.beginObject();
  json.member("file", file);
  json.member("kind", rescued.kind == FileKind::pen ? "pen" : "inkml");
  json.member("sound", rescued.sound).member("saved", rescued.saved);
  json.textOrNull("output", output).textOrNull("problem", rescued.problem);
  json.member("pointsKept", rescued.pointsKept).member("pointsAbout", rescued.pointsAbout);
  json.key("leftOut").beginArray();
  for (const rescue::Stretch& stretch : rescued.leftOut) {
    json.beginObject().member("begin", stretch.begin).member("end", stretch.end);
    json.member("reason", rescue::explain(stretch.reason)).endObject();
  }
  json.endArray();
  json.key("repairs").beginArray();
  for (const std::string& repair : rescued.repairs)
    json.value(repair);
  json.endArray();
  json.endObject();
  return text;
}

}  // namespace cli
