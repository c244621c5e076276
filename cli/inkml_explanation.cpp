#include "cli/inkml_explanation.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <system_error>

#include "cli/sentences.h"
#include "penfile/packets.h"

namespace cli {

namespace {

using Orvo::InkFailure;
using Orvo::InkProblem;
using Orvo::InkProblemKind;
using Orvo::InkReport;

// The tag of the file descriptor, with which a pen's recording begins; no XML does.
constexpr int kFirstByteOfRecording = static_cast<int>(Orvo::PacketTag::fileDescriptor);

std::string atLine(int line, int column = 0) {
  if (line == 0) return {};
  const std::string place = " (line " + std::to_string(line);
  return place + (column == 0 ? "" : ", column " + std::to_string(column)) + ")";
}

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string explainUnreadable(const std::filesystem::path& file) {
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) {
    return kThisIsAFolder;
  }
  return "the file could not be read to its end: the system reports a read error; copy it from its "
         "device and try the copy";
}

/// What ended the reading before the file's end; null for other problems.
const char* whatEndsReading(InkProblemKind kind) {
  switch (kind) {
    case InkProblemKind::textAfterRoot:
      return "text";
    case InkProblemKind::nulAfterRoot:
      return "a NUL";
    case InkProblemKind::documentTypeSubset:
      return "a DOCTYPE with declarations of its own";
    case InkProblemKind::instructionWithEnd:
      return "a processing instruction with a \">\" inside";
    case InkProblemKind::brokenDeclaration:
      return "a broken declaration";
    default:
      return nullptr;
  }
}

std::string explainRoot(const InkReport& report) {
  if (report.rootName.empty()) {
    const InkProblem* first = report.problems.empty() ? nullptr : &report.problems.front();
    const char* end = first == nullptr ? nullptr : whatEndsReading(first->kind);
    if (end == nullptr) return "this is no ink document: it has no element at its top";
    return "this is no ink document: " + std::string(end) + " before its first element" +
           atLine(first->line) + " ends the reading; take it out";
  }
  std::string sentence =
      "this is no ink document: its top element is " + quoted(report.rootName) + ", not \"ink\"";
  if (report.rootName.ends_with(":ink")) {
    sentence += "; names with a prefix are not understood, take the prefix " +
                quoted(report.rootName.substr(0, report.rootName.size() - 3)) +
                " out of every element";
  }
  return sentence;
}

std::string explainXml(const InkReport& report) {
  std::string words = report.libraryText;
  if (!words.empty()) words.front() = static_cast<char>(std::tolower(words.front()));
  while (words.ends_with('.'))
    words.pop_back();
  // The library knows no line where the file came to its end too early.
  const std::string place = report.line == 0 ? ", at its end; it may be cut off, try an older copy"
                                             : atLine(report.line, report.column);
  return "its XML is broken: " + words + place;
}

/// One problem in words.
std::string describe(const InkProblem& problem) {
  const auto things = [&](const char* one, const char* many) {
    return counted(problem.count, one, many);
  };
  switch (problem.kind) {
    case InkProblemKind::textAfterRoot:
    case InkProblemKind::nulAfterRoot:
    case InkProblemKind::documentTypeSubset:
    case InkProblemKind::instructionWithEnd:
    case InkProblemKind::brokenDeclaration:
      return std::string(whatEndsReading(problem.kind)) +
             " behind the end of the document ends the reading";
    case InkProblemKind::noElementAsRoot:
      return "a comment or other node \"ink\" was taken for the document";
    case InkProblemKind::furtherRoots:
      return things("element", "elements") + " behind the document not read";
    case InkProblemKind::noElementAsDefinitions:
      return "a comment or text \"definitions\" was taken for the definitions";
    case InkProblemKind::furtherDefinitions:
      return things("further definitions element", "further definitions elements") + " not read";
    case InkProblemKind::skippedFormats:
      return things("trace format", "trace formats") + " without id left out";
    case InkProblemKind::skippedBrushes:
      return things("brush", "brushes") + " without id or annotationXML left out";
    case InkProblemKind::noElementAsBrushProperties:
      return things("brush has", "brushes have") +
             " no properties, since a comment or text \"annotationXML\" was taken for them";
    case InkProblemKind::contextWithoutId:
      return things("context", "contexts") + " left out, the first has no id";
    case InkProblemKind::contextReferenceForm:
      return things("context", "contexts") + " left out, the first refers to " +
             quoted(problem.detail) + ", which does not begin with \"#\"";
    case InkProblemKind::contextBrushMissing:
      return things("context", "contexts") + " left out, the first refers to the brush " +
             quoted(problem.detail) + ", which is not there";
    case InkProblemKind::contextFormatMissing:
      return things("context", "contexts") + " left out, the first refers to the trace format " +
             quoted(problem.detail) + ", which is not there";
    case InkProblemKind::otherGroups:
      return things("group", "groups") + " " + quoted(problem.detail) +
             " not read, only \"tracegroup\" is";
    case InkProblemKind::looseTraces:
      return things("trace", "traces") + " outside of every \"tracegroup\" not read";
    case InkProblemKind::groupsWithoutLayerId:
      return things("group", "groups") + " without an id of the form \"layer0\" left empty";
    case InkProblemKind::nestedGroups:
      return things("nested group", "nested groups") + " not read";
    case InkProblemKind::otherTraces:
      return things("element", "elements") + " " + quoted(problem.detail) +
             " not read, only \"trace\" is";
    case InkProblemKind::tracesWithoutText:
      return things("trace", "traces") + " without points left out";
    case InkProblemKind::tracesWithoutContext:
      return things("trace", "traces") + " without contextRef left out";
    case InkProblemKind::tracesOfNoText:
      return things("trace begins", "traces begin") +
             " with a comment or an element, which was taken for its points";
    case InkProblemKind::skippedAnnotations:
      return things("annotation", "annotations") + " without type or text left out";
    case InkProblemKind::dividedTexts:
      return things("text", "texts") + " read only up to the comment or element that divides it";
    case InkProblemKind::textsWithNul:
      return things("text", "texts") + " read up to a NUL";
    case InkProblemKind::cutNumbers:
      return things("point has", "points have") + " a fraction or an exponent, which was cut off";
    case InkProblemKind::otherwiseCutNumbers:
      return things("point has", "points have") +
             " something else behind a number, which was cut off";
    case InkProblemKind::wrappedNumbers:
      return things("point has", "points have") +
             " a number that is too large, of which the low 32 bits were kept";
    case InkProblemKind::noNumbers:
      return things("point has", "points have") + " something that is no number and was read as 0";
    case InkProblemKind::furtherNumbers:
      return things("point has", "points have") + " more than seven numbers, the rest was left out";
  }
  return {};
}

}  // namespace

