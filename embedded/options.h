// How a host may differ from the usual one: what it lacks, which layouts it has, what it refuses,
// and which calls fail by fault injection.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "hostapi/types.h"

namespace embedded {

/// When a call fails by fault injection: instead of being carried out, or once it has been.
enum class FaultMoment { instead, afterwards };

/// Fault injection: answers one call of a function with a code, carried out or not. The basic suite
/// has the name "SP Basic Suite"; call k of its "AcquireSuite" is the k-th suite asked for.
struct Fault {
  std::string suite;
  std::string function;
  std::size_t call = 1;  ///< counted from 1 over the host's life; 0: every call
  /// What the call answers. A function whose result is a number returns it as that number; one
  /// without a result does nothing.
  hostapi::AIErr code = 0;
  FaultMoment moment = FaultMoment::instead;
};

/// A slot, counted from 0, that holds a null pointer.
struct NullSlot {
  std::string suite;
  std::size_t slot = 0;
};

/// The number of slots of the Unicode String suite, which decides where those after slot 10 lie.
enum class UnicodeStringLayout { slots38, slots36 };
/// The Document suite's set-up functions in slots 10 and 11 with the version number in 40, or in 13
/// and 14 with the targeting in 40.
enum class DocumentLayout { newer, older };
/// The plain file-format message, or one with a file record of 300 bytes before the option, which
/// begins with a drive letter and ':' or with two backslashes.
enum class MessageLayout { plain, driveRecord, networkRecord };
/// What looking up a missing style answers: 'NAM?', or 0; the style is null in both cases.
enum class MissingStyle { nameNotFound, nullStyle };
/// The width of the counts and indices of the Art Set suite.
enum class ArtSetNumbers { bits32, bits64 };
/// Whether LayerArtSet lists the layer's own group, as its first object.
enum class LayerGroup { leftOut, counted };

/// Whether a null handle where one is required is only refused with 'PARM', or also reported as
/// misuse.
enum class NullHandles { refused, misuse };
/// Whether SetDocumentSetup accepts a page without width or height, or refuses it with 'PARM'.
enum class FlatPages { taken, refused };
/// What a failed call leaves in its out parameters: what was there before, or meaningless values:
/// 99, false, a handle of nothing, a text that says where it comes from. With `left`, looking up a
/// missing style sets it to null.
enum class FailedOuts { left, filled };

struct Options {
  std::set<std::string> lackingSuites;  ///< 'S!Fd' for these
  /// The version to offer instead of the usual one, by the suite's name.
  std::map<std::string, std::int32_t> suiteVersions;
  std::vector<NullSlot> nullSlots;
  std::vector<Fault> faults;

  UnicodeStringLayout unicodeStringLayout = UnicodeStringLayout::slots38;
  DocumentLayout documentLayout = DocumentLayout::newer;
  MessageLayout messageLayout = MessageLayout::plain;
  MissingStyle missingStyle = MissingStyle::nameNotFound;
  ArtSetNumbers artSetNumbers = ArtSetNumbers::bits32;
  LayerGroup layerGroup = LayerGroup::leftOut;
  NullHandles nullHandles = NullHandles::refused;
  FlatPages flatPages = FlatPages::taken;
  FailedOuts failedOuts = FailedOuts::left;

  /// Called while ImportStyles runs, since the host opens a document for it: messages sent to the
  /// plug-in from here arrive while it is handling another one.
  std::function<void()> whileImporting;

  /// Called with true when a call of the plug-in arrives, and with false when it is answered: what
  /// happens in between is the host's own work.
  std::function<void(bool)> atBorder;

  std::int32_t appMajorVersion = 16;
  std::int32_t appMinorVersion = 0;

  /// Serve the built-in style library under `libraryPath`.
  bool builtInLibrary = true;
  /// Where the plug-in looks for its style library, as native bytes; by default
  /// "Penwick/brush_pressure.ai" in the user's local application-data folder.
  std::optional<std::string> libraryPath;

  /// Compute the checksum of every long array for the journal, which otherwise records only their
  /// lengths.
  bool journalChecksums = true;
  /// Capture what the module prints while it handles messages.
  bool captureOutput = true;
  /// What the host calls the plug-in; empty: the name of its module.
  std::string pluginName;
};

}  // namespace embedded
