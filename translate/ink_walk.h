// Goes through a document from its first element to its last, and draws what is to be drawn.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "translate/drawing.h"

namespace translate {

/// Fills a drawing. What it is given must outlive it.
class InkWalk {
 public:
  InkWalk(const InkTree& tree, Contexts& contexts, Drawing& drawing, Remarks& remarks);

  /// Draws everything that the document shows.
  void run();

  /// How many annotations went into layers.
  std::uint64_t keptAnnotations() const { return keptAnnotations_; }

 private:
  using Index = InkTree::Index;
  using Path = std::span<const std::size_t>;

  // Which part of something a view shows, as paths of numbers from 1 into groups; empty for no end.
  struct Part {
    Path from;
    Path to;
  };

  void walk(Index parent, Surroundings around, Drawing::Number layer);
  void drawTrace(Index trace, const Surroundings& surroundings, Drawing::Number layer,
                 PointRange range);
  void noteContinuation(Index trace, Drawing::Number stroke);
  void joinContinuations();

  void show(Index view, const Surroundings& around, Drawing::Number layer, int depth);
  void showTarget(Index target, const Surroundings& around, Drawing::Number layer, Part part,
                  int depth);
  void showChildren(Index group, const Surroundings& around, Drawing::Number layer, Part part,
                    int depth);
  Drawing::Number layerOfView(Index view);
  std::vector<std::size_t> pathIn(Index view, Attribute attribute);
  bool isDefinition(Index node) const;
  Surroundings withinGroups(Index node, const Surroundings& around);

  Drawing::Number layerOfGroup(Index group, Index named);
  Drawing::Number looseLayer();

  const InkTree& tree_;
  Contexts& contexts_;
  Drawing& drawing_;
  Remarks& remarks_;
  TraceReader reader_;
  std::vector<bool> isDrawn_;  // Whether a trace was drawn whole, or left out with a remark.
  std::set<std::tuple<Index, std::size_t, std::size_t>> shownParts_;
  std::map<Index, Drawing::Number> strokeOf_;                     // Of traces with a continuation.
  std::vector<std::pair<Drawing::Number, Index>> continuations_;  // What goes on, and the trace.
  Drawing::Number openStroke_ = Drawing::kNone;
  Drawing::Number loose_ = Drawing::kNone;
  std::uint64_t keptAnnotations_ = 0;
  std::uint64_t steps_ = 0;  // How often something was shown.
};

}  // namespace translate
