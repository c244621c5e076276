// What a translation leaves out, assumes, or cannot say in the plug-in's subset.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace translate {

enum class RemarkKind {
  // Assumed, because the document does not say it.
  sizeAssumed,  ///< Traces without a unit, made 150 mm long together; `detail` is mm for each unit.
  pixelsAssumed,   ///< Traces without a unit beside others that have one: read as 1/96 inch.
  unknownUnit,     ///< Channels in a unit that is not known, `detail`.
  clocksUnlinked,  ///< Traces without a time of day in a document that has one: they begin at 0.

  // Points.
  pointsWithoutPlace,  ///< Left out: without X or Y.
  pointsTooFar,        ///< Left out: 100 m or more from the origin.
  valuesUnreadable,    ///< Something that is not a value.
  valuesTooMany,       ///< Points with more values than channels, of which the rest is skipped.
  channelLeftOut,      ///< Points that have a value of the channel `detail`.
  timesTooLate,        ///< Points more than 24 days after the first, kept at the latest time.

  // Traces.
  penUpTraces,          ///< Left out.
  indeterminateTraces,  ///< Drawn, though it is not known whether the pen was down.
  emptyTraces,          ///< Traces without a point that can be drawn.
  hiddenTraces,         ///< In the definitions, and shown nowhere.
  looseContinuations,   ///< Continuations of a trace that is not there: strokes of their own.

  // What surrounds them.
  transformNotApplied,   ///< Traces whose canvas transform is of the type `detail`.
  missingReference,      ///< References to something that is not there; `detail` is the first one.
  attributesUnreadable,  ///< Attributes that hold no number or time; `detail` is the first one.
  brushesNotDrawn,       ///< Kept as definitions, which the plug-in does not draw with.
  brushProperties,       ///< Brush properties that a brush of the subset lacks; `detail` is a name.
  annotationsLeftOut,    ///< Of nested groups, traces and others; and those in XML.
  unknownElements,       ///< Elements that are not InkML's; `detail` is the name of the first.
  outsideText,           ///< References to text outside the document, which is never fetched.
  nothingToDraw,         ///< The document holds no ink at all.
};

/// One kind of loss or assumption, with how often it occurs.
struct Remark {
  RemarkKind kind;
  std::uint64_t count = 0;
  std::string detail;

  bool operator==(const Remark&) const = default;
};

/// One line, without a full stop: "12 points of the channel \"C\" left out".
std::string describe(const Remark& remark);

/// Remarks in the order of their kinds: one of each kind, or one of each detail where the kind says
/// `detail` and not `the first`.
class Remarks {
 public:
  void add(RemarkKind kind, std::uint64_t count = 1, std::string_view detail = {});
  std::vector<Remark> all() const;

 private:
  std::vector<Remark> remarks_;
};

}  // namespace translate
