// How a host may differ from the ordinary one: what it lacks, which layouts it has, what it
// refuses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "hostapi/types.h"

namespace embedded {

/// Answers one call of a function with a code instead of carrying it out. The basic suite goes by
/// the name "SP Basic Suite": its "AcquireSuite", call k, is the k-th suite asked for.
struct Fault {
  std::string suite;
  std::string function;
  std::size_t call = 1;  ///< counted from 1 over the host's life; 0: every call
  /// What the call answers. A function whose result is a number gives it as that number, one
  /// without a result does nothing.
  hostapi::AIErr code = 0;
};

/// A slot, counted from 0, that holds a null pointer.
struct NullSlot {
  std::string suite;
  std::size_t slot = 0;
};

/// Where the Unicode String suite has what follows its slot 10.
enum class UnicodeStringLayout { slots38, slots36 };
/// Document set-up at 10 and 11 with the version number at 40, or at 13 and 14 with the targeting
/// at 40.
enum class DocumentLayout { newer, older };
/// The file-format message as it is, or with a file record of 300 bytes before the option,
/// which begins with a drive letter and ':' or with two backslashes.
enum class MessageLayout { plain, driveRecord, networkRecord };
/// What the look-up of a style that is not there answers: 'NAM?', or 0; the style is null in both.
enum class MissingStyle { nameNotFound, nullStyle };
/// The width of the counts and indices of the Art Set suite.
enum class ArtSetNumbers { bits32, bits64 };
/// Whether the layer's own group is among what LayerArtSet finds in it, as the first.
enum class LayerGroup { leftOut, counted };

struct Options {
  std::set<std::string> lackingSuites;  ///< 'S!Fd' for these
  /// The version to offer in place of the usual.
  std::map<std::string, std::int32_t> suiteVersions;
  std::vector<NullSlot> nullSlots;
  std::vector<Fault> faults;

  UnicodeStringLayout unicodeStringLayout = UnicodeStringLayout::slots38;
  DocumentLayout documentLayout = DocumentLayout::newer;
  MessageLayout messageLayout = MessageLayout::plain;
  MissingStyle missingStyle = MissingStyle::nameNotFound;
  ArtSetNumbers artSetNumbers = ArtSetNumbers::bits32;
  LayerGroup layerGroup = LayerGroup::leftOut;

  std::int32_t appMajorVersion = 16;
  std::int32_t appMinorVersion = 0;

  /// Serve the built-in style library under `libraryPath`.
  bool builtInLibrary = true;
  /// Where the plug-in looks for its style library, as native bytes; when not given,
  /// "Penwick/brush_pressure.ai" in the user's local application-data folder.
  std::optional<std::string> libraryPath;

  /// Reckon the checksum of every long array for the journal. Without it the journal has their
  /// lengths only.
  bool journalChecksums = true;
  /// Keep aside what the module prints during its messages.
  bool captureOutput = true;
  /// What the host calls the plug-in; empty: the name of its module.
  std::string pluginName;
};

}  // namespace embedded
