#include "translate/remarks.h"

#include <algorithm>

namespace translate {
namespace {

std::string counted(std::uint64_t count, std::string_view one, std::string_view many) {
  return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

std::string inQuotes(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

// Whether each detail has a remark of its own; of the other kinds the first detail stays.
bool hasOneOfEachDetail(RemarkKind kind) {
  return kind == RemarkKind::unknownUnit || kind == RemarkKind::channelLeftOut ||
         kind == RemarkKind::transformNotApplied || kind == RemarkKind::brushProperties;
}

// A hostile document could make as many as it has elements.
constexpr std::size_t kMostOfAKind = 100;

std::string describeAssumption(const Remark& remark) {
  const std::string traces = counted(remark.count, "trace", "traces");
  switch (remark.kind) {
    case RemarkKind::sizeAssumed:
      return traces + " without a unit, taken as " + remark.detail + " mm for each unit";
    case RemarkKind::pixelsAssumed:
      return traces + " without a unit, taken as 1/96 inch for each unit";
    case RemarkKind::unknownUnit:
      return counted(remark.count, "channel", "channels") + " in the unit " +
             inQuotes(remark.detail) + ", which is not known";
    default:
      return traces + " without a time of day, begun at 0";
  }
}

std::string describePoints(const Remark& remark) {
  const std::string points = counted(remark.count, "point", "points");
  switch (remark.kind) {
    case RemarkKind::pointsWithoutPlace:
      return points + " without X or Y left out";
    case RemarkKind::pointsTooFar:
      return points + " left out, 100 m or more from the origin";
    case RemarkKind::valuesUnreadable:
      return counted(remark.count, "value", "values") + " of points not readable";
    case RemarkKind::valuesTooMany:
      return points + " with more values than channels, the rest left out";
    case RemarkKind::channelLeftOut:
      return points + " of the channel " + inQuotes(remark.detail) + " left out";
    default:
      return points + " more than 24 days after the first, given the latest time";
  }
}

std::string describeTraces(const Remark& remark) {
  const std::string traces = counted(remark.count, "trace", "traces");
  switch (remark.kind) {
    case RemarkKind::penUpTraces:
      return traces + " with the pen up left out";
    case RemarkKind::indeterminateTraces:
      return traces + " drawn, though the pen may have been up";
    case RemarkKind::emptyTraces:
      return traces + " without points left out";
    case RemarkKind::hiddenTraces:
      return traces + " in definitions left out, since nothing shows them";
    default:
      return counted(remark.count, "continuation", "continuations") +
             " of a trace that is not there, drawn as a stroke each";
  }
}

std::string describeSurroundings(const Remark& remark) {
  const auto count = [&remark](std::string_view one, std::string_view many) {
    return counted(remark.count, one, many);
  };
  switch (remark.kind) {
    case RemarkKind::transformNotApplied:
      return count("trace", "traces") + " drawn without the canvas transform of the type " +
             inQuotes(remark.detail);
    case RemarkKind::missingReference:
      return count("reference", "references") + " to something that is not there, the first to " +
             inQuotes(remark.detail);
    case RemarkKind::attributesUnreadable:
      return count("attribute", "attributes") + " not readable, the first " + remark.detail;
    case RemarkKind::brushesNotDrawn:
      return count("brush", "brushes") + " kept, but strokes are drawn by their pressure alone";
    case RemarkKind::brushProperties:
      return count("brush property", "brush properties") + " " + inQuotes(remark.detail) +
             " left out";
    case RemarkKind::annotationsLeftOut:
      return count("annotation", "annotations") + " left out";
    case RemarkKind::unknownElements:
      return count("element", "elements") + " not of InkML, the first " + inQuotes(remark.detail) +
             ", left out";
    case RemarkKind::outsideText:
      return count("reference", "references") + " to text outside the document left out";
    default:
      return "there is no ink in the document";
  }
}

}  // namespace

std::string describe(const Remark& remark) {
  if (remark.kind <= RemarkKind::clocksUnlinked) return describeAssumption(remark);
  if (remark.kind <= RemarkKind::timesTooLate) return describePoints(remark);
  if (remark.kind <= RemarkKind::looseContinuations) return describeTraces(remark);
  return describeSurroundings(remark);
}

void Remarks::add(RemarkKind kind, std::uint64_t count, std::string_view detail) {
  if (count == 0) return;
  const bool byDetail = hasOneOfEachDetail(kind);
  std::size_t ofTheKind = 0;
  for (Remark& known : remarks_) {
    if (known.kind != kind) continue;
    ++ofTheKind;
    if (!byDetail || known.detail == detail || ofTheKind == kMostOfAKind) {
      known.count += count;
      return;
    }
  }
  remarks_.push_back({kind, count, std::string(detail)});
}

std::vector<Remark> Remarks::all() const {
  std::vector<Remark> sorted = remarks_;
  std::ranges::stable_sort(sorted, {}, &Remark::kind);
  return sorted;
}

}  // namespace translate
