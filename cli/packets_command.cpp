#include "cli/packets_command.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "cli/byte_stream.h"
#include "cli/inkml_failure.h"
#include "cli/inkml_omissions.h"
#include "cli/input_file.h"
#include "cli/limits.h"
#include "cli/listing_output.h"
#include "cli/packet_lines.h"
#include "cli/pen_explanation.h"
#include "cli/sentences.h"
#include "inkml/ink_reading.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

/// What stopped the reader of a pen recording, as its own report has it.
Orvo::ParseReport reportOf(const facts::Packet& packet) {
  Orvo::ParseReport report;
  report.failure = packet.failure;
  report.failedPacket = {packet.offset, packet.tag, packet.lengthCode};
  if (packet.oddity == facts::Oddity::cut) report.cutPacket = packet.offset;
  if (packet.oddity == facts::Oddity::endless) report.endlessPacket = packet.offset;
  return report;
}

class PenListing {
 public:
  explicit PenListing(const PacketsOptions& options) : options_(options) {}

  /// Lists the packets in `start` and those that the stream goes on with. False where the reader
  /// does not get to the end; that was reported.
  bool list(std::string start, ByteStream& stream) {
    facts::PacketReader reader([&]() -> std::string_view {
      // What is known by now is shown before there is any waiting.
      if (!output_.flush()) return {};
      return start.empty() ? stream.next() : std::string_view(kept_ = std::exchange(start, {}));
    });
    while (const facts::Packet* packet = reader.next()) {
      add(*packet);
      if (!output_.isOpen()) break;
    }
    // What nobody takes any more is no failure of the listing.
    return !output_.flush() || conclude(stream);
  }

 private:
  void add(const facts::Packet& packet) {
    const bool stops =
        packet.failure != Orvo::ParseFailure::none || packet.oddity == facts::Oddity::endless;
    const bool isFirst = stops && !stopped_;
    if (isFirst) stopped_ = reportOf(packet);
    isEmpty_ = false;
    const std::string problem = problemOf(packet, isFirst);
    output_.add(options_.json ? packetToJson(packet, problem) : packetToText(packet, problem));
  }

  bool conclude(const ByteStream& stream) {
    if (stream.error() != 0) {
      const std::error_code error(stream.error(), std::generic_category());
      return fail(error == std::errc::is_a_directory ? kThisIsAFolder
                                                     : "it cannot be read: " + error.message());
    }
    Orvo::ParseReport report = stopped_.value_or(Orvo::ParseReport());
    if (isEmpty_) report.failure = Orvo::ParseFailure::emptyFile;
    // Standard input has no file whose first bytes could be looked at.
    const fs::path file = isStandardInput(options_.file) ? fs::path() : options_.file;
    if (report.failure == Orvo::ParseFailure::none) return true;
    return fail(explainFailure(file, report));
  }

  bool fail(const std::string& sentence) {
    reportError(options_.file, sentence);
    return false;
  }

  const PacketsOptions& options_;
  ListingOutput output_;
  std::string kept_;
  std::optional<Orvo::ParseReport> stopped_;
  bool isEmpty_ = true;
};

bool fail(const fs::path& file, const std::string& sentence) {
  reportError(file, sentence);
  return false;
}

bool listElements(const PacketsOptions& options, const fs::path& file) {
  ListingOutput output;
  const Orvo::InkReading reading =
      Orvo::readInk(wideName(file).c_str(), [&](const Orvo::InkElement& element) {
        output.add(options.json ? elementToJson(element) : elementToText(element));
      });
  if (!output.flush()) return true;
  if (reading.report.failure != Orvo::InkFailure::none) {
    return fail(options.file, explainFailure(file, reading.report));
  }
  const std::string omissions = explainOmissions(reading.report, reading.document->size());
  if (!omissions.empty()) reportWarning(options.file, omissions);
  return true;
}

/// Lists an ink document that comes through a pipe and begins with `start`: its reader needs a file
/// that it can open.
bool listPipedElements(const PacketsOptions& options, const std::string& start,
                       ByteStream& stream) {
  const InputFile input(options.file, start, [&stream] { return stream.next(); });
  if (stream.error() != 0) {
    return fail(options.file,
                "it cannot be read: " + std::generic_category().message(stream.error()));
  }
  if (input.problem()) return fail(options.file, *input.problem());
  return listElements(options, input.path());
}

/// The kind of what comes through a pipe, by as much of its start as that takes.
FileKind kindOfPipe(ByteStream& stream, std::string& start) {
  while (start.size() < kMostWhiteSpace) {
    const std::string_view more = stream.next();
    if (more.empty()) break;
    start += more;
    if (const auto kind = kindByStart(start)) return *kind;
  }
  return FileKind::pen;
}

bool listPipe(const PacketsOptions& options, ByteStream& stream) {
  std::optional<FileKind> kind = options.kind;
  if (!kind && nameDecidesKind(options.file)) kind = kindByName(options.file);
  std::string start;
  if (!kind) kind = kindOfPipe(stream, start);
  if (*kind == FileKind::inkml) return listPipedElements(options, start, stream);
  return PenListing(options).list(std::move(start), stream);
}

bool listFile(const PacketsOptions& options) {
  const FileKind kind = options.kind.value_or(kindByName(options.file));
  if (kind == FileKind::inkml) return listElements(options, options.file);
  ByteStream stream(options.file);
  if (!stream.isOpen()) return fail(options.file, explainOpening(options.file));
  return PenListing(options).list({}, stream);
}

bool listAny(const PacketsOptions& options) {
  if (const auto refusal = refusalToOpenFiles()) return fail(options.file, *refusal);
  std::error_code error;
  const fs::file_status status = fs::status(options.file, error);
  if (isStandardInput(options.file) || fs::is_fifo(status)) {
    ByteStream stream(options.file);
    if (stream.isOpen()) return listPipe(options, stream);
    return fail(options.file, explainOpening(options.file));
  }
  if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status)) {
    return fail(options.file, kThisIsADevice);
  }
  return listFile(options);
}

}  // namespace

ExitStatus listPackets(const PacketsOptions& options) {
  return listAny(options) ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
