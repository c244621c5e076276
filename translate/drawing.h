// The traces of a document on their way into the subset.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/document.h"
#include "translate/trace_reader.h"

namespace translate {

/// Collects layers and strokes. What depends on the whole drawing, its scale, the range of the
/// pressure and the beginning of time, is settled when all are there.
class Drawing {
 public:
  using Number = std::uint32_t;
  using Annotations = std::map<std::string, std::string>;
  static constexpr Number kNone = 0xFFFFFFFF;

  explicit Drawing(Remarks& remarks) : remarks_(remarks) {}

  /// The number of a layer above all others. One without strokes will not be in the result.
  Number addLayer(Annotations annotations);

  /// The number of a stroke above all others of the layer.
  Number addStroke(Number layer, TracePoints points);

  /// Makes a stroke go on with another one. False if one of them has been joined so already, or if
  /// they would go round in a circle.
  bool join(Number before, Number after);

  /// Scales strokes without a unit.
  void settleScale(std::optional<double> millimetresPerUnit);
  void settlePressure();
  void settleTimes();

  /// Moves everything into a document. The brush of each stroke, in order, goes to `brushes`.
  void moveInto(Orvo::Document& document, std::vector<InkTree::Index>& brushes);

 private:
  struct Stroke {
    TracePoints points;
    Number layer = 0;
    Number next = kNone;    // The stroke that it goes on with.
    Number chain = 0;       // Leads to a number that all strokes joined together share.
    bool isJoined = false;  // Another stroke goes on with it.
  };
  class Writer;

  Number chainOf(Number stroke);
  double largestExtent() const;
  void continueTimes();
  void shiftTimes(bool ofClocks);

  Remarks& remarks_;
  std::vector<Annotations> layers_;
  std::vector<Stroke> strokes_;
};

}  // namespace translate
