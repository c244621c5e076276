// The command `penwick open`.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "cli/batch_options.h"
#include "cli/output_format.h"
#include "cli/report.h"
#include "render/options.h"

namespace cli {

struct OpenOptions : BatchOptions {
  OutputFormat format = OutputFormat::svg;
  render::Options picture;
  std::optional<std::filesystem::path> journal;    ///< For one file.
  std::optional<std::filesystem::path> logFolder;  ///< Overrides the command's own.
  std::filesystem::path module;  ///< Empty: the module that belongs to this program.
  bool rescue = false;           ///< Read what can be saved of damaged files.
  bool verbose = false;
  bool builtInLibrary = true;
  bool messagesInPages = false;  ///< A page also says what is printed about its recording.
};

/// `penwick open`: opens every file with the plug-in, loading the module afresh for each, and
/// writes what it drew to a file. The plug-in decides what opens; a file that does not open is
/// explained and the others are still done.
ExitStatus openFiles(const OpenOptions& options);

/// The same, but every drawing becomes a page in this folder, under a name that only the page of
/// the same recording has; one that is there is replaced. Where messages are to be in pages, a file
/// that fails has a page that says why. Adds the pages that were made to `pages`, in the order of
/// the files.
ExitStatus openAsPages(const OpenOptions& options, const std::filesystem::path& folder,
                       std::vector<std::filesystem::path>& pages);

}  // namespace cli
