#pragma once

#include <cstddef>

namespace windowstest {

/// As long as this lives, allocations that a loaded module makes with the C library fail: `count`
/// in a row, which come after `successes` others. Not those of this program. One at a time.
class FailingAllocations {
 public:
  /// `module` is the file's name, without a folder.
  FailingAllocations(const wchar_t* module, std::size_t successes, std::size_t count);
  ~FailingAllocations();
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;

  /// How many have failed.
  std::size_t failed() const;
};

}  // namespace windowstest
