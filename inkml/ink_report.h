#pragma once

#include <cstdint>
#include <string>
#include <tinyxml.h>
#include <vector>

#include "inkml/definitions.h"
#include "inkml/file_scan.h"

namespace Orvo {

/// Why an ink file does not open.
enum class InkFailure {
  none,
  cannotOpen,
  unreadable,    ///< A folder, a pipe, or a device that fails.
  tooLarge,      ///< 2 GiB and more.
  tooDeep,       ///< Elements nested deeper than 500; `line` is that of the first such element.
  cutCharacter,  ///< It ends inside a UTF-8 character; `line` is the last one.
  brokenXml,  ///< As `libraryText` says; `line` and `column` where the library knows them, else 0.
  noInk,      ///< No top-level node "ink"; `rootName` is what stands there instead.
};

/// What was silently left out of a file that loads, or read otherwise than it looks.
enum class InkProblemKind {
  // The file was read only up to `line`; of these there is one at most.
  textAfterRoot,
  nulAfterRoot,
  documentTypeSubset,  ///< A "<!DOCTYPE" with declarations of its own; mostly there is no root
                       ///< then.
  instructionWithEnd,  ///< A "<?...>" with a ">" inside.
  brokenDeclaration,

  // The root and its definitions.
  noElementAsRoot,  ///< A comment or another node with the value "ink" was taken for the root.
  furtherRoots,     ///< Elements after the root.
  noElementAsDefinitions,  ///< A comment or a text with the value "definitions".
  furtherDefinitions,
  skippedFormats,              ///< Without "id".
  skippedBrushes,              ///< Without "id" or "annotationXML"; `detail` is the id.
  noElementAsBrushProperties,  ///< A comment or a text with the value "annotationXML".
  contextWithoutId,      ///< The first context that fails; the count includes all that follow.
  contextReferenceForm,  ///< Likewise: a reference without "#", `detail`.
  contextBrushMissing,   ///< Likewise: `detail` is the id that was not found.
  contextFormatMissing,

  // Layers and strokes.
  otherGroups,  ///< Groups of another spelling, such as "traceGroup"; `detail` is the name.
  looseTraces,  ///< Traces outside of all groups.
  groupsWithoutLayerId,  ///< Empty layers: the "id", `detail`, does not begin with "layer".
  nestedGroups,
  otherTraces,  ///< Traces of another spelling; `detail` is the name.
  tracesWithoutText,
  tracesWithoutContext,  ///< Without "contextRef".
  tracesOfNoText,        ///< A comment or another node in front of the text was read as the points.
  skippedAnnotations,    ///< Without "type" or text.
  dividedTexts,         ///< Of traces and annotations: read up to the first node that divides them.
  textsWithNul,         ///< Read up to a NUL; those of brushes too.
  cutNumbers,           ///< Points with a fraction or an exponent, which was cut off.
  otherwiseCutNumbers,  ///< Points with something else behind a number, which was cut off.
  wrappedNumbers,       ///< Points with a number beyond 32 bits, whose low 32 bits were kept.
  noNumbers,            ///< Points with something that is no number and was read as 0.
  furtherNumbers,       ///< Points with more than seven numbers.
};

struct InkProblem {
  InkProblemKind kind;
  std::uint64_t count = 0;
  int line = 0;        ///< Of the first, from 1.
  std::string detail;  ///< Of the first.
};

/// How the reading of one ink file went: for people who ask why a file does not open, or what was
/// left out of one that did.
struct InkReport {
  InkFailure failure = InkFailure::none;
  int line = 0;             ///< From 1; 0 when not known.
  int column = 0;           ///< Likewise.
  std::int64_t size = 0;    ///< Of the file, in bytes.
  std::string libraryText;  ///< The XML library's own words.
  std::string rootName;     ///< Of the first top-level element; empty when there is none.
  std::string nameSpace;    ///< The root's attribute "xmlns"; names are taken as they stand.
  std::vector<InkProblem> problems;  ///< One of each kind at most, in the order of the kinds.

  /// Null when there is no such problem.
  const InkProblem* find(InkProblemKind kind) const;
};

/// Looks for problems in a file that was loaded and read. `read` is what fresh definitions hold
/// after it; `scanLine` is the line where the scan ended.
std::vector<InkProblem> findProblems(const TiXmlDocument& xml, const InkMLDefinitions& read,
                                     const FileScan& scan, int scanLine);

}  // namespace Orvo
