#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "tests/support/memory/failing_allocation.h"
#include "tests/support/memory/live_bytes.h"

namespace {

// Every block is preceded by its size, in as many bytes as keep it aligned.
constexpr std::size_t kPrefix = alignof(std::max_align_t);
std::atomic<std::size_t> live = 0;

// Which allocations fail, counted from 0: `failures` of them from `firstFailure` on.
std::atomic<std::size_t> firstFailure = 0;
std::atomic<std::size_t> failures = 0;
std::atomic<std::size_t> made = 0;
std::atomic<bool> areExempt = false;

bool isToFail() {
  if (areExempt) return false;
  const std::size_t number = made++;
  return number >= firstFailure && number - firstFailure < failures;
}

void* allocate(std::size_t size) {
  if (isToFail()) throw std::bad_alloc();
  auto* block = static_cast<std::byte*>(std::malloc(size + kPrefix));
  if (block == nullptr) throw std::bad_alloc();
  *reinterpret_cast<std::size_t*>(block) = size;
  live += size;
  return block + kPrefix;
}

void release(void* memory) noexcept {
  if (memory == nullptr) return;
  std::byte* block = static_cast<std::byte*>(memory) - kPrefix;
  live -= *reinterpret_cast<std::size_t*>(block);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  return allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  release(memory);
}

namespace memorytest {

std::size_t liveBytes() {
  return live;
}

FailingAllocations::FailingAllocations(std::size_t successes, std::size_t count) {
  ::made = 0;
  firstFailure = successes;
  failures = count;
}

FailingAllocations::~FailingAllocations() {
  failures = 0;
}

std::size_t FailingAllocations::made() const {
  return ::made;
}

std::size_t FailingAllocations::failed() const {
  if (::made <= firstFailure) return 0;
  return std::min(::made - firstFailure, failures.load());
}

void exemptAllocations(bool exempt) {
  areExempt = exempt;
}

}  // namespace memorytest
