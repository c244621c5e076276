// Making allocations fail.
#pragma once

#include <cstddef>

namespace memorytest {

/// While this lives, `count` allocations with `new` in a row fail: those that follow `successes`
/// others. There may be one at a time.
class FailingAllocations {
 public:
  static constexpr std::size_t kAll = static_cast<std::size_t>(-1);

  explicit FailingAllocations(std::size_t successes, std::size_t count = 1);
  ~FailingAllocations();
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;

  /// How many were asked for that count.
  std::size_t made() const;
  /// How many of them have failed.
  std::size_t failed() const;
};

/// Whether allocations succeed for now and do not count, as those of a test itself.
void exemptAllocations(bool exempt);

}  // namespace memorytest
