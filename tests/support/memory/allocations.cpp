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

// The allocations left up to and including the one that fails; 0 if none is to fail.
std::atomic<std::size_t> untilFailure = 0;

bool isToFail() {
  std::size_t left = untilFailure;
  while (left != 0 && !untilFailure.compare_exchange_weak(left, left - 1)) {
  }
  return left == 1;
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
void operator delete(void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  release(memory);
}

namespace memorytest {

std::size_t liveBytes() {
  return live;
}

FailingAllocation::FailingAllocation(std::size_t successes) {
  untilFailure = successes + 1;
}

FailingAllocation::~FailingAllocation() {
  untilFailure = 0;
}

bool FailingAllocation::failed() const {
  return untilFailure == 0;
}

}  // namespace memorytest
