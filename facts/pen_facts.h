// What there is to say about the packets of a pen recording.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>

#include "facts/packet_reader.h"
#include "facts/pen_clock.h"

namespace facts {

/// The packets of one unknown tag.
struct UnknownPackets {
  std::uint64_t count = 0;
  std::uint64_t bytes = 0;  ///< Of all together, tags and length codes included.

  bool operator==(const UnknownPackets&) const = default;
};

/// Counted up to where the parser stops.
struct PenFacts {
  std::map<unsigned char, UnknownPackets> unknown;  ///< By tag.
  std::uint64_t zeroBytes = 0;                      ///< Bytes that belong to no packet.
  std::optional<std::int64_t> firstZeros;           ///< Where the first of them lie.
  bool endsInZeros = false;                         ///< Nothing follows the last of them.
  PenTimes times;
};

PenFacts penFactsOf(NextBytes recording);

/// A date and time of day.
struct Date {
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;

  bool operator==(const Date&) const = default;
};

/// The date that the seven bytes of the date packet are when they are read as a year of two bytes,
/// high byte first, month, day, hour, minute and second. All known recordings have a date in this
/// form, but nobody has described it. Nothing where that gives no date.
std::optional<Date> dateOf(std::span<const unsigned char, 7> bytes);

}  // namespace facts
