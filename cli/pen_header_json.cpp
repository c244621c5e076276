#include "cli/pen_header_json.h"

#include <array>
#include <string_view>

namespace cli {

namespace {

template <class Bytes>
void writeBytes(art::JsonWriter& json, std::string_view name, const Bytes& bytes) {
  json.key(name).beginArray();
  for (const unsigned char byte : bytes)
    json.value(unsigned{byte});
  json.endArray();
}

}  // namespace

void writeHeader(art::JsonWriter& json, const Orvo::PnxDocument& document) {
  const Orvo::FileDescriptor& descriptor = document.fileDescriptor;
  const Orvo::PhysicalParams& physical = document.physicalParams;
  json.key("header").beginObject();
  writeBytes(json, "descriptor",
             std::array{descriptor.descriptorByte0, descriptor.coordinateFormat,
                        descriptor.descriptorByte2, descriptor.descriptorByte3});
  json.key("physical").beginObject();
  json.member("byte0", unsigned{physical.paramByte0});
  writeBytes(json, "word1", physical.paramWord1);
  writeBytes(json, "word2", physical.paramWord2);
  json.member("byte5", unsigned{physical.paramByte5});
  json.member("byte6", unsigned{physical.paramByte6});
  json.endObject();
  writeBytes(json, "dateTime", document.dateTime.dateTimeBytes);
  json.endObject();
}

}  // namespace cli
