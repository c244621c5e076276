// Ink documents of other programs, translated into what the plug-in reads.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/ink_view.h"

namespace cli {

/// What was made of a document of another program.
struct TranslatedInk {
  std::uint64_t groups = 0;
  std::uint64_t traces = 0;
  /// What was left out or assumed, one line each.
  std::vector<std::string> remarks;
};

/// "3 groups, 41 traces".
std::string describe(const TranslatedInk& ink);

/// Translates a document and writes it to a file in the subset that the plug-in reads; that is read
/// back. Where that fails, `problem` says why in one sentence; there are no traces where there was
/// nothing to write.
TranslatedInk translateTo(const std::filesystem::path& file, std::string_view document,
                          const InkTreatment& treatment, std::string& problem);

/// Whether the document is InkML of another program that holds ink: the plug-in would see little of
/// it or nothing, but it can be translated.
bool needsTranslation(std::string_view document);

}  // namespace cli
