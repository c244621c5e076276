// Packets of a pen recording and elements of an ink document, a line each.
#pragma once

#include <string>

#include "facts/packet_reader.h"
#include "inkml/ink_elements.h"

namespace cli {

/// What is wrong with a packet; empty where nothing is. `stopsReading`: the reader gets here, and
/// no further.
std::string problemOf(const facts::Packet& packet, bool stopsReading);

/// "    35  0x61  coordinate                6  x 1051.4, y 1487.1".
std::string packetToText(const facts::Packet& packet, const std::string& problem);

/// {"offset":35,"tag":97,"name":"coordinate","lengthCode":6,"size":6,FIELDS,"problem":s|null}
///
/// The fields are {"x":d,"y":d,"onSheet":b}, {"algorithm":n,"pressure":n}, {"tiltX":n,"tiltY":n},
/// {"kind":n,"count":n,"time":n}, {"bits":n,"newLayer":b,"penDown":b} or, for every other packet
/// and for those that are not whole, {"payload":"hexadecimal digits"}, 32 bytes at most.
std::string packetToJson(const facts::Packet& packet, const std::string& problem);

/// "    43      <trace>  22 points", safe for a terminal.
std::string elementToText(const Orvo::InkElement& element);

/// {"line":43,"depth":2,"name":"trace","id":s|null,"type":s|null,"read":b,"points":n|null,
///  "problem":s|null}
std::string elementToJson(const Orvo::InkElement& element);

}  // namespace cli
