// Making an allocation fail.
#pragma once

#include <cstddef>

namespace memorytest {

/// While this lives, one allocation with `new` fails: the one that follows `successes` others.
/// There may be one at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(std::size_t successes);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  /// True once it has failed.
  bool failed() const;
};

}  // namespace memorytest