std::string explainFailure(const std::filesystem::path& file, const InkReport& report) {
  const bool isReadable = report.failure == InkFailure::cutCharacter ||
                          report.failure == InkFailure::brokenXml ||
                          report.failure == InkFailure::noInk;
  if (isReadable && std::ifstream(file, std::ios::binary).get() == kFirstByteOfRecording) {
    return "this is no ink document; it looks like a pen recording: one opens when its name ends "
           "in "
           ".pnx or .eli";
  }
  switch (report.failure) {
    case InkFailure::none:
      return "the ink document is whole";
    case InkFailure::cannotOpen:
      return explainOpening(file);
    case InkFailure::unreadable:
      return explainUnreadable(file);
    case InkFailure::tooLarge:
      return "the file has 2 GiB or more, ink documents are read up to that size; split it";
    case InkFailure::tooDeep:
      return "elements nest more than 500 deep" + atLine(report.line) + "; no ink document does";
    case InkFailure::cutCharacter:
      return "the file ends inside a character" + atLine(report.line) + "; its end was lost";
    case InkFailure::brokenXml:
      return report.size == 0 ? "the file is empty (0 bytes)" : explainXml(report);
    case InkFailure::noInk:
      return explainRoot(report);
  }
  return "the file could not be read";
}

std::string explainOmissions(const InkReport& report, std::size_t layers) {
  std::string sentence;
  for (const InkProblem& problem : report.problems) {
    addPart(sentence, describe(problem) + atLine(problem.line));
  }
  if (layers == 0 && !report.nameSpace.empty()) {
    addPart(sentence,
            "the document has the namespace " + quoted(report.nameSpace) +
                "; only lower-case \"tracegroup\" elements with ids \"layer0\", \"layer1\" "
                "... are read as layers");
  }
  return sentence;
}

}  // namespace cli
