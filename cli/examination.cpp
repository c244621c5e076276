#include "cli/examination.h"

#include "cli/byte_stream.h"
#include "cli/sentences.h"

namespace cli {

namespace {

facts::PenFacts penFactsOf(const std::filesystem::path& file) {
  ByteStream bytes(file);
  return facts::penFactsOf([&bytes] { return bytes.next(); });
}

std::string explainZeros(const facts::PenFacts& facts) {
  if (!facts.firstZeros) return {};
  const std::string place = " (byte " + std::to_string(*facts.firstZeros) + ")";
  const std::string zeros = counted(facts.zeroBytes, "zero byte");
  if (facts.endsInZeros) return zeros + " behind the last packet" + place;
  return zeros + " between the packets, the first" + place;
}

}  // namespace

Examination examine(const std::filesystem::path& file) {
  Examination found{.recording = Recording(file, kindByName(file)),
                    .packets = {},
                    .failure = {},
                    .losses = {},
                    .remarks = {}};
  const Recording& recording = found.recording;
  if (recording.kind() == FileKind::pen) found.packets = penFactsOf(file);
  if (!recording.complete()) {
    found.failure = recording.explainFailure();
    return found;
  }
  found.losses = recording.explainLosses(found.packets && found.packets->endsInZeros);
  if (found.packets) found.losses = joined(found.losses, explainZeros(*found.packets));
  found.remarks = joined(recording.explainDropped(), recording.explainUndrawn());
  return found;
}

}  // namespace cli
