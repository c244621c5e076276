#include "tests/plugin/allocation.h"

#include <cstdlib>
#include <new>

namespace {

// Every block is preceded by its size, padded so that the block stays aligned.
constexpr std::size_t kPrefix = alignof(std::max_align_t);

const void* watched = nullptr;

void* allocate(std::size_t size) noexcept {
  auto* block = static_cast<std::byte*>(std::malloc(size + kPrefix));
  if (block == nullptr) return nullptr;
  *reinterpret_cast<std::size_t*>(block) = size;
  return block + kPrefix;
}

void release(void* memory) noexcept {
  if (memory == nullptr) return;
  if (memory == watched) watched = nullptr;
  std::free(static_cast<std::byte*>(memory) - kPrefix);
}

}  // namespace

void* operator new(std::size_t size) {
  void* memory = allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void operator delete(void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  release(memory);
}

namespace allocation {

std::size_t sizeOf(const void* memory) {
  return *reinterpret_cast<const std::size_t*>(static_cast<const std::byte*>(memory) - kPrefix);
}

void watch(const void* memory) {
  watched = memory;
}

bool isFreed() {
  return watched == nullptr;
}

}  // namespace allocation
