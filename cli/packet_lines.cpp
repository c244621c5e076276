#include "cli/packet_lines.h"

#include <algorithm>

#include "art/json_writer.h"
#include "cli/packet_words.h"
#include "facts/pen_clock.h"
#include "facts/pen_facts.h"
#include "text/format.h"

namespace cli {

namespace {

using facts::Oddity;
using facts::Packet;
using Orvo::PacketTag;
using Orvo::ParseFailure;
using text::format;

constexpr std::size_t kMostShown = 32;

std::string hexOf(const Packet& packet, const char* separator) {
  std::string text;
  for (const unsigned char byte :
       packet.payload.first(std::min(packet.payload.size(), kMostShown))) {
    if (!text.empty()) text += separator;
    text += format("%02X", unsigned{byte});
  }
  return text;
}

std::string bytesOf(const Packet& packet) {
  constexpr std::uint64_t kHead = 2;
  const std::uint64_t shown = std::min(packet.payload.size(), kMostShown);
  std::string text = hexOf(packet, " ");
  if (packet.size > shown + kHead) text += " ...";
  return text;
}

// The numbers of a packet of a known tag.
struct Position {
  explicit Position(const Packet& packet)
      : x(Orvo::xOfRaw(static_cast<std::int16_t>(packet.wordAt(0)))),
        y(Orvo::yOfRaw(static_cast<std::int16_t>(packet.wordAt(2)))) {}
  double x;
  double y;
};

std::int32_t pressureOf(const Packet& packet) {
  return Orvo::pressureOfRaw(packet.byteAt(0), packet.wordAt(2)).value_or(0);
}

struct Stamp {
  explicit Stamp(const Packet& packet)
      : isTime(packet.byteAt(0) == Orvo::kPenTime),
        count(unsigned{packet.byteAt(1)} << 16U | packet.wordAt(2)),
        time(isTime ? Orvo::timeOfBytes(packet.byteAt(1), packet.byteAt(2), packet.byteAt(3)) : 0) {
  }
  bool isTime;
  std::uint32_t count;
  std::uint32_t time;
};

bool startsLayer(const Packet& packet) {
  return (packet.byteAt(0) & 0x80U) != 0;
}

bool isPenDown(const Packet& packet) {
  return (packet.byteAt(0) & 0x01U) != 0;
}

std::string dateOf(const Packet& packet) {
  const auto date = facts::dateOf(packet.payload.first<7>());
  if (!date) return {};
  return format(", as a date %04d-%02d-%02d %02d:%02d:%02d", date->year, date->month, date->day,
                date->hour, date->minute, date->second);
}

// Whether the packet has the length of its tag, and all its bytes.
bool isWhole(const Packet& packet) {
  return packet.isKnown() && packet.size == Orvo::kLengthOfTag[packet.tag] &&
         packet.payload.size() + 2 == packet.size &&
         Orvo::decodeLength(packet.lengthCode.value_or(0)) == packet.size;
}

std::string fieldsOf(const Packet& packet) {
  if (!isWhole(packet)) return bytesOf(packet);
  switch (static_cast<PacketTag>(packet.tag)) {
    case PacketTag::fileDateTime:
      return bytesOf(packet) + dateOf(packet);
    case PacketTag::coordinatePoint: {
      const Position position(packet);
      return format("x %.1f, y %.1f", position.x, position.y) +
             (facts::isOnSheet(packet) ? "" : ", above the sheet: left out");
    }
    case PacketTag::pressureData:
      return format("%d, algorithm %u", pressureOf(packet), unsigned{packet.byteAt(0)});
    case PacketTag::tiltData:
      return format("x %d, y %d", Orvo::widenSigned(packet.byteAt(0)),
                    Orvo::widenSigned(packet.byteAt(1)));
    case PacketTag::timestampData: {
      const Stamp stamp(packet);
      return stamp.isTime ? format("%u", stamp.count)
                          : format("of kind %u, which is no time", unsigned{packet.byteAt(0)});
    }
    case PacketTag::status:
      return startsLayer(packet) ? "new layer" : isPenDown(packet) ? "pen down" : "pen up";
    case PacketTag::fileDescriptor:
    case PacketTag::physicalParams:
      break;
  }
  return bytesOf(packet);
}

void writeFields(art::JsonWriter& json, const Packet& packet) {
  const auto tag = static_cast<PacketTag>(packet.tag);
  if (isWhole(packet) && tag == PacketTag::coordinatePoint) {
    const Position position(packet);
    json.member("x", position.x).member("y", position.y);
    json.member("onSheet", facts::isOnSheet(packet));
  } else if (isWhole(packet) && tag == PacketTag::pressureData) {
    json.member("algorithm", unsigned{packet.byteAt(0)}).member("pressure", pressureOf(packet));
  } else if (isWhole(packet) && tag == PacketTag::tiltData) {
    json.member("tiltX", Orvo::widenSigned(packet.byteAt(0)));
    json.member("tiltY", Orvo::widenSigned(packet.byteAt(1)));
  } else if (isWhole(packet) && tag == PacketTag::timestampData) {
    const Stamp stamp(packet);
    json.member("kind", unsigned{packet.byteAt(0)});
    json.member("count", stamp.count).member("time", stamp.time);
  } else if (isWhole(packet) && tag == PacketTag::status) {
    json.member("bits", unsigned{packet.byteAt(0)});
    json.member("newLayer", startsLayer(packet)).member("penDown", isPenDown(packet));
  } else {
    json.member("payload", hexOf(packet, ""));
  }
}

std::string oddityOf(const Packet& packet) {
  switch (packet.oddity) {
    case Oddity::none:
      return {};
    case Oddity::cut:
      return "the file ends inside this packet";
    case Oddity::endless:
      return "its length is 0, so that it would be read for ever";
    case Oddity::tooShort:
      return "its length is 1, so that its length code is the next tag";
    case Oddity::zeros:
      return "zero bytes, which are no packet";
    case Oddity::hidesPackets:
      return "probably damaged: there are known packets inside";
  }
  return {};
}

std::string failureOf(const Packet& packet) {
  switch (packet.failure) {
    case ParseFailure::badFirstTag:
      return "no file descriptor, with which a recording begins";
    case ParseFailure::badCoordinateFormat:
      return "a coordinate format other than 2";
    case ParseFailure::secondDescriptor:
      return "a second file descriptor";
    case ParseFailure::badDescriptorLength:
    case ParseFailure::wrongLength:
      if (!packet.lengthCode) return "the file ends after this tag";
      return format("the length code 0x%02X means %u bytes, %u are expected",
                    unsigned{*packet.lengthCode}, Orvo::decodeLength(*packet.lengthCode),
                    unsigned{Orvo::kLengthOfTag[packet.tag]});
    case ParseFailure::badPressureAlgorithm:
      return format("pressure algorithm %u, only 1, 5 and 6 are known", unsigned{packet.byteAt(0)});
    default:
      return {};
  }
}

}  // namespace

std::string problemOf(const Packet& packet, bool stopsReading) {
  std::string problem = failureOf(packet);
  if (problem.empty()) problem = oddityOf(packet);
  if (problem.empty() || !stopsReading) return problem;
  return "reading stops here: " + problem;
}

std::string packetToText(const Packet& packet, const std::string& problem) {
  const std::string fields = packet.oddity == Oddity::zeros ? "" : fieldsOf(packet);
  std::string line =
      format("%10lld  0x%02X  %-19s  %5llu", static_cast<long long>(packet.offset),
             unsigned{packet.tag}, packet.oddity == Oddity::zeros ? "" : nameOfPacket(packet.tag),
             static_cast<unsigned long long>(packet.size));
  if (!fields.empty()) line.append("  ").append(fields);
  if (!problem.empty()) line.append("  <-- ").append(problem);
  return line;
}

std::string packetToJson(const Packet& packet, const std::string& problem) {
  std::string text;
  art::JsonWriter json(text);
  json.beginObject().member("offset", packet.offset).member("tag", unsigned{packet.tag});
  json.member("name", nameOfPacket(packet.tag)).key("lengthCode");
  if (packet.lengthCode) {
    json.value(unsigned{*packet.lengthCode});
  } else {
    json.null();
  }
  json.member("size", packet.size);
  writeFields(json, packet);
  json.textOrNull("problem", problem).endObject();
  return text;
}

}  // namespace cli
