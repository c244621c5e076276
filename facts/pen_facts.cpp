#include "facts/pen_facts.h"

#include <chrono>
#include <utility>

namespace facts {

PenFacts penFactsOf(NextBytes recording) {
  PenFacts facts;
  PacketReader reader(std::move(recording));
  while (const Packet* packet = reader.next()) {
    if (packet->failure != Orvo::ParseFailure::none || packet->oddity == Oddity::endless) break;
    facts.times.add(*packet);
    facts.endsInZeros = packet->oddity == Oddity::zeros;
    if (facts.endsInZeros) {
      facts.zeroBytes += packet->size;
      if (!facts.firstZeros) facts.firstZeros = packet->offset;
    } else if (!packet->isKnown()) {
      UnknownPackets& unknown = facts.unknown[packet->tag];
      ++unknown.count;
      unknown.bytes += packet->size;
    }
  }
  return facts;
}

std::optional<Date> dateOf(std::span<const unsigned char, 7> bytes) {
  const Date date{bytes[0] << 8U | bytes[1], bytes[2], bytes[3], bytes[4], bytes[5], bytes[6]};
  const std::chrono::year_month_day day{std::chrono::year(date.year), std::chrono::month(bytes[2]),
                                        std::chrono::day(bytes[3])};
  const bool isTime = date.hour < 24 && date.minute < 60 && date.second < 60;
  if (date.year == 0 || date.year > 9999 || !day.ok() || !isTime) return std::nullopt;
  return date;
}

}  // namespace facts
