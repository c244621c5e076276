#include "cli/pen_explanation.h"

#include <system_error>

#include "cli/file_content.h"
#include "cli/packet_words.h"
#include "cli/sentences.h"
#include "penfile/packet_format.h"
#include "text/format.h"

namespace cli {

namespace {

namespace fs = std::filesystem;
using Orvo::ParseFailure;
using Orvo::ParseReport;
using text::format;

std::string atByte(std::int64_t offset) {
  return format(" (byte %lld)", static_cast<long long>(offset));
}

std::string explainReadError(const fs::path& file, std::int64_t offset) {
  std::error_code error;
  if (fs::is_directory(file, error)) return kThisIsAFolder;
  return "the file could not be read to its end: the system reports a read error" + atByte(offset) +
         "; copy the file from its device and try the copy";
}

std::string explainFirstTag(const fs::path& file, const ParseReport& report) {
  if (const auto foreign = describeContent(file)) return *foreign;
  if (looksLikeXml(file)) {
    return "this is an XML document, not a pen recording; an ink document opens when its name ends "
           "in .kvo or .inkml, in small letters, or with --as inkml";
  }
  return format(
      "this is not a pen recording: it begins with 0x%02X where 0x01 is expected (byte 0)",
      unsigned{report.failedPacket.tag});
}

std::string explainLength(const ParseReport& report) {
  const Orvo::PacketPlace& place = report.failedPacket;
  const char* const name = nameOfPacket(place.tag);
  if (!place.lengthCode) {
    return format("the file ends right after the tag of a %s packet", name) + atByte(place.offset) +
           "; its end was lost";
  }
  return format("a %s packet has the length code 0x%02X, that is %u bytes, where %u are expected",
                name, unsigned{*place.lengthCode}, Orvo::decodeLength(*place.lengthCode),
                unsigned{Orvo::kLengthOfTag[place.tag]}) +
         atByte(place.offset) + "; the recording is damaged there";
}

void addEnd(std::string& sentence, const ParseReport& report) {
  if (report.cutPacket) {
    addPart(sentence, "the file ends inside its last packet" + atByte(*report.cutPacket) +
                          ", the missing bytes were read as zeros");
  }
  if (report.endlessPacket) {
    addPart(sentence, "a packet of length 0" + atByte(*report.endlessPacket) +
                          " ends the recording, nothing after it was read");
  }
}

void addDamaged(std::string& sentence, const DamagedPackets& damaged) {
  if (damaged.count == 0) return;
  addPart(sentence, counted(damaged.count, "packet") +
                        " skipped whose tag or length is probably damaged, the first" +
                        atByte(damaged.first));
}

}  // namespace

std::string explainFailure(const fs::path& file, const ParseReport& report) {
  const std::int64_t offset = report.failedPacket.offset;
  switch (report.failure) {
    case ParseFailure::none:
      return "the recording is whole";
    case ParseFailure::cannotOpen:
      return explainOpening(file);
    case ParseFailure::readError:
      return explainReadError(file, offset);
    case ParseFailure::emptyFile:
      return "the file is empty (0 bytes)";
    case ParseFailure::badFirstTag:
      return explainFirstTag(file, report);
    case ParseFailure::badDescriptorLength:
    case ParseFailure::wrongLength:
      return explainLength(report);
    case ParseFailure::badCoordinateFormat:
      return "the file descriptor names a coordinate format other than 2, the only one known" +
             atByte(offset + 3);
    case ParseFailure::secondDescriptor:
      return "a second file descriptor" + atByte(offset) +
             "; two recordings in one file? Cut it there and open the two";
    case ParseFailure::badPressureAlgorithm:
      if (report.cutPacket) {
        return "the file ends inside a pressure packet" + atByte(offset) + "; its end was lost";
      }
      return "a pressure packet names an algorithm other than 1, 5 and 6" + atByte(offset + 2) +
             "; the recording is damaged there";
  }
  return "the file could not be read";
}

std::string explainOmissions(const ParseReport& report, const DamagedPackets& damaged) {
  std::string sentence;
  addEnd(sentence, report);
  sentence = joined(sentence, explainDropped(report));
  addDamaged(sentence, damaged);
  return sentence;
}

std::string explainDamage(const ParseReport& report, const DamagedPackets& damaged) {
  std::string sentence;
  addEnd(sentence, report);
  addDamaged(sentence, damaged);
  return sentence;
}

std::string explainDropped(const ParseReport& report) {
  if (report.droppedPoints == 0) return {};
  return counted(report.droppedPoints, "point") + " above the sheet left out, the first" +
         atByte(*report.firstDroppedPoint);
}

std::string explainUnknown(const ParseReport& report) {
  if (report.unknownPackets == 0) return {};
  return counted(report.unknownPackets, "packet") + " of unknown tags skipped, the first" +
         atByte(*report.firstUnknownPacket);
}

}  // namespace cli
