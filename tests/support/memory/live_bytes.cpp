#include "tests/support/memory/live_bytes.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

// Every block is preceded by its size, in as many bytes as keep it aligned.
constexpr std::size_t prefix = alignof(std::max_align_t);
std::atomic<std::size_t> live = 0;

void* allocate(std::size_t size) {
  auto* block = static_cast<std::byte*>(std::malloc(size + prefix));
  if (block == nullptr) throw std::bad_alloc();
  *reinterpret_cast<std::size_t*>(block) = size;
  live += size;
  return block + prefix;
}

void release(void* memory) noexcept {
  if (memory == nullptr) return;
  std::byte* block = static_cast<std::byte*>(memory) - prefix;
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

}  // namespace memorytest
