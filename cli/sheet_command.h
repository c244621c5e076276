// The command `penwick sheet`.
#pragma once

#include <string>

#include "cli/batch_options.h"
#include "cli/report.h"

namespace cli {

enum class SheetFormat { html, pdf };

struct SheetOptions : BatchOptions {
  SheetFormat format = SheetFormat::html;
  std::filesystem::path output;  ///< "-" is standard output.
  std::string title;
  bool replaceRecordings = false;
};

/// `penwick sheet`: draws every file as a small picture and writes one contact sheet of them all. A
/// file that cannot be drawn has its place on the sheet, too, and counts as failed.
ExitStatus makeSheet(const SheetOptions& options);

}  // namespace cli
