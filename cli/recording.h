// A recording as the linked readers find it.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "cli/damage.h"
#include "inkml/ink_reading.h"
#include "model/document.h"
#include "penfile/parse_report.h"
#include "penfile/pnx_document.h"
#include "penfile/shared_ref.h"

namespace cli {

enum class FileKind { pen, inkml };

/// The reader that the plug-in uses for a file of this name, when it is the first one that it
/// opens: an exact match of the extension; any other name is taken for a pen recording.
FileKind kindByName(const std::filesystem::path& file);

/// The name of a file as the readers take it.
std::wstring wideName(const std::filesystem::path& file);

/// A recording as the linked readers find it: the plug-in's own readers, in this program, to
/// explain what the plug-in did. They write no log and print nothing. The file is opened once.
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

  /// Why it is not whole: one sentence with the place and, where possible, what to do.
  std::string explainFailure() const;
  /// What was left out of a whole recording, in one sentence; empty where nothing was.
  std::string explainOmissions() const;
  /// The same, without what the pen itself did: it drew above the sheet. Nor is the end of a file
  /// explained that is known to end in zero bytes: the last of them may look like a cut packet.
  std::string explainLosses(bool endsInZeros) const;
  /// How many points above the sheet were left out, in one sentence; empty where none was.
  std::string explainDropped() const;
  /// Whether a pen recording was read to its end but has signs of damage.
  bool looksDamaged() const;
  /// How many packets with unknown tags a whole recording has, in one sentence; empty where none
  /// has.
  std::string explainUnknown() const;
  /// Whether it has any strokes, including those left out.
  bool hasStrokes() const;
  /// Which strokes are not drawn, or only in part, in one sentence; empty where all are.
  std::string explainUndrawn() const;

 private:
  void readPen();

  std::filesystem::path file_;
  FileKind kind_;
  Orvo::SharedRef<Orvo::PnxDocument> pen_;
  Orvo::ParseReport penReport_;
  DamagedPackets damaged_;
  Orvo::InkReading ink_;
};

}  // namespace cli
