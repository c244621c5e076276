#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "inkml/ink_reading.h"
#include "model/document.h"
#include "penfile/parse_report.h"
#include "penfile/pnx_document.h"
#include "penfile/shared_ref.h"

namespace cli {

enum class FileKind { pen, inkml };

/// The reader that the plug-in takes for a file of this name as the first one that it opens: by the
/// extension, exactly; any other name is taken for a pen recording.
FileKind kindByName(const std::filesystem::path& file);

/// A recording as the linked readers find it: the plug-in's own readers, in this program, to
/// explain what the plug-in did. They write no log and print nothing.
class Recording {
 public:
  Recording(std::filesystem::path file, FileKind kind);

  FileKind kind() const { return kind_; }
  /// As far as it was read; `complete` tells whether that is all.
  Orvo::Document& document() const;
  bool complete() const { return document().complete.value; }

  /// Null for an ink document.
  const Orvo::PnxDocument* pen() const { return pen_.get(); }
  /// Null for a pen recording.
  Orvo::InkMLDefinitions* definitions() const { return ink_.definitions.get(); }

  /// Why it is not whole, in one sentence with the place and, where there is something to do, what.
  std::string explainFailure() const;
  /// What was left out of one that is whole, in one sentence; empty when nothing was.
  std::string explainOmissions() const;
  /// What of it is not drawn, likewise.
  std::string explainUndrawn() const;

 private:
  void readPen();

  std::filesystem::path file_;
  FileKind kind_;
  Orvo::SharedRef<Orvo::PnxDocument> pen_;
  Orvo::ParseReport penReport_;
  Orvo::InkReading ink_;
};

}  // namespace cli
