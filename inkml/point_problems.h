// Problems in the points of a trace.
#pragma once

#include <string_view>
#include <vector>

#include "inkml/problem_list.h"

namespace Orvo {

/// Looks through one trace after another. `problems` must outlive it.
class PointExaminer {
 public:
  explicit PointExaminer(ProblemList& problems) : problems_(problems) {}

  /// Adds the points in the text of a trace that are read differently from how they look. `line` is
  /// that of the trace.
  void examine(std::string_view text, int line);

 private:
  void examinePoint(std::string_view token, int line);

  ProblemList& problems_;
  // Kept from trace to trace for their memory.
  std::vector<std::string_view> tokens_;
  std::vector<std::string_view> pieces_;
};

}  // namespace Orvo
