// What there is to say about the reading of one ink file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Orvo {

/// Why an ink file does not open.
enum class InkFailure {
  none,
  cannotOpen,
  unreadable,  ///< A folder, a pipe, or a device that fails.
  tooLarge,    ///< 2 GiB or more.
  tooDeep,     ///< Elements nested more than 500 deep; `line` is that of the first such element.
  tooManyAttributes,  ///< More than 10,000 on one element, which begins at `line`.
  cutCharacter,       ///< It ends inside a UTF-8 character; `line` is the last one.
  brokenXml,  ///< `libraryText` says how; `line` and `column` where the library knows them, else 0.
  noInk,      ///< No top-level node "ink"; `rootName` is what stands there instead.
};

/// What was silently left out of a file that opens, or read differently from how it looks.
enum class InkProblemKind {
  // The file was read only up to `line`. There is at most one of these.
  textAfterRoot,
  nulAfterRoot,
  documentTypeSubset,  ///< A "<!DOCTYPE" with declarations of its own; usually there is then no
                       ///< root.
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
  contextReferenceForm,  ///< Likewise: `detail` is a reference without "#".
  contextBrushMissing,   ///< Likewise: `detail` is the id that was not found.
  contextFormatMissing,

  // Layers and strokes.
  otherGroups,    ///< Groups of another spelling, such as "traceGroup"; `detail` is the name.
  looseTraces,    ///< Traces outside all groups.
  wrappedTraces,  ///< Traces in the definitions or in other elements; `detail` names the first.
  groupsWithoutLayerId,  ///< Empty layers: the "id", `detail`, does not begin with "layer".
  nestedGroups,
  otherTraces,  ///< Traces of another spelling; `detail` is the name.
  tracesWithoutText,
  tracesWithoutContext,  ///< Without "contextRef".
  tracesOfNoText,        ///< A comment or another node before the text was read as the points.
  tracesInTraces,        ///< Not read.
  tracesWithoutPoints,   ///< Read as strokes without points, whose box reaches to the origin.
  penUpTraces,           ///< Of the type "penUp", but drawn all the same.
  skippedAnnotations,    ///< Without "type" or text.
  dividedTexts,         ///< Of traces and annotations: read up to the first node that divides them.
  textsWithNul,         ///< Read up to a NUL; brush properties too.
  cutNumbers,           ///< Points with a fraction or an exponent, which was cut off.
  otherwiseCutNumbers,  ///< Points with something else after a number, which was cut off.
  wrappedNumbers,   ///< Points with a number beyond 32 bits, of which the low 32 bits were kept.
  noNumbers,        ///< Points with something that is not a number and was read as 0.
  furtherNumbers,   ///< Points with more than seven numbers.
  blankPoints,      ///< Nothing between two commas, read as the origin.
  negativeNumbers,  ///< Points with a pressure or a time below 0, read as a very large one.
  otherChannels,    ///< Trace formats that declare channels other than those of a point, or in
                    ///< another order or number; `detail` is the list.
  otherUnits,       ///< Coordinates declared in a unit other than 0.1 mm, `detail`.
};

struct InkProblem {
  InkProblemKind kind;
  std::uint64_t count = 0;
  int line = 0;              ///< Of the first one, from 1.
  std::string detail;        ///< Of the first one.
  std::uint64_t traces = 0;  ///< How many traces are in all of them together; only for groups.
};

/// How the reading of one ink file went: for people who ask why a file does not open, or what was
/// left out of one that did.
struct InkReport {
  InkFailure failure = InkFailure::none;
  int line = 0;              ///< From 1; 0 when not known.
  int column = 0;            ///< Likewise.
  std::int64_t size = 0;     ///< Of the file, in bytes.
  std::string libraryText;   ///< The XML library's own words.
  std::string rootName;      ///< Of the first top-level element; empty when there is none.
  std::string nameSpace;     ///< The root's attribute "xmlns". Names are not resolved by it.
  std::string encoding;      ///< The declared one, if it is not UTF-8 and makes a difference.
  bool isCut = false;        ///< The end of the document is missing, and the file has no NUL.
  int nulLine = 0;           ///< Of the first NUL; 0 when there is none.
  std::uint64_t traces = 0;  ///< All in the document, read or not, in any spelling.
  std::vector<InkProblem> problems;  ///< At most one of each kind, in the order of the kinds.

  /// Null when there is no such problem.
  const InkProblem* find(InkProblemKind kind) const;
};

}  // namespace Orvo
