// Why a pen recording does not open, and what was left out of one that does.
#pragma once

#include <filesystem>
#include <string>

#include "cli/damage.h"
#include "penfile/parse_report.h"

namespace cli {

/// Why a pen recording does not open: one sentence with the place and, where possible, what to do.
std::string explainFailure(const std::filesystem::path& file, const Orvo::ParseReport& report);

/// What was left out of a recording that opened, in one sentence; empty when nothing was. Packets
/// of unknown tags count only where they are among the damaged ones.
std::string explainOmissions(const Orvo::ParseReport& report, const DamagedPackets& damaged);

/// The damage alone: a cut or endless packet, and those that are probably damaged.
std::string explainDamage(const Orvo::ParseReport& report, const DamagedPackets& damaged);

/// How many points lie above the sheet and were left out, in one sentence; empty when none does.
std::string explainDropped(const Orvo::ParseReport& report);

/// How many packets have unknown tags, in one sentence; empty when none has.
std::string explainUnknown(const Orvo::ParseReport& report);

}  // namespace cli
