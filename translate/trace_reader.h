// Reads one trace: its points in millimetres, degrees and milliseconds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "translate/clock.h"
#include "translate/layout.h"
#include "translate/trace_text.h"

namespace translate {

inline constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();

/// One point of a trace. Values that it does not have are NaN.
struct Sample {
  double x = 0;  ///< In mm, or in the document's units where nobody says how long they are.
  double y = 0;
  double force = kNothing;  ///< As the document has it.
  double time = 0;          ///< In ms.
  float tiltX = 0;          ///< In degrees.
  float tiltY = 0;
  bool isPenUp = false;  ///< Here the stroke breaks off; the point is not part of it.
};

/// The points of one trace.
struct TracePoints {
  std::vector<Sample> samples;
  InkTree::Index brush = InkTree::kNone;
  double leastForce = 0;
  double greatestForce = kNothing;  ///< NaN where it is not declared.
  double period = 0;                ///< ms from point to point; 0 when not known.
  bool hasUnit = false;             ///< x and y are in mm.
  bool hasClock = false;            ///< Times count from a time of day.
  bool hasStart = false;            ///< The trace says when it begins.
};

/// The points from `first` to `last`, counted from 0.
struct PointRange {
  std::size_t first = 0;
  std::size_t last = static_cast<std::size_t>(-1);
};

/// Reads traces. What it is given must outlive it.
class TraceReader {
 public:
  TraceReader(const InkTree& tree, Contexts& contexts, Remarks& remarks);

  TracePoints read(InkTree::Index trace, const Surroundings& surroundings, PointRange range);

  /// Says what the traces held that has no counterpart.
  void report();

 private:
  // When the points of a trace were written.
  struct Timing {
    double start = 0;
    double step = 0;         // From point to point, where the points do not say it.
    double base = kNothing;  // From which T counts; NaN: there is no T.
    bool hasClock = false;
    bool hasStart = false;
  };

  void findOnlyFormat();
  Surroundings withOnlyFormat(std::string_view text, const Surroundings& surroundings);
  void beginChannels(const Layout& layout);
  void decode(std::span<const Token> tokens, const Layout& layout);
  void countLeftOut(std::span<const Token> tokens, const Layout& layout);
  bool place(const Layout& layout, Sample& sample) const;
  void orient(const Layout& layout, Sample& sample) const;
  double value(const Layout& layout, Role role) const;
  Timing timingOf(InkTree::Index trace, const Layout& layout, const Surroundings& surroundings);

  const InkTree& tree_;
  Remarks& remarks_;
  Layouts layouts_;
  Clock clock_;
  Surroundings onlyFormat_;  // Of the document's only trace format, if it has only one.
  TraceText text_;
  std::vector<ChannelValues> channels_;
  std::vector<double> values_;                    // Of the point at hand; NaN where it has none.
  std::map<std::string, std::uint64_t> leftOut_;  // Values by the names of their channels.
  std::vector<std::uint64_t> leftOutHere_;        // In the trace at hand, by channel.
  std::uint64_t withoutPlace_ = 0;
  std::uint64_t unreadable_ = 0;
  std::uint64_t tooMany_ = 0;
};

}  // namespace translate
