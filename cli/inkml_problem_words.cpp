#include "cli/inkml_problem_words.h"

#include "cli/inkml_words.h"
#include "cli/sentences.h"

namespace cli {

namespace {

using Orvo::InkProblem;
using Orvo::InkProblemKind;

std::string withTraces(const InkProblem& problem) {
  return problem.traces == 0 ? "" : " with " + counted(problem.traces, "trace");
}

}  // namespace

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
      return std::string("reading stops at ") + whatStopsReading(problem.kind) +
             " after the end of the document";
    case InkProblemKind::noElementAsRoot:
      return "a comment or another node \"ink\" was taken for the document";
    case InkProblemKind::furtherRoots:
      return things("element", "elements") + " after the document not read";
    case InkProblemKind::noElementAsDefinitions:
      return "a comment or text \"definitions\" was taken for the definitions";
    case InkProblemKind::furtherDefinitions:
      return things("further \"definitions\" element", "further \"definitions\" elements") +
             " not read";
    case InkProblemKind::skippedFormats:
      return things("trace format", "trace formats") + " without an id left out";
    case InkProblemKind::skippedBrushes:
      return things("brush", "brushes") + " without an id or annotationXML left out";
    case InkProblemKind::noElementAsBrushProperties:
      return things("brush has", "brushes have") +
             " no properties, because a comment or text \"annotationXML\" was taken for them";
    case InkProblemKind::contextWithoutId:
      return things("context", "contexts") + " left out: the first has no id";
    case InkProblemKind::contextReferenceForm:
      return things("context", "contexts") + " left out: the first refers to " +
             quoted(problem.detail) + ", which does not begin with \"#\"";
    case InkProblemKind::contextBrushMissing:
      return things("context", "contexts") + " left out: the first refers to the brush " +
             quoted(problem.detail) + ", which does not exist";
    case InkProblemKind::contextFormatMissing:
      return things("context", "contexts") + " left out: the first refers to the trace format " +
             quoted(problem.detail) + ", which does not exist";
    case InkProblemKind::otherGroups:
      return things("group", "groups") + " " + quoted(problem.detail) + withTraces(problem) +
             " not read: only \"tracegroup\" is";
    case InkProblemKind::looseTraces:
      return things("trace", "traces") + " outside every \"tracegroup\" not read";
    case InkProblemKind::groupsWithoutLayerId:
      return things("group", "groups") + " without an id of the form \"layer0\"" +
             withTraces(problem) + " left empty, which extends the page to the origin";
    case InkProblemKind::nestedGroups:
      return things("nested group", "nested groups") + withTraces(problem) + " not read";
    case InkProblemKind::wrappedTraces:
      return things("trace", "traces") + " not drawn, because traces inside " +
             quoted(problem.detail) + " are not read";
    case InkProblemKind::otherTraces:
      return things("element", "elements") + " " + quoted(problem.detail) +
             " not read: only \"trace\" is";
    case InkProblemKind::tracesWithoutText:
      return things("trace", "traces") + " without points left out";
    case InkProblemKind::tracesWithoutContext:
      return things("trace", "traces") + " without a contextRef left out";
    case InkProblemKind::tracesOfNoText:
      return things("trace begins", "traces begin") +
             " with a comment or an element, which was taken for its points";
    case InkProblemKind::tracesInTraces:
      return things("trace", "traces") + " inside another trace not drawn";
    case InkProblemKind::tracesWithoutPoints:
      return things("trace has", "traces have") +
             " no points, which extends the page to the origin";
    case InkProblemKind::penUpTraces:
      return things("trace", "traces") + " of the type \"penUp\" drawn as ink";
    case InkProblemKind::skippedAnnotations:
      return things("annotation", "annotations") + " without a type or text left out";
    case InkProblemKind::dividedTexts:
      return things("text", "texts") + " read only up to the comment or element that interrupts it";
    case InkProblemKind::textsWithNul:
      return things("text", "texts") + " read up to a NUL";
    case InkProblemKind::cutNumbers:
      return things("point has", "points have") + " a fraction or an exponent, which was cut off";
    case InkProblemKind::otherwiseCutNumbers:
      return things("point has", "points have") +
             " something else after a number, which was cut off";
    case InkProblemKind::wrappedNumbers:
      return things("point has", "points have") +
             " a number that is too large, and only its low 32 bits were kept";
    case InkProblemKind::noNumbers:
      return things("point has", "points have") +
             " something that is not a number and was read as 0";
    case InkProblemKind::furtherNumbers:
      return things("point has", "points have") +
             " more than seven numbers, and only the first seven were read";
    case InkProblemKind::blankPoints:
      return things("point is", "points are") + " blank and drawn at the origin";
    case InkProblemKind::negativeNumbers:
      return things("point has", "points have") +
             " a pressure or time below 0, which was read as a very large one";
    case InkProblemKind::otherChannels:
      return "the channels are declared as " + quoted(problem.detail) +
             ", but points are always read as x, y, z, force, tilt x, tilt y, time";
    case InkProblemKind::otherUnits:
      return "coordinates are declared in " + quoted(problem.detail) +
             ", but are always read in tenths of a millimetre";
  }
  return {};
}

}  // namespace cli
