// A recording looked through: what its reader found, its packets, and how sound it is.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "cli/recording.h"
#include "facts/pen_facts.h"

namespace cli {

/// A pen recording is sound when its reader gets to its end and every packet is whole, and has a
/// length. An ink document is sound when its reader gets to its end and leaves nothing out.
struct Examination {
  Recording recording;
  std::optional<facts::PenFacts> packets;  ///< Of a pen recording.
  std::string failure;  ///< Why the reader does not get to its end, in one sentence.
  std::string losses;   ///< What is damaged or was left out of one that was read to its end.
  std::string remarks;  ///< What a person should know, though it is no damage.

  bool isSound() const { return failure.empty() && losses.empty(); }
};

Examination examine(const std::filesystem::path& file);

}  // namespace cli
